// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/jpegreceiver.h"

#include <QMutexLocker>
#include <QtEndian>

#include <gst/video/video.h>

#include <algorithm>
#include <cstdlib>

namespace TestUtils {

namespace {

constexpr double clockRate = 90000;

constexpr char pipelineText[] = "udpsrc port=34343 address=127.0.0.1 caps=\"application/x-rtp,media=(string)video,"
                                "clock-rate=(int)90000,encoding-name=(string)JPEG,payload=(int)26\""
                                " ! rtpjpegdepay name=depayloader ! jpegdec ! videoconvert ! video/x-raw,format=RGB"
                                " ! appsink name=sink sync=false";

} // namespace

JpegReceiver::JpegReceiver()
    : m_pipeline(gst_parse_launch(pipelineText, nullptr))
{
    if (!m_pipeline)
        qFatal("There are no elements that could receive a stream");
    GstElement *sink = gst_bin_get_by_name(GST_BIN(m_pipeline), "sink");
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = onNewSample;
    gst_app_sink_set_callbacks(GST_APP_SINK(sink), &callbacks, this, nullptr);
    gst_object_unref(sink);

    GstElement *depayloader = gst_bin_get_by_name(GST_BIN(m_pipeline), "depayloader");
    GstPad *packets = gst_element_get_static_pad(depayloader, "sink");
    gst_pad_add_probe(packets, GST_PAD_PROBE_TYPE_BUFFER, onPacket, this, nullptr);
    gst_object_unref(packets);
    gst_object_unref(depayloader);

    GstBus *bus = gst_element_get_bus(m_pipeline);
    gst_bus_set_sync_handler(bus, onMessage, this, nullptr);
    gst_object_unref(bus);

    if (gst_element_set_state(m_pipeline, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        qFatal("The port is taken");
}

JpegReceiver::~JpegReceiver()
{
    gst_element_set_state(m_pipeline, GST_STATE_NULL);
    gst_object_unref(m_pipeline);
}

int JpegReceiver::frameCount() const
{
    const QMutexLocker locker(&m_mutex);
    return m_frameCount;
}

QImage JpegReceiver::lastFrame() const
{
    const QMutexLocker locker(&m_mutex);
    return m_lastFrame;
}

QList<QSize> JpegReceiver::sizes() const
{
    const QMutexLocker locker(&m_mutex);
    return m_sizes;
}

double JpegReceiver::rate() const
{
    const QMutexLocker locker(&m_mutex);
    if (m_timestamps.size() < 2)
        return 0;
    QList<quint32> steps;
    for (qsizetype i = 1; i < m_timestamps.size(); ++i)
        steps.append(m_timestamps.at(i) - m_timestamps.at(i - 1));
    // The middle one: a sender that has no time left out some frames.
    const auto middle = steps.begin() + steps.size() / 2;
    std::nth_element(steps.begin(), middle, steps.end());
    return clockRate / *middle;
}

QColor JpegReceiver::color() const
{
    const QImage frame = lastFrame();
    return frame.isNull() ? QColor() : frame.pixelColor(frame.rect().center());
}

QStringList JpegReceiver::errors() const
{
    const QMutexLocker locker(&m_mutex);
    return m_errors;
}

void JpegReceiver::clear()
{
    const QMutexLocker locker(&m_mutex);
    m_frameCount = 0;
    m_lastFrame = {};
    m_sizes.clear();
    m_timestamps.clear();
    m_errors.clear();
}

GstPadProbeReturn JpegReceiver::onPacket(GstPad *, GstPadProbeInfo *info, gpointer receiver)
{
    // The time is in bytes 4 to 7; the packets of a frame share it.
    quint32 bigEndian = 0;
    if (gst_buffer_extract(gst_pad_probe_info_get_buffer(info), 4, &bigEndian, sizeof bigEndian) == sizeof bigEndian) {
        const quint32 timestamp = qFromBigEndian(bigEndian);
        auto *self = static_cast<JpegReceiver *>(receiver);
        const QMutexLocker locker(&self->m_mutex);
        if (self->m_timestamps.isEmpty() || self->m_timestamps.last() != timestamp)
            self->m_timestamps.append(timestamp);
    }
    return GST_PAD_PROBE_OK;
}

GstFlowReturn JpegReceiver::onNewSample(GstAppSink *sink, gpointer receiver)
{
    auto *self = static_cast<JpegReceiver *>(receiver);
    GstSample *sample = gst_app_sink_pull_sample(sink);
    if (!sample)
        return GST_FLOW_OK;
    GstVideoInfo info;
    GstVideoFrame frame;
    if (gst_video_info_from_caps(&info, gst_sample_get_caps(sample))
        && gst_video_frame_map(&frame, &info, gst_sample_get_buffer(sample), GST_MAP_READ)) {
        const QImage view(
            static_cast<const uchar *>(GST_VIDEO_FRAME_PLANE_DATA(&frame, 0)),
            info.width,
            info.height,
            GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0),
            QImage::Format_RGB888);
        const QMutexLocker locker(&self->m_mutex);
        self->m_lastFrame = view.copy();
        ++self->m_frameCount;
        if (!self->m_sizes.contains(view.size()))
            self->m_sizes.append(view.size());
        gst_video_frame_unmap(&frame);
    }
    gst_sample_unref(sample);
    return GST_FLOW_OK;
}

GstBusSyncReply JpegReceiver::onMessage(GstBus *, GstMessage *message, gpointer receiver)
{
    auto *self = static_cast<JpegReceiver *>(receiver);
    GError *error = nullptr;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        gst_message_parse_error(message, &error, nullptr);
    else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_WARNING)
        gst_message_parse_warning(message, &error, nullptr);
    if (error) {
        const QMutexLocker locker(&self->m_mutex);
        self->m_errors.append(QString::fromUtf8(error->message));
        g_error_free(error);
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

bool alike(const QColor &a, const QColor &b)
{
    constexpr int tolerance = 24;
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())})
        <= tolerance;
}

} // namespace TestUtils
