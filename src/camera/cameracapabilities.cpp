// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameracapabilities.h"

#include "camera/gsthandles.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

// Elements that can do anything offer rates up to 2147483647.
constexpr int highestRate = 1000;

QString wholeFramerate(qint64 rate)
{
    return u"%1/1"_s.arg(rate);
}

int numerator(const QString &framerate)
{
    return framerate.section(u'/', 0, 0).toInt();
}

// Null for a value that is absent or has no serialised form.
GCharPointer serialized(const GValue *value)
{
    return GCharPointer(value ? gst_value_serialize(value) : nullptr);
}

// A value of GObject's that is released with its scope.
class PropertyValue
{
    Q_DISABLE_COPY_MOVE(PropertyValue)

public:
    PropertyValue(GstElement *element, GParamSpec *property) { initGstDevicePropValue(element, property, &m_value); }
    ~PropertyValue() { g_value_unset(&m_value); }

    QString text() const { return QString::fromUtf8(serialized(&m_value).get()); }

private:
    static void initGstDevicePropValue(GstElement *element, GParamSpec *property, GValue *value)
    {
        g_value_init(value, property->value_type);
        if (property->flags & G_PARAM_READABLE)
            g_object_get_property(G_OBJECT(element), property->name, value);
    }

    GValue m_value = G_VALUE_INIT;
};

} // namespace

QStringList normalizeFractions(const QString &text)
{
    QStringList framerates;
    const QStringList parts = text.split(u',', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QStringList pieces = part.split(u'/');
        if (pieces.size() != 2 || pieces.at(1) == "1"_L1) {
            framerates.append(part);
            continue;
        }
        const int denominator = std::max(pieces.at(1).toInt(), 1);
        framerates.append(wholeFramerate(pieces.at(0).toInt() / denominator));
    }
    return framerates;
}

int parseGstFramerate(const QString &text, LIMIT which)
{
    static const QRegularExpression decoration(u"[\\[\\] ]"_s);
    const QStringList ends = QString(text).remove(decoration).split(u',', Qt::SkipEmptyParts);
    const QString end = ends.value(which);
    // Wider than int, in which the lowest number divided by -1 has no room.
    const qint64 denominator = end.section(u'/', 1, 1).toInt();
    if (denominator == 0)
        return 1;
    return int(std::min<qint64>(numerator(end) / denominator, std::numeric_limits<int>::max()));
}

void initFrameratesFromRange(QStringList *framerates, const QString &text)
{
    // Below 0 there are no framerates.
    const int lower = text.isEmpty() ? 1 : std::max(parseGstFramerate(text, LOWER), 0);
    const int upper = text.isEmpty() ? 1 : parseGstFramerate(text, UPPER);
    if (lower > highestRate)
        return;

    QList<int> rates{lower};
    if (lower != upper) {
        rates.append(lower + 1);
        while (rates.last() < std::min(upper, highestRate)) {
            if (const int excess = rates.last() % 5)
                rates.append(rates.last() + 5 - excess);
            rates.append(rates.last() + 5);
        }
    }
    for (const int rate : std::as_const(rates)) {
        if (rate <= highestRate)
            framerates->append(wholeFramerate(rate));
    }
}

void initAvailableFramerates(QStringList *framerates, const QString &text)
{
    if (text.contains(u'{') && text.contains(u'}')) {
        // A class of characters: it takes away the letters of "(fraction)" one by one.
        static const QRegularExpression decoration(u"[{}(fraction) ]"_s);
        framerates->append(normalizeFractions(QString(text).remove(decoration)));
    } else if (text.contains(u'[') && text.contains(u']')) {
        initFrameratesFromRange(framerates, text);
    } else {
        framerates->append(text.split(u',', Qt::SkipEmptyParts));
    }
    std::stable_sort(framerates->begin(), framerates->end(), [](const QString &a, const QString &b) {
        return numerator(a) > numerator(b);
    });
}

void addAvailableResolution(
    QVariantList *resolutions, const QStringList &framerates, const char *width, const char *height)
{
    if (!width || !height)
        return;
    const int widthNumber = QString::fromUtf8(width).toInt();
    const int heightNumber = QString::fromUtf8(height).toInt();
    if (widthNumber < 1 || heightNumber < 1)
        return;

    const QString string = u"%1x%2"_s.arg(widthNumber).arg(heightNumber);
    const bool known = std::any_of(resolutions->cbegin(), resolutions->cend(), [&](const QVariant &resolution) {
        return resolution.toMap().value(u"string"_s) == string;
    });
    if (known)
        return;
    resolutions->append(QVariantMap{
        {u"width"_s, widthNumber},
        {u"height"_s, heightNumber},
        {u"string"_s, string},
        {u"framerates"_s, framerates},
    });
}

QVariantList availableResolutions(const GstCaps *caps)
{
    QVariantList resolutions;
    const guint count = caps ? gst_caps_get_size(caps) : 0;
    for (guint i = 0; i < count; ++i) {
        const GstStructure *structure = gst_caps_get_structure(caps, i);
        const auto field = [structure](const char *name) {
            return serialized(gst_structure_get_value(structure, name));
        };
        const QString framerateText = QString::fromUtf8(field("framerate").get());
        if (framerateText.contains("GstFractionRange"_L1))
            continue;
        QStringList framerates;
        initAvailableFramerates(&framerates, framerateText);
        addAvailableResolution(&resolutions, framerates, field("width").get(), field("height").get());
    }
    std::stable_sort(resolutions.begin(), resolutions.end(), [](const QVariant &a, const QVariant &b) {
        return a.toMap().value(u"width"_s).toInt() > b.toMap().value(u"width"_s).toInt();
    });
    return resolutions;
}

bool isJpegOnly(const GstCaps *caps, const QString &size, const QString &framerate)
{
    const auto offers = [caps](const char *kind, const QString &fields) {
        const GstCapsPointer pictures(gst_caps_from_string((QLatin1StringView(kind) + fields).toUtf8().constData()));
        return pictures && gst_caps_can_intersect(caps, pictures.get());
    };
    if (!caps)
        return false;
    for (const QString &fields : {size + framerate, size}) {
        if (offers(rawPictures, fields))
            return false;
        if (offers(jpegPictures, fields))
            return true;
    }
    return false;
}

QVariantMap retrieveCameraDeviceProperty(GstDevice *device)
{
    const auto property = [](const QString &name, const QString &value) {
        return QVariantMap{{u"name"_s, name}, {u"value"_s, value}};
    };
    const GstElementPointer element = takeElement(gst_device_create_element(device, nullptr));
    if (!element)
        return property({}, {});

    guint count = 0;
    const std::unique_ptr<GParamSpec *, GFreeDeleter> properties(
        g_object_class_list_properties(G_OBJECT_GET_CLASS(element.get()), &count));
    QString devicePath;
    for (guint i = 0; i < count; ++i) {
        GParamSpec *candidate = properties.get()[i];
        const QString name = QString::fromUtf8(candidate->name);
        if (name == "device-path"_L1)
            devicePath = PropertyValue(element.get(), candidate).text();
        else if (name == "device"_L1 || name == "device-index"_L1)
            return property(name, PropertyValue(element.get(), candidate).text());
    }
    return devicePath.isEmpty() ? property({}, {}) : property(u"device-path"_s, devicePath);
}

QString deviceName(GstDevice *device)
{
    return QString::fromUtf8(GCharPointer(gst_device_get_display_name(device)).get());
}

} // namespace EmulationManagement::Internal
