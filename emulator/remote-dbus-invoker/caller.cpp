// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "caller.h"

#include "arguments.h"
#include "common/bus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

using namespace Qt::StringLiterals;

namespace Emulator {

namespace {

const QStringList &busNames()
{
    static const QStringList names{u"system"_s, u"session"_s};
    return names;
}

QString connectionName(const QString &bus)
{
    return "invoker-"_L1 + bus;
}

} // namespace

Caller::Caller(const QString &systemBus, QObject *parent)
    : QObject(parent)
    , m_systemBus(systemBus)
{
    registerArgumentTypes();
}

Caller::~Caller()
{
    for (const QString &bus : busNames())
        QDBusConnection::disconnectFromBus(connectionName(bus));
}

void Caller::call(const QString &request, QObject *context, const Callback &callback)
{
    const Request parsed = parseRequest(request);
    Reply reply{.item = parsed.method, .arguments = {}, .value = {}, .errorName = {}, .errorMessage = {}};
    const auto refuse = [&](const QString &name, const QString &message) {
        reply.errorName = errorName(name);
        reply.errorMessage = message;
        callback(reply);
    };
    if (!parsed.error.isEmpty()) {
        // What stands in the place of the method is not worth repeating.
        reply.item.clear();
        return refuse(u"InvalidRequest"_s, parsed.error);
    }

    const Arguments arguments = parseArguments(parsed.arguments);
    if (!arguments.error.isEmpty())
        return refuse(u"InvalidArguments"_s, arguments.error);
    reply.arguments = arguments.texts;

    if (!busNames().contains(parsed.bus))
        return refuse(u"UnknownBus"_s, u"There is no bus \"%1\""_s.arg(shortened(parsed.bus.toUtf8())));
    const std::optional<QDBusConnection> bus = connection(parsed.bus);
    if (!bus)
        return refuse(u"BusUnavailable"_s, u"There is no connection to the %1 bus"_s.arg(parsed.bus));

    QDBusMessage message = QDBusMessage::createMethodCall(parsed.service, parsed.path, parsed.interface, parsed.method);
    message.setArguments(arguments.values);
    auto *watcher = new QDBusPendingCallWatcher(bus->asyncCall(message), context);
    connect(watcher, &QDBusPendingCallWatcher::finished, context, [reply, callback](QDBusPendingCallWatcher *watcher) {
        watcher->deleteLater();
        Reply finished = reply;
        const QDBusMessage answer = watcher->reply();
        if (answer.type() == QDBusMessage::ErrorMessage) {
            finished.errorName = answer.errorName();
            finished.errorMessage = answer.errorMessage();
        } else {
            finished.value = formatValues(answer.arguments());
        }
        callback(finished);
    });
}

// A bus that went away is looked for again at the next call.
std::optional<QDBusConnection> Caller::connection(const QString &bus)
{
    const QString name = connectionName(bus);
    QDBusConnection connection(name);
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        connection = connectToBus(bus == "system"_L1 ? m_systemBus : bus, name);
    }
    if (!connection.isConnected())
        return std::nullopt;
    return connection;
}

} // namespace Emulator
