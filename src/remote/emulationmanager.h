// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "remote/remotedbusinvokerservice.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

namespace EmulationManagement::Internal {

// Base of the managers that drive a D-Bus service inside the emulator through the invoker channel.
class EmulationManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(EmulationManagement::Internal::RemoteDBusInvokerService *rdbusinvoker READ rdbusinvoker WRITE
                   setRdbusinvoker NOTIFY rdbusinvokerChanged)

public:
    explicit EmulationManager(QObject *parent);

    // The channel, not owned; null until the manager is bound.
    RemoteDBusInvokerService *rdbusinvoker() const;
    // Every call adds one more pair of connections, also for the same channel: a manager bound twice hears of each
    // connection and each reply twice.
    void setRdbusinvoker(RemoteDBusInvokerService *invoker);

    // The service that the manager's calls go to.
    virtual QString bus() const = 0;
    virtual QString dbusService() const = 0;
    virtual QString dbusObject() const = 0;
    virtual QString dbusInterface() const = 0;
    // Called for each reply without an error, whichever manager made the request; always five fields.
    virtual void processDBusMethodsReturnValues(const QList<QString> &replyFields) = 0;

    // Fire and forget; arguments is a text of DBusArguments, possibly empty. Does nothing while there is no channel.
    void callDBusMethod(const QString &method, const QString &arguments);
    void processReplyFromEmulator(const QString &reply);

Q_SIGNALS:
    void rdbusinvokerChanged();
    void emulatorConnected();
    // "OK", or the text of an error.
    void replyFromEmulatorReceived(const QString &reply);

private:
    QPointer<RemoteDBusInvokerService> m_rdbusinvoker;
};

} // namespace EmulationManagement::Internal
