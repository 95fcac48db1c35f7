// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "arguments.h"

#include <QDBusMetaType>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace Emulator {

namespace {

constexpr qsizetype longestText = 256;

// The bus closes the connection of whoever sends more than 32 MiB at once.
constexpr qsizetype largestCall = 30 * 1024 * 1024;

template<typename T>
std::optional<T> parseNumber(QByteArrayView text)
{
    T value{};
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    if (error != std::errc() || end != text.end())
        return std::nullopt;
    if constexpr (std::is_floating_point_v<T>) {
        if (!std::isfinite(value))
            return std::nullopt;
    }
    return value;
}

// Calls handle(part) for the parts between separators until it returns false, which is then returned.
template<typename Handle>
bool forEachPart(QByteArrayView text, char separator, Handle handle)
{
    for (;;) {
        const qsizetype end = text.indexOf(separator);
        if (end < 0)
            return handle(text);
        if (!handle(text.first(end)))
            return false;
        text = text.sliced(end + 1);
    }
}

class Parser
{
public:
    Arguments parse(QByteArrayView text)
    {
        if (!text.isEmpty()) {
            const bool ok = forEachPart(text, ' ', [this](QByteArrayView part) { return parseValue(part); });
            if (!ok) {
                m_arguments.values.clear();
                m_arguments.texts.clear();
            }
        }
        return m_arguments;
    }

private:
    bool parseValue(QByteArrayView part)
    {
        static constexpr QByteArrayView arrayType = "array:array:double:";
        if (part.startsWith(arrayType))
            return parseArray(part.sliced(arrayType.size()));
        const qsizetype colon = part.indexOf(':');
        if (colon < 0)
            return fail(u"\"%1\" is not a type, a colon and a value"_s.arg(shortened(part)));
        const QByteArrayView type = part.first(colon);
        const QByteArrayView text = part.sliced(colon + 1);
        if (type == "int32")
            return addNumber<qint32>(text, u"\"%1\" is not a whole number of 32 bits"_s);
        if (type == "double")
            return addNumber<double>(text, u"\"%1\" is not a number"_s);
        if (type == "boolean")
            return addBoolean(text);
        if (type == "string")
            return addString(text);
        return fail(u"The type \"%1\" is unknown"_s.arg(shortened(type)));
    }

    template<typename T>
    bool addNumber(QByteArrayView text, const QString &complaint)
    {
        const std::optional<T> value = parseNumber<T>(text);
        return value ? add(QVariant(*value), text, 16) : fail(complaint.arg(shortened(text)));
    }

    bool addBoolean(QByteArrayView text)
    {
        if (text != "0" && text != "1")
            return fail(u"\"%1\" is neither 0 nor 1"_s.arg(shortened(text)));
        return add(QVariant(text == "1"), text, 8);
    }

    bool addString(QByteArrayView text)
    {
        if (text.contains('\0'))
            return fail(u"A string holds a zero character"_s);
        return add(QString::fromUtf8(text), text, text.size() + 8);
    }

    bool parseArray(QByteArrayView text)
    {
        QList<QList<double>> array;
        qsizetype numbers = 0;
        if (!text.isEmpty()) {
            array.reserve(std::count(text.begin(), text.end(), ';') + 1);
            const bool ok = forEachPart(text, ';', [&](QByteArrayView innerText) {
                QList<double> inner;
                inner.reserve(4);
                const bool ok = forEachPart(innerText, ',', [&](QByteArrayView numberText) {
                    const std::optional<double> number = parseNumber<double>(numberText);
                    if (!number)
                        return fail(u"\"%1\" is not a number in item %2 of an array"_s.arg(shortened(numberText))
                                        .arg(array.size()));
                    inner.append(*number);
                    return true;
                });
                numbers += inner.size();
                array.append(std::move(inner));
                return ok;
            });
            if (!ok)
                return false;
        }
        const qsizetype size = 16 + 8 * (array.size() + numbers);
        return add(QVariant::fromValue(array), text, size);
    }

    bool add(const QVariant &value, QByteArrayView text, qsizetype size)
    {
        m_size += size;
        if (m_size > largestCall)
            return fail(u"The arguments are too large for the bus"_s);
        m_arguments.values.append(value);
        m_arguments.texts.append(shortened(text));
        return true;
    }

    bool fail(const QString &error)
    {
        m_arguments.error = error;
        return false;
    }

    Arguments m_arguments;
    qsizetype m_size = 0;
};

} // namespace

void registerArgumentTypes()
{
    qDBusRegisterMetaType<QList<QList<double>>>();
}

Arguments parseArguments(QByteArrayView text)
{
    return Parser().parse(text);
}

QString shortened(QByteArrayView text)
{
    if (text.size() <= longestText)
        return QString::fromUtf8(text);
    // A character that is cut in two becomes a replacement character, which is fine for a person.
    return QString::fromUtf8(text.first(longestText)) + u"…"_s;
}

} // namespace Emulator
