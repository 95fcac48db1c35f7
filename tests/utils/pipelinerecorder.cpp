// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/pipelinerecorder.h"

#include <QMutex>
#include <QMutexLocker>

#include <gst/gsttracer.h>

#include <algorithm>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace TestUtils {

namespace {

QMutex mutex; // guards what follows: hooks are called in any thread
QStringList entries;
QList<GstElement *> pipelines; // filled and not yet released; not owned

struct GstObjectDeleter
{
    void operator()(gpointer object) const { gst_object_unref(object); }
};
template<typename T>
using Pointer = std::unique_ptr<T, GstObjectDeleter>;

QString nameOf(gpointer object)
{
    return QString::fromUtf8(GST_OBJECT_NAME(object));
}

bool isInPipeline(GstObject *element)
{
    return element && GST_OBJECT_PARENT(element) && GST_IS_PIPELINE(GST_OBJECT_PARENT(element));
}

void forgetPipeline(gpointer, GObject *pipeline)
{
    const QMutexLocker locker(&mutex);
    pipelines.removeOne(reinterpret_cast<GstElement *>(pipeline));
}

void onAdded(GObject *, GstClockTime, GstBin *bin, GstElement *element, gboolean added)
{
    if (!added || !GST_IS_PIPELINE(bin))
        return;
    const QMutexLocker locker(&mutex);
    entries.append(nameOf(bin) + u" + "_s + nameOf(element));
    if (!pipelines.contains(GST_ELEMENT(bin))) {
        pipelines.append(GST_ELEMENT(bin));
        g_object_weak_ref(G_OBJECT(bin), forgetPipeline, nullptr);
    }
}

void onLinked(GObject *, GstClockTime, GstPad *source, GstPad *sink, GstPadLinkReturn result)
{
    GstObject *from = GST_OBJECT_PARENT(source);
    GstObject *to = GST_OBJECT_PARENT(sink);
    if (result != GST_PAD_LINK_OK || !isInPipeline(from) || !isInPipeline(to))
        return;
    const QMutexLocker locker(&mutex);
    entries.append(nameOf(from) + u" > "_s + nameOf(to));
}

void onStateChange(GObject *, GstClockTime, GstElement *element, GstStateChange transition)
{
    if (!GST_IS_PIPELINE(element))
        return;
    const QMutexLocker locker(&mutex);
    if (transition == GST_STATE_CHANGE_NULL_TO_READY)
        entries.append(u"play "_s + nameOf(element));
    else if (transition == GST_STATE_CHANGE_READY_TO_NULL)
        entries.append(u"stop "_s + nameOf(element));
}

// The only one of this name; a reference of the caller's.
Pointer<GstElement> pipelineOf(const QString &name)
{
    const QMutexLocker locker(&mutex);
    GstElement *found = nullptr;
    for (GstElement *pipeline : std::as_const(pipelines)) {
        if (nameOf(pipeline) != name)
            continue;
        if (found)
            return {};
        found = pipeline;
    }
    return Pointer<GstElement>(found ? GST_ELEMENT(gst_object_ref(found)) : nullptr);
}

struct RecorderTracer
{
    GstTracer parent;
};

struct RecorderTracerClass
{
    GstTracerClass parent;
};

G_DEFINE_TYPE(RecorderTracer, recorder_tracer, GST_TYPE_TRACER)

void recorder_tracer_init(RecorderTracer *self)
{
    gst_tracing_register_hook(GST_TRACER(self), "bin-add-post", G_CALLBACK(onAdded));
    gst_tracing_register_hook(GST_TRACER(self), "pad-link-post", G_CALLBACK(onLinked));
    gst_tracing_register_hook(GST_TRACER(self), "element-change-state-pre", G_CALLBACK(onStateChange));
}

void recorder_tracer_class_init(RecorderTracerClass *) {}

} // namespace

void PipelineRecorder::install()
{
    // Lives as long as the process, as the hooks do.
    static const gpointer tracer = gst_object_ref_sink(g_object_new(recorder_tracer_get_type(), nullptr));
    Q_UNUSED(tracer)
}

QStringList PipelineRecorder::takeEntries()
{
    const QMutexLocker locker(&mutex);
    return std::exchange(entries, {});
}

int PipelineRecorder::count(const QString &pipeline)
{
    const QMutexLocker locker(&mutex);
    return int(std::count_if(
        pipelines.cbegin(), pipelines.cend(), [&](GstElement *candidate) { return nameOf(candidate) == pipeline; }));
}

bool PipelineRecorder::isPlaying(const QString &pipeline)
{
    const Pointer<GstElement> owner = pipelineOf(pipeline);
    GstState state = GST_STATE_NULL;
    if (owner)
        gst_element_get_state(owner.get(), &state, nullptr, 0);
    return state != GST_STATE_NULL;
}

GstElement *PipelineRecorder::element(const QString &pipeline, const QString &element)
{
    const Pointer<GstElement> owner = pipelineOf(pipeline);
    return owner ? gst_bin_get_by_name(GST_BIN(owner.get()), element.toUtf8().constData()) : nullptr;
}

QStringList PipelineRecorder::elements(const QString &pipeline)
{
    const Pointer<GstElement> owner = pipelineOf(pipeline);
    QStringList names;
    if (owner) {
        // The last that was added comes first.
        for (const GList *node = GST_BIN_CHILDREN(owner.get()); node; node = node->next)
            names.prepend(nameOf(node->data));
    }
    return names;
}

QStringList PipelineRecorder::chain(const QString &pipeline, const QString &firstElement)
{
    QStringList names;
    Pointer<GstElement> element(PipelineRecorder::element(pipeline, firstElement));
    while (element) {
        names.append(nameOf(element.get()));
        const Pointer<GstPad> source(gst_element_get_static_pad(element.get(), "src"));
        const Pointer<GstPad> sink(source ? gst_pad_get_peer(source.get()) : nullptr);
        element.reset(sink ? gst_pad_get_parent_element(sink.get()) : nullptr);
    }
    return names;
}

} // namespace TestUtils
