// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/guest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

using namespace Qt::StringLiterals;

namespace Robustness::Guest {

const QString sensorService = u"ru.kelo.SensorfwEmulationManagement"_s;
const QString positionService = u"ru.kelo.GeoclueEmulationManagement"_s;

namespace {

QString objectPath(const QString &service)
{
    return u'/' + QString(service).replace(u'.', u'/');
}

QVariantMap properties(const QString &service)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, objectPath(service), u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
    message << service;
    const QDBusReply<QVariantMap> reply = QDBusConnection::systemBus().call(message);
    QVariantMap properties = reply.value();
    properties.remove(u"calls"_s); // how often, which says nothing about the state
    return properties;
}

} // namespace

QVariantMap sensors()
{
    return properties(sensorService);
}

QVariantMap position()
{
    return properties(positionService);
}

bool call(const QString &service, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, objectPath(service), service, method);
    message.setArguments(arguments);
    return QDBusConnection::systemBus().call(message).type() == QDBusMessage::ReplyMessage;
}

} // namespace Robustness::Guest
