// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "camera/gsthandles.h"

#include <QtTypes>

namespace EmulationManagement::Internal {

// A pipeline that ends in JPEG over RTP to a UDP port: what the two streams have in common. It stops when destroyed.
//
// Nothing here waits for a pipeline to arrive in a state, and no failure is reported: what GStreamer says is in the
// log.
class StreamPipeline
{
    Q_DISABLE_COPY_MOVE(StreamPipeline)

public:
    void start();
    void stop();
    bool isRunning() const;
    void stopIfRunning();

protected:
    explicit StreamPipeline(const char *name);
    ~StreamPipeline();

    GstBin *bin() const { return GST_BIN(m_pipeline.get()); }

    // Null when GStreamer has no such element.
    static GstElementPointer makeElement(const char *factory, const char *name);
    static void setUpEncoderAndSink(GstElement *encoder, GstElement *sink, const char *host, quint16 port);

private:
    GstElementPointer m_pipeline;
};

} // namespace EmulationManagement::Internal
