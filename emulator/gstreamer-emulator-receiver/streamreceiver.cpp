// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "streamreceiver.h"

#include <QLoggingCategory>
#include <QMutexLocker>

#include <gst/video/video.h>

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(receiverLog, "emulator.receiver", QtWarningMsg)

namespace Emulator {

namespace {

struct GstSampleDeleter
{
    void operator()(GstSample *sample) const { gst_sample_unref(sample); }
};
using GstSamplePointer = std::unique_ptr<GstSample, GstSampleDeleter>;

struct GErrorDeleter
{
    void operator()(GError *error) const { g_error_free(error); }
};
using GErrorPointer = std::unique_ptr<GError, GErrorDeleter>;

constexpr char pipelineText[] = "udpsrc name=source caps=\"application/x-rtp,media=(string)video,clock-rate=(int)90000,"
                                "encoding-name=(string)JPEG,payload=(int)26\""
                                " ! rtpjpegdepay name=depayloader ! jpegdec ! videoconvert ! video/x-raw,format=RGB"
                                " ! appsink name=sink sync=false max-buffers=4 drop=true";

// Every few pixels say enough of a mean, and cost little on an emulated processor.
constexpr int step = 4;

// A rate over so many frames neither jumps nor lags.
constexpr size_t framesOfRate = 31;

} // namespace

StreamReceiver::StreamReceiver(QObject *parent)
    : QObject(parent)
{
}

StreamReceiver::~StreamReceiver()
{
    // Waits for the streaming thread, after which no callback comes.
    if (m_pipeline)
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
}

QString StreamReceiver::start(const QString &address, quint16 port)
{
    GError *rawError = nullptr;
    m_pipeline.reset(gst_parse_launch(pipelineText, &rawError));
    const GErrorPointer error(rawError);
    if (error || !m_pipeline)
        return error ? QString::fromUtf8(error->message) : u"no pipeline"_s;

    const GstElementPointer source(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "source"));
    g_object_set(source.get(), "address", address.toUtf8().constData(), "port", gint(port), nullptr);

    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "sink"));
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = &StreamReceiver::onNewSample;
    gst_app_sink_set_callbacks(GST_APP_SINK(sink.get()), &callbacks, this, nullptr);

    const GstElementPointer depayloader(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "depayloader"));
    const GstPadPointer pictures(gst_element_get_static_pad(depayloader.get(), "src"));
    gst_pad_add_probe(pictures.get(), GST_PAD_PROBE_TYPE_BUFFER, &StreamReceiver::onPicture, this, nullptr);

    const GstBusPointer bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), &StreamReceiver::onMessage, this, nullptr);

    if (gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        return u"cannot receive on port %1"_s.arg(port);
    return {};
}

quint64 StreamReceiver::frameCount() const
{
    const QMutexLocker locker(&m_mutex);
    return m_frameCount;
}

Frame StreamReceiver::lastFrame() const
{
    const QMutexLocker locker(&m_mutex);
    return m_lastFrame;
}

double StreamReceiver::frameRate() const
{
    const QMutexLocker locker(&m_mutex);
    if (m_arrivals.size() < 2)
        return 0;
    const std::chrono::duration<double> span = m_arrivals.back() - m_arrivals.front();
    return span.count() > 0 ? double(m_arrivals.size() - 1) / span.count() : 0;
}

QByteArray StreamReceiver::lastPicture() const
{
    const QMutexLocker locker(&m_mutex);
    return m_lastPicture;
}

GstPadProbeReturn StreamReceiver::onPicture(GstPad *, GstPadProbeInfo *info, gpointer receiver)
{
    GstMapInfo map;
    GstBuffer *buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (buffer && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        auto *self = static_cast<StreamReceiver *>(receiver);
        const QMutexLocker locker(&self->m_mutex);
        self->m_lastPicture = QByteArray(reinterpret_cast<const char *>(map.data), qsizetype(map.size));
        gst_buffer_unmap(buffer, &map);
    }
    return GST_PAD_PROBE_OK;
}

GstFlowReturn StreamReceiver::onNewSample(GstAppSink *sink, gpointer receiver)
{
    const GstSamplePointer sample(gst_app_sink_pull_sample(sink));
    if (sample)
        static_cast<StreamReceiver *>(receiver)->take(sample.get());
    return GST_FLOW_OK;
}

GstBusSyncReply StreamReceiver::onMessage(GstBus *, GstMessage *message, gpointer receiver)
{
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        GError *rawError = nullptr;
        gst_message_parse_error(message, &rawError, nullptr);
        const GErrorPointer error(rawError);
        qCWarning(receiverLog) << "restarting after:" << error->message;
        auto *self = static_cast<StreamReceiver *>(receiver);
        QMetaObject::invokeMethod(self, &StreamReceiver::restart, Qt::QueuedConnection);
    }
    // Dropping a message releases it; nobody else reads this bus.
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void StreamReceiver::take(GstSample *sample)
{
    GstVideoInfo info;
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    GstCaps *caps = gst_sample_get_caps(sample);
    if (!buffer || !caps || !gst_video_info_from_caps(&info, caps))
        return;
    GstVideoFrame picture;
    if (!gst_video_frame_map(&picture, &info, buffer, GST_MAP_READ))
        return;

    Frame frame{.width = info.width, .height = info.height, .red = 0, .green = 0, .blue = 0};
    const auto *pixels = static_cast<const guint8 *>(GST_VIDEO_FRAME_PLANE_DATA(&picture, 0));
    const int stride = GST_VIDEO_FRAME_PLANE_STRIDE(&picture, 0);
    qint64 red = 0;
    qint64 green = 0;
    qint64 blue = 0;
    qint64 count = 0;
    for (int y = 0; y < frame.height; y += step) {
        for (int x = 0; x < frame.width; x += step) {
            const guint8 *pixel = pixels + qsizetype(y) * stride + 3 * x;
            red += pixel[0];
            green += pixel[1];
            blue += pixel[2];
            ++count;
        }
    }
    gst_video_frame_unmap(&picture);
    if (count > 0) {
        frame.red = int(red / count);
        frame.green = int(green / count);
        frame.blue = int(blue / count);
    }

    const QMutexLocker locker(&m_mutex);
    ++m_frameCount;
    m_arrivals.push_back(std::chrono::steady_clock::now());
    if (m_arrivals.size() > framesOfRate)
        m_arrivals.pop_front();
    m_lastFrame = frame;
    if (!m_announced) {
        m_announced = true;
        QMetaObject::invokeMethod(this, &StreamReceiver::announceFrames, Qt::QueuedConnection);
    }
}

void StreamReceiver::announceFrames()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_announced = false;
    }
    Q_EMIT framesReceived();
}

void StreamReceiver::restart()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
}

} // namespace Emulator
