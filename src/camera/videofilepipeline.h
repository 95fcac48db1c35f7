// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "camera/streampipeline.h"

#include <QString>

#include <functional>

namespace EmulationManagement::Internal {

// From a video file to the emulator. Its elements exist from the start; assemble() makes a chain of them.
class VideoFilePipeline : public StreamPipeline
{
public:
    VideoFilePipeline();
    // Stops before the handler goes.
    ~VideoFilePipeline();

    // The handler is called in a thread of GStreamer's when the last picture of the file has been sent.
    void assemble(const char *host, quint16 port, const std::function<void()> &onEndOfFile);

    // A path, not a URL; to be set only while the pipeline is stopped.
    void setLocation(const QString &filePath);

private:
    static GstPadProbeReturn onEventReceived(GstPad *pad, GstPadProbeInfo *info, gpointer pipeline);
    static void onDecodeBinPadAdded(GstElement *decoder, GstPad *newPad, gpointer encoder);

    std::function<void()> m_onEndOfFile;
    GstElementPointer m_fileSource;
    GstElementPointer m_decoder;
    GstElementPointer m_encoder;
    GstElementPointer m_payloader;
    GstElementPointer m_sink;
};

} // namespace EmulationManagement::Internal
