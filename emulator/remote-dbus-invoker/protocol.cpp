// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "protocol.h"

#include "arguments.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QLocale>
#include <QMetaType>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Emulator {

namespace {

constexpr qsizetype longestName = 255;

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// An element of a name: letters, digits, underscores and what else is allowed.
bool isElement(QStringView element, bool mayStartWithDigit, QStringView others = {})
{
    return !element.isEmpty() && (mayStartWithDigit || !isDigit(element.front()))
        && std::ranges::all_of(element, [others](QChar c) { return isLetter(c) || isDigit(c) || others.contains(c); });
}

bool isDottedName(QStringView name, bool mayStartWithDigit, QStringView others = {})
{
    if (name.size() > longestName || !name.contains(u'.'))
        return false;
    const QList<QStringView> elements = name.split(u'.');
    return std::ranges::all_of(
        elements, [&](QStringView element) { return isElement(element, mayStartWithDigit, others); });
}

bool isServiceName(QStringView name)
{
    if (name.startsWith(u':'))
        return isDottedName(name.sliced(1), true, u"-");
    return isDottedName(name, false, u"-");
}

// The names of the bus library's own, local signals are never sent.
bool isInterfaceName(QStringView name)
{
    return isDottedName(name, false) && name != "org.freedesktop.DBus.Local"_L1;
}

bool isObjectPath(QStringView path)
{
    if (path == "/"_L1)
        return true;
    if (!path.startsWith(u'/') || path == "/org/freedesktop/DBus/Local"_L1)
        return false;
    const QList<QStringView> elements = path.sliced(1).split(u'/');
    return std::ranges::all_of(elements, [](QStringView element) { return isElement(element, true); });
}

bool isMethodName(QStringView name)
{
    return name.size() <= longestName && isElement(name, false);
}

QString complaint(const Request &request)
{
    if (!isServiceName(request.service))
        return u"\"%1\" is not a service name"_s.arg(shortened(request.service.toUtf8()));
    if (!isObjectPath(request.path))
        return u"\"%1\" is not an object path"_s.arg(shortened(request.path.toUtf8()));
    if (!isInterfaceName(request.interface))
        return u"\"%1\" is not an interface name"_s.arg(shortened(request.interface.toUtf8()));
    if (!isMethodName(request.method))
        return u"\"%1\" is not a method name"_s.arg(shortened(request.method.toUtf8()));
    return {};
}

QString formatValue(const QVariant &value);

QString formatArgument(const QDBusArgument &argument)
{
    QStringList parts;
    switch (argument.currentType()) {
    case QDBusArgument::ArrayType:
        argument.beginArray();
        while (!argument.atEnd())
            parts.append(formatArgument(argument));
        argument.endArray();
        break;
    case QDBusArgument::StructureType:
        argument.beginStructure();
        while (!argument.atEnd())
            parts.append(formatArgument(argument));
        argument.endStructure();
        break;
    case QDBusArgument::MapType:
        argument.beginMap();
        while (!argument.atEnd()) {
            argument.beginMapEntry();
            const QString key = formatArgument(argument);
            parts.append(key + u'=' + formatArgument(argument));
            argument.endMapEntry();
        }
        argument.endMap();
        break;
    case QDBusArgument::BasicType:
    case QDBusArgument::VariantType:
        return formatValue(argument.asVariant());
    default:
        break;
    }
    return parts.join(u',');
}

QString formatValue(const QVariant &value)
{
    const QMetaType type = value.metaType();
    if (type == QMetaType::fromType<QDBusVariant>())
        return formatValue(value.value<QDBusVariant>().variant());
    if (type == QMetaType::fromType<QDBusArgument>())
        return formatArgument(value.value<QDBusArgument>());
    if (type == QMetaType::fromType<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (type == QMetaType::fromType<QDBusSignature>())
        return value.value<QDBusSignature>().signature();
    switch (type.id()) {
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::QStringList:
        return value.toStringList().join(u',');
    case QMetaType::UChar:
        return QString::number(value.value<uchar>());
    case QMetaType::QByteArray:
        return QString::fromLatin1(value.toByteArray().toHex());
    case QMetaType::QVariantList: {
        QStringList parts;
        for (const QVariant &item : value.toList())
            parts.append(formatValue(item));
        return parts.join(u',');
    }
    default:
        return value.toString();
    }
}

QString field(QString text)
{
    return text.replace(u':', u'꞉');
}

} // namespace

Request parseRequest(const QString &text)
{
    Request request;
    QString *const fields[] = {&request.bus, &request.service, &request.path, &request.interface, &request.method};
    qsizetype start = 0;
    for (QString *field : fields) {
        const qsizetype end = text.indexOf(u' ', start);
        if (end < 0) {
            request.error = u"A request has six fields with one blank between any two of them"_s;
            return request;
        }
        *field = text.sliced(start, end - start);
        start = end + 1;
    }
    request.arguments = QStringView(text).sliced(start).toUtf8();
    request.error = complaint(request);
    return request;
}

QString formatReply(const Reply &reply)
{
    QStringList arguments = reply.arguments;
    for (QString &argument : arguments)
        argument.replace(u'|', u'¦');
    const QStringList fields{
        field(reply.item),
        field(arguments.join(u'|')),
        field(reply.value),
        field(reply.errorName),
        field(reply.errorMessage)};
    return fields.join(u':');
}

QString formatValues(const QVariantList &values)
{
    QStringList texts;
    for (const QVariant &value : values)
        texts.append(formatValue(value));
    return texts.join(u'|');
}

QString errorName(const QString &name)
{
    return "ru.kelo.RemoteDBusInvoker.Error."_L1 + name;
}

} // namespace Emulator
