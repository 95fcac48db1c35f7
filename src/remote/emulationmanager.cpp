// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/emulationmanager.h"

#include "remote/remotelog.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr qsizetype replyFieldCount = 5;
constexpr qsizetype errorNameField = 3;
constexpr qsizetype errorMessageField = 4;

} // namespace

EmulationManager::EmulationManager(QObject *parent)
    : QObject(parent)
{
}

RemoteDBusInvokerService *EmulationManager::rdbusinvoker() const
{
    return m_rdbusinvoker;
}

void EmulationManager::setRdbusinvoker(RemoteDBusInvokerService *invoker)
{
    m_rdbusinvoker = invoker;
    if (invoker) {
        // Connections accumulate: the GPS manager is bound twice and sends its state twice on each connection.
        connect(invoker, &RemoteDBusInvokerService::webSocketConnected, this, &EmulationManager::emulatorConnected);
        connect(invoker, &RemoteDBusInvokerService::replyReceived, this, &EmulationManager::processReplyFromEmulator);
    }
    Q_EMIT rdbusinvokerChanged();
}

void EmulationManager::callDBusMethod(const QString &method, const QString &arguments)
{
    if (!m_rdbusinvoker) {
        qCDebug(remoteLog) << "No channel for" << method << arguments;
        return;
    }
    m_rdbusinvoker->callDBusMethod(bus(), dbusService(), dbusObject(), dbusInterface(), method, arguments);
}

void EmulationManager::processReplyFromEmulator(const QString &reply)
{
    qCDebug(remoteLog) << "Reply:" << reply;
    const QStringList fields = reply.split(u':');
    if (fields.size() != replyFieldCount) {
        Q_EMIT replyFromEmulatorReceived(reply);
        return;
    }
    if (fields.at(errorNameField).isEmpty()) {
        processDBusMethodsReturnValues(fields);
        Q_EMIT replyFromEmulatorReceived(u"OK"_s);
        return;
    }
    Q_EMIT replyFromEmulatorReceived(u"%1 %2"_s.arg(fields.at(errorNameField), fields.at(errorMessageField)));
}

} // namespace EmulationManagement::Internal
