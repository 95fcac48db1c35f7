// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/videofilepipeline.h"

#include <array>

namespace EmulationManagement::Internal {

VideoFilePipeline::VideoFilePipeline()
    : StreamPipeline("video-stream-pipeline")
    , m_fileSource(makeElement("filesrc", "filesrc"))
    , m_decoder(makeElement("decodebin", "decodebin"))
    , m_encoder(makeElement("jpegenc", "jpegencVS"))
    // Unlike its siblings', the name begins with "m_".
    , m_payloader(makeElement("rtpjpegpay", "m_rtpjpegpayVS"))
    , m_sink(makeElement("udpsink", "udpsinkVS"))
{
}

VideoFilePipeline::~VideoFilePipeline()
{
    stop();
}

void VideoFilePipeline::assemble(const char *host, quint16 port, const std::function<void()> &onEndOfFile)
{
    m_onEndOfFile = onEndOfFile;
    setUpEncoderAndSink(m_encoder.get(), m_sink.get(), host, port);
    const std::array chain{m_fileSource.get(), m_decoder.get(), m_encoder.get(), m_payloader.get(), m_sink.get()};
    for (GstElement *element : chain) {
        if (!element)
            return;
    }
    for (GstElement *element : chain)
        gst_bin_add(bin(), element);

    gst_element_link(m_fileSource.get(), m_decoder.get());
    gst_element_link_many(m_encoder.get(), m_payloader.get(), m_sink.get(), nullptr);
    g_signal_connect(m_decoder.get(), "pad-added", G_CALLBACK(onDecodeBinPadAdded), m_encoder.get());

    const GstPadPointer sinkPad(gst_element_get_static_pad(m_sink.get(), "sink"));
    gst_pad_add_probe(sinkPad.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onEventReceived, this, nullptr);
}

void VideoFilePipeline::setLocation(const QString &filePath)
{
    if (m_fileSource)
        g_object_set(m_fileSource.get(), "location", filePath.toLocal8Bit().constData(), nullptr);
}

GstPadProbeReturn VideoFilePipeline::onEventReceived(GstPad *, GstPadProbeInfo *info, gpointer pipeline)
{
    if (GST_EVENT_TYPE(gst_pad_probe_info_get_event(info)) == GST_EVENT_EOS)
        static_cast<VideoFilePipeline *>(pipeline)->m_onEndOfFile();
    return GST_PAD_PROBE_OK;
}

void VideoFilePipeline::onDecodeBinPadAdded(GstElement *, GstPad *newPad, gpointer encoder)
{
    // The first stream of pictures fits; sound, or a second stream of pictures, is refused.
    const GstPadPointer sinkPad(gst_element_get_static_pad(GST_ELEMENT(encoder), "sink"));
    gst_pad_link(newPad, sinkPad.get());
}

} // namespace EmulationManagement::Internal
