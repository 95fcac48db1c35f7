// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProcess>

namespace Robustness {

/// The real invoker, on the bus that the environment names. It can be ended and started as often as a test likes,
/// which the one of emulator-host cannot.
class InvokerProcess
{
public:
    explicit InvokerProcess(quint16 port);
    ~InvokerProcess();
    Q_DISABLE_COPY_MOVE(InvokerProcess)

    /// Waits until it listens; false when it does not.
    bool start();
    /// As its supervisor asks it to end. Its clients are told.
    void stop();
    /// As a crash would end it.
    void kill();

    qint64 processId() const { return m_process.processId(); }

private:
    quint16 m_port;
    QProcess m_process;
};

} // namespace Robustness
