// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/testmedia.h"

#include <gst/app/gstappsrc.h>
#include <gst/gst.h>
#include <gst/video/gstvideodecoder.h>

using namespace Qt::StringLiterals;

namespace TestUtils {

namespace {

QString waitForEnd(GstElement *pipeline)
{
    QString problem = u"The pipeline does not come to an end"_s;
    GstBus *bus = gst_element_get_bus(pipeline);
    GstMessage *message =
        gst_bus_timed_pop_filtered(bus, 60 * GST_SECOND, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    if (message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
        problem.clear();
    } else if (message) {
        GError *error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        problem = QString::fromUtf8(error->message);
        g_error_free(error);
    }
    if (message)
        gst_message_unref(message);
    gst_object_unref(bus);
    return problem;
}

GstElement *newPipeline(const QString &filePath, const QByteArray &text, QString *problem)
{
    GError *error = nullptr;
    GstElement *pipeline = gst_parse_launch(text.constData(), &error);
    if (error) {
        *problem = QString::fromUtf8(error->message);
        g_error_free(error);
    }
    if (pipeline) {
        GstElement *target = gst_bin_get_by_name(GST_BIN(pipeline), "target");
        g_object_set(target, "location", filePath.toLocal8Bit().constData(), nullptr);
        gst_object_unref(target);
    }
    return pipeline;
}

void discard(GstElement *pipeline)
{
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
}

// ---- a decoder that does not look at what it decodes

struct TestDecoder
{
    GstVideoDecoder parent;
};

struct TestDecoderClass
{
    GstVideoDecoderClass parent;
};

G_DEFINE_TYPE(TestDecoder, test_decoder, GST_TYPE_VIDEO_DECODER)

gboolean setFormat(GstVideoDecoder *decoder, GstVideoCodecState *input)
{
    gst_video_codec_state_unref(gst_video_decoder_set_output_state(decoder, GST_VIDEO_FORMAT_I420, 160, 120, input));
    return gst_video_decoder_negotiate(decoder);
}

GstFlowReturn handleFrame(GstVideoDecoder *decoder, GstVideoCodecFrame *frame)
{
    const GstFlowReturn result = gst_video_decoder_allocate_output_frame(decoder, frame);
    if (result != GST_FLOW_OK) {
        gst_video_decoder_drop_frame(decoder, frame);
        return result;
    }
    gst_buffer_memset(frame->output_buffer, 0, 128, gst_buffer_get_size(frame->output_buffer));
    return gst_video_decoder_finish_frame(decoder, frame);
}

void test_decoder_init(TestDecoder *) {}

void test_decoder_class_init(TestDecoderClass *decoderClass)
{
    static GstStaticPadTemplate input =
        GST_STATIC_PAD_TEMPLATE("sink", GST_PAD_SINK, GST_PAD_ALWAYS, GST_STATIC_CAPS("video/x-h264"));
    static GstStaticPadTemplate output =
        GST_STATIC_PAD_TEMPLATE("src", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS("video/x-raw,format=I420"));
    GstElementClass *elementClass = GST_ELEMENT_CLASS(decoderClass);
    gst_element_class_add_static_pad_template(elementClass, &input);
    gst_element_class_add_static_pad_template(elementClass, &output);
    gst_element_class_set_static_metadata(
        elementClass, "Test decoder", "Codec/Decoder/Video", "Decodes nothing", "Tests");
    GST_VIDEO_DECODER_CLASS(decoderClass)->set_format = setFormat;
    GST_VIDEO_DECODER_CLASS(decoderClass)->handle_frame = handleFrame;
}

} // namespace

QString writeMedia(const QString &filePath, const QByteArray &text)
{
    QString problem;
    GstElement *pipeline = newPipeline(filePath, text, &problem);
    if (!pipeline)
        return problem;
    if (problem.isEmpty()) {
        gst_element_set_state(pipeline, GST_STATE_PLAYING);
        problem = waitForEnd(pipeline);
    }
    discard(pipeline);
    return problem;
}

QString writeVideo(const QString &filePath, const TestVideo &video)
{
    const QByteArray size = "width=" + QByteArray::number(video.width) + ",height=" + QByteArray::number(video.height);
    return writeMedia(
        filePath,
        "videotestsrc pattern=solid-color foreground-color=" + video.color
            + " num-buffers=" + QByteArray::number(video.frames) + " ! video/x-raw,format=" + video.format + ',' + size
            + ",framerate=30/1 ! " + video.encoder + " ! " + video.container + " ! filesink name=target");
}

QString writeH264(const QString &filePath)
{
    QString problem;
    GstElement *pipeline = newPipeline(
        filePath,
        "appsrc name=source format=time caps=\"video/x-h264,stream-format=avc,alignment=au,width=160,height=120,"
        "framerate=30/1,profile=(string)high,level=(string)1.1,"
        "codec_data=(buffer)0164000bffe100176764000bacd942825f88c044000003000400000300f23c50a65801000668ebe3cb22c0\" ! "
        "matroskamux ! filesink name=target",
        &problem);
    if (!pipeline)
        return problem;
    if (problem.isEmpty()) {
        gst_element_set_state(pipeline, GST_STATE_PLAYING);
        GstElement *source = gst_bin_get_by_name(GST_BIN(pipeline), "source");
        for (int i = 0; i < 10; ++i) {
            GstBuffer *buffer = gst_buffer_new_allocate(nullptr, 64, nullptr);
            gst_buffer_memset(buffer, 0, 0, 64);
            GST_BUFFER_PTS(buffer) = GST_BUFFER_DTS(buffer) = i * GST_SECOND / 30;
            GST_BUFFER_DURATION(buffer) = GST_SECOND / 30;
            gst_app_src_push_buffer(GST_APP_SRC(source), buffer); // takes the buffer
        }
        gst_app_src_end_of_stream(GST_APP_SRC(source));
        gst_object_unref(source);
        problem = waitForEnd(pipeline);
    }
    discard(pipeline);
    return problem;
}

void installH264Decoder()
{
    if (!gst_element_register(nullptr, "testh264dec", GST_RANK_PRIMARY, test_decoder_get_type()))
        qFatal("The decoder cannot be registered");
}

} // namespace TestUtils
