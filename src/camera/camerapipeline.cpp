// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/camerapipeline.h"

#include <QList>

#include <utility>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

void setProperty(GstElement *element, const QByteArray &name, const GValue *value)
{
    // GObject complains about what it cannot set, in the log of the IDE. The source may be of another camera's kind.
    const GParamSpec *property = g_object_class_find_property(G_OBJECT_GET_CLASS(element), name.constData());
    if (property && (property->flags & G_PARAM_WRITABLE)
        && g_value_type_transformable(G_VALUE_TYPE(value), property->value_type))
        g_object_set_property(G_OBJECT(element), name.constData(), value);
}

} // namespace

CameraPipeline::CameraPipeline(const QString &sourceFactory)
    : StreamPipeline("camera-stream-pipeline")
    , m_source(sourceFactory.isEmpty() ? nullptr : makeElement(sourceFactory.toUtf8().constData(), "sourcePluginCam"))
    , m_capsFilter(makeElement("capsfilter", "capsfilterCam"))
    , m_encoder(makeElement("jpegenc", "jpegencCam"))
    , m_payloader(makeElement("rtpjpegpay", "rtpjpegpayCam"))
    , m_sink(makeElement("udpsink", "udpsinkCam"))
{
}

void CameraPipeline::setSourceProperty(const QString &name, const QString &value)
{
    if (!m_source || name.isEmpty() || value.isEmpty())
        return;
    GValue propertyValue = G_VALUE_INIT;
    if (name == "device-index"_L1) {
        g_value_init(&propertyValue, G_TYPE_INT);
        g_value_set_int(&propertyValue, value.toInt());
    } else {
        g_value_init(&propertyValue, G_TYPE_STRING);
        g_value_set_string(&propertyValue, value.toUtf8().constData());
    }
    setProperty(m_source.get(), name.toUtf8(), &propertyValue);
    g_value_unset(&propertyValue);
}

void CameraPipeline::setJpegDecoded(bool decoded)
{
    if (decoded == bool(m_decoder))
        return;
    const bool wasRunning = isRunning();
    stopIfRunning();
    if (decoded) {
        m_decoder = makeElement("jpegdec", "jpegdecCam");
        if (m_decoder && isAssembled()) {
            gst_element_unlink(m_source.get(), m_capsFilter.get());
            gst_bin_add(bin(), m_decoder.get());
            gst_element_link_many(m_source.get(), m_decoder.get(), m_capsFilter.get(), nullptr);
        }
    } else {
        if (isAssembled()) {
            gst_bin_remove(bin(), m_decoder.get()); // and unlinks it
            gst_element_link(m_source.get(), m_capsFilter.get());
        }
        m_decoder.reset();
    }
    if (wasRunning)
        start();
}

void CameraPipeline::setCaps(const QString &caps)
{
    if (!m_capsFilter)
        return;
    const GstCapsPointer parsed(gst_caps_from_string(caps.toUtf8().constData()));
    g_object_set(m_capsFilter.get(), "caps", parsed.get(), nullptr);
}

void CameraPipeline::setUpEncoderAndSink(const char *host, quint16 port)
{
    StreamPipeline::setUpEncoderAndSink(m_encoder.get(), m_sink.get(), host, port);
}

void CameraPipeline::assemble()
{
    QList<GstElement *> chain{m_source.get(), m_capsFilter.get(), m_encoder.get(), m_payloader.get(), m_sink.get()};
    if (isAssembled() || chain.contains(nullptr))
        return;
    if (m_decoder)
        chain.insert(1, m_decoder.get());
    for (GstElement *element : std::as_const(chain))
        gst_bin_add(bin(), element);
    for (qsizetype i = 1; i < chain.size(); ++i)
        gst_element_link(chain.at(i - 1), chain.at(i));
}

bool CameraPipeline::isAssembled() const
{
    return m_source && GST_OBJECT_PARENT(m_source.get());
}

} // namespace EmulationManagement::Internal
