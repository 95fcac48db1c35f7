// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <gst/gst.h>

namespace TestUtils {

/// Writes down what is done with the pipelines of this process, and finds them, whoever owns them. What happens inside
/// the elements of a pipeline is left out.
class PipelineRecorder
{
public:
    /// Call it once, before the first pipeline is made.
    static void install();

    /// In order, with names of pipelines and elements: "pipeline + element" for what is added, "element > element" for
    /// what is linked, "play pipeline" and "stop pipeline" for what leaves and what reaches GST_STATE_NULL.
    static QStringList takeEntries();

    /// How many pipelines of this name have been filled and not been released. A thread of GStreamer's may hold one for
    /// a moment longer than its owner does.
    static int count(const QString &pipeline);

    /// Whether the only filled pipeline of this name has left GST_STATE_NULL, wherever it will get to.
    static bool isPlaying(const QString &pipeline);

    /// An element of the only filled pipeline of this name. Owned by the caller; null when there is none.
    static GstElement *element(const QString &pipeline, const QString &element);

    /// The elements of the only filled pipeline of this name, in the order in which they were added.
    static QStringList elements(const QString &pipeline);

    /// The names along the chain that begins with this element.
    static QStringList chain(const QString &pipeline, const QString &firstElement);
};

} // namespace TestUtils
