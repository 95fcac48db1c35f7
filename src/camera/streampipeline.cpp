// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/streampipeline.h"

#include "camera/cameralog.h"

namespace EmulationManagement::Internal {

namespace {

constexpr int jpegQuality = 50;

// Called in any thread. Nobody else reads the pipelines' messages, so none is kept.
GstBusSyncReply logAndDrop(GstBus *, GstMessage *message, gpointer)
{
    const GstMessagePointer owner(message);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        GError *error = nullptr;
        gchar *details = nullptr;
        gst_message_parse_error(message, &error, &details);
        const GErrorPointer errorOwner(error);
        const GCharPointer detailsOwner(details);
        qCDebug(cameraLog) << GST_MESSAGE_SRC_NAME(message) << "failed:" << error->message << details;
    }
    return GST_BUS_DROP;
}

} // namespace

StreamPipeline::StreamPipeline(const char *name)
    : m_pipeline(takeElement(gst_pipeline_new(name)))
{
    const GstBusPointer bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), logAndDrop, nullptr, nullptr);
}

StreamPipeline::~StreamPipeline()
{
    // Waits for the streaming threads, after which nothing is called back.
    stop();
}

void StreamPipeline::start()
{
    if (gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
        qCDebug(cameraLog) << GST_OBJECT_NAME(m_pipeline.get()) << "does not start";
}

void StreamPipeline::stop()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
}

bool StreamPipeline::isRunning() const
{
    // Where a change under way will end makes no difference: it left GST_STATE_NULL when it was asked for. To wait for
    // it would be to wait for the first picture, on a slow disk for long.
    GstState state = GST_STATE_NULL;
    gst_element_get_state(m_pipeline.get(), &state, nullptr, 0);
    return state != GST_STATE_NULL;
}

void StreamPipeline::stopIfRunning()
{
    if (isRunning())
        stop();
}

GstElementPointer StreamPipeline::makeElement(const char *factory, const char *name)
{
    GstElementPointer element = takeElement(gst_element_factory_make(factory, name));
    if (!element)
        qCDebug(cameraLog) << "No element" << factory;
    return element;
}

void StreamPipeline::setUpEncoderAndSink(GstElement *encoder, GstElement *sink, const char *host, quint16 port)
{
    if (encoder)
        g_object_set(encoder, "quality", jpegQuality, nullptr);
    if (sink)
        g_object_set(sink, "host", host, "port", gint(port), nullptr);
}

} // namespace EmulationManagement::Internal
