// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QList>
#include <QMutex>
#include <QSize>
#include <QStringList>

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

namespace TestUtils {

/// The other end of a stream: decodes what arrives at the UDP port for pictures, from construction on.
class JpegReceiver
{
    Q_DISABLE_COPY_MOVE(JpegReceiver)

public:
    JpegReceiver();
    ~JpegReceiver();

    int frameCount() const;
    /// Null before the first.
    QImage lastFrame() const;
    QSize size() const { return lastFrame().size(); }
    /// All sizes that have been seen, in the order in which they were first seen.
    QList<QSize> sizes() const;
    /// Frames a second, by the sender's clock; 0 before the second frame.
    double rate() const;
    /// In the middle of the picture.
    QColor color() const;
    /// What could not be decoded.
    QStringList errors() const;
    /// Forgets everything.
    void clear();

private:
    static GstPadProbeReturn onPacket(GstPad *pad, GstPadProbeInfo *info, gpointer receiver);
    static GstFlowReturn onNewSample(GstAppSink *sink, gpointer receiver);
    static GstBusSyncReply onMessage(GstBus *bus, GstMessage *message, gpointer receiver);

    GstElement *m_pipeline;
    mutable QMutex m_mutex; // guards what follows
    int m_frameCount = 0;
    QImage m_lastFrame;
    QList<QSize> m_sizes;
    QList<quint32> m_timestamps; // of packets; one for each frame
    QStringList m_errors;
};

/// Whether two colours differ by no more than coding does.
bool alike(const QColor &a, const QColor &b);

} // namespace TestUtils
