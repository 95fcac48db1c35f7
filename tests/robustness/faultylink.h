// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "robustness/faultproxy.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QTcpSocket;

namespace Robustness {

/// One connection through the proxy: two sockets, and what is read from the one is written to the other.
class FaultyLink : public QObject
{
    Q_OBJECT

public:
    /// Takes the plugin's socket over, which waits until the emulator's is connected.
    FaultyLink(QTcpSocket *plugin, quint16 emulatorPort, qint64 bytesAtOnce, QObject *parent);

    void setFault(const std::optional<Fault> &fault);
    void breakNow(Ending ending);

Q_SIGNALS:
    void passed(Direction direction, qint64 bytes);
    /// Once at most, and not when one of the ends hangs up first.
    void broken(Ending ending);
    /// Both sockets are closed.
    void finished();

private:
    enum class State { Forwarding, Stalled, Closing, Finished };

    void forward(Direction direction);
    void forwardBoth();
    void onDisconnected(Direction lastBytes);
    void finish();

    QTcpSocket *m_plugin;
    QTcpSocket *m_emulator;
    QTimer m_nextTurn;
    qint64 m_bytesAtOnce;
    std::optional<Fault> m_fault;
    State m_state = State::Forwarding;
};

} // namespace Robustness
