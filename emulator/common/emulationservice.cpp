// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulationservice.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QMetaProperty>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Emulator {

EmulationService::EmulationService(const QDBusConnection &connection, const QString &path, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_path(path)
{
    qDBusRegisterMetaType<CallCounts>();
}

void EmulationService::done()
{
    if (calledFromDBus())
        ++m_calls[message().member()];
    publish();
}

void EmulationService::fail(const QString &name, const QString &message)
{
    if (calledFromDBus())
        sendErrorReply(interfaceName() + ".Error."_L1 + name, message);
}

bool EmulationService::areFinite(std::initializer_list<double> values)
{
    if (std::ranges::all_of(values, [](double value) { return std::isfinite(value); }))
        return true;
    fail(u"InvalidArguments"_s, u"A number is not finite"_s);
    return false;
}

void EmulationService::publish()
{
    const QVariantMap changed = changedProperties();
    if (changed.isEmpty())
        return;
    QDBusMessage signal =
        QDBusMessage::createSignal(m_path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << interfaceName() << changed << QStringList();
    m_connection.send(signal);
}

QString EmulationService::interfaceName() const
{
    const QMetaObject *meta = metaObject();
    return QString::fromLatin1(meta->classInfo(meta->indexOfClassInfo("D-Bus Interface")).value());
}

QVariantMap EmulationService::changedProperties()
{
    QVariantMap changed;
    const QMetaObject *meta = metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        const QString name = QString::fromLatin1(property.name());
        const QVariant value = property.read(this);
        QVariant &published = m_published[name];
        if (published != value) {
            published = value;
            changed.insert(name, value);
        }
    }
    return changed;
}

} // namespace Emulator
