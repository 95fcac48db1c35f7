// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "remote/remotedbusinvokerservice.h"
#include "utils/recordinginvoker.h"
#include "utils/signallog.h"

#include <QString>
#include <QStringList>

#include <utility>

namespace TestUtils {

/// What a manager does, in its order: the calls, as the other end of a real channel got them, among the signals of the
/// objects that are watched.
class ManagerLog
{
public:
    /// Calls to this service are written without it, as "method arguments"; any other frame as it is.
    ManagerLog(const QString &bus, const QString &service, const QString &object, const QString &interface);
    Q_DISABLE_COPY_MOVE(ManagerLog)

    bool listen();
    /// Opens the channel.
    bool connectChannel();

    EmulationManagement::Internal::RemoteDBusInvokerService *channel() { return &m_channel; }
    RecordingInvoker &invoker() { return m_invoker; }

    void watch(QObject *object, const QString &name = {}) { m_signals.watch(object, name); }
    void noteCall();
    bool hasCalls() const;
    /// What happened so far does not count; no frame may be under way.
    void forget() { m_signals.takeEntries(); }
    /// Everything since the last call of this function; all frames that are under way are waited for.
    QStringList takeEvents();

private:
    QString m_address;
    RecordingInvoker m_invoker;
    EmulationManagement::Internal::RemoteDBusInvokerService m_channel;
    SignalLog m_signals;
};

/// A manager that notes each of its calls at the moment it is issued: asking for the bus is a call's first step.
template<typename Manager>
class LoggedManager : public Manager
{
public:
    template<typename... Arguments>
    explicit LoggedManager(ManagerLog *log, Arguments &&...arguments)
        : Manager(std::forward<Arguments>(arguments)...)
        , m_log(log)
    {
    }

    QString bus() const override
    {
        m_log->noteCall();
        return Manager::bus();
    }

private:
    ManagerLog *m_log;
};

} // namespace TestUtils
