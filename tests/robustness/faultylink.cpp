// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/faultylink.h"

#include <QHostAddress>
#include <QTcpSocket>

#include <algorithm>
#include <chrono>

#include <sys/socket.h>

using namespace std::chrono_literals;

namespace Robustness {

namespace {

// Beyond, the sender has to wait.
constexpr qint64 readBufferSize = 64 * 1024;

void reset(QTcpSocket *socket)
{
    const linger immediately{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(int(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &immediately, sizeof immediately);
    socket->abort();
}

// Only our half, and everything before it gets there: the other end closes in its turn.
void shutDown(QTcpSocket *socket)
{
    while (socket->bytesToWrite() > 0 && socket->flush())
        ;
    ::shutdown(int(socket->socketDescriptor()), SHUT_WR);
}

} // namespace

FaultyLink::FaultyLink(QTcpSocket *plugin, quint16 emulatorPort, qint64 bytesAtOnce, QObject *parent)
    : QObject(parent)
    , m_plugin(plugin)
    , m_emulator(new QTcpSocket(this))
    , m_bytesAtOnce(bytesAtOnce)
{
    m_plugin->setParent(this);
    m_nextTurn.setSingleShot(true);
    connect(&m_nextTurn, &QTimer::timeout, this, &FaultyLink::forwardBoth);
    for (QTcpSocket *socket : {m_plugin, m_emulator}) {
        socket->setReadBufferSize(m_bytesAtOnce > 0 ? m_bytesAtOnce : readBufferSize);
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, &FaultyLink::forwardBoth);
        connect(socket, &QTcpSocket::bytesWritten, this, &FaultyLink::forwardBoth);
    }
    connect(m_emulator, &QTcpSocket::connected, this, &FaultyLink::forwardBoth);
    connect(m_plugin, &QTcpSocket::disconnected, this, [this] { onDisconnected(Direction::ToEmulator); });
    connect(m_emulator, &QTcpSocket::disconnected, this, [this] { onDisconnected(Direction::ToPlugin); });
    // Nobody listens there.
    connect(m_emulator, &QTcpSocket::errorOccurred, this, [this] {
        if (m_emulator->state() == QAbstractSocket::UnconnectedState)
            finish();
    });
    m_emulator->connectToHost(QHostAddress(QHostAddress::LocalHost), emulatorPort);
}

void FaultyLink::setFault(const std::optional<Fault> &fault)
{
    m_fault = fault;
    forwardBoth();
}

void FaultyLink::breakNow(Ending ending)
{
    if (m_state == State::Finished)
        return;
    const bool first = m_state == State::Forwarding;
    m_state = ending == Ending::HalfOpen ? State::Stalled : State::Closing;
    if (first)
        Q_EMIT broken(ending);
    switch (ending) {
    case Ending::Close:
        for (QTcpSocket *socket : {m_plugin, m_emulator}) {
            if (socket->state() == QAbstractSocket::ConnectedState) {
                socket->setReadBufferSize(0);
                socket->readAll();
                shutDown(socket);
            } else {
                socket->abort();
            }
        }
        onDisconnected(Direction::ToEmulator);
        break;
    case Ending::Reset:
        finish();
        break;
    case Ending::HalfOpen:
        break;
    }
}

void FaultyLink::forwardBoth()
{
    forward(Direction::ToEmulator);
    forward(Direction::ToPlugin);
}

void FaultyLink::forward(Direction direction)
{
    QTcpSocket *from = direction == Direction::ToEmulator ? m_plugin : m_emulator;
    QTcpSocket *to = direction == Direction::ToEmulator ? m_emulator : m_plugin;
    if (m_state == State::Closing && from->bytesAvailable() > 0)
        from->skip(from->bytesAvailable()); // a socket that closes with something unread would reset
    if (m_state != State::Forwarding || m_emulator->state() != QAbstractSocket::ConnectedState)
        return;
    const bool isFaulty = m_fault && m_fault->direction == direction;
    qint64 bytes = from->bytesAvailable();
    if (m_bytesAtOnce > 0)
        bytes = to->bytesToWrite() > 0 ? 0 : std::min(bytes, m_bytesAtOnce);
    if (isFaulty) {
        bytes = std::min(bytes, m_fault->bytes);
        m_fault->bytes -= bytes;
    }
    if (bytes > 0) {
        Q_EMIT passed(direction, bytes);
        to->write(from->read(bytes));
        to->flush(); // comes back here by way of bytesWritten()
    }
    if (isFaulty && m_fault->bytes == 0 && m_state == State::Forwarding)
        return breakNow(m_fault->ending);
    if (from->bytesAvailable() > 0 && !m_nextTurn.isActive())
        m_nextTurn.start(0ms);
}

void FaultyLink::onDisconnected(Direction lastBytes)
{
    if (m_state == State::Forwarding) { // one end hangs up: the other one gets what there is
        m_bytesAtOnce = 0;
        forward(lastBytes);
    }
    if (m_state == State::Forwarding || m_state == State::Stalled) {
        m_state = State::Closing;
        for (QTcpSocket *socket : {m_plugin, m_emulator})
            socket->disconnectFromHost();
    }
    const bool closed = m_plugin->state() == QAbstractSocket::UnconnectedState
        && m_emulator->state() == QAbstractSocket::UnconnectedState;
    if (closed)
        finish();
}

void FaultyLink::finish()
{
    if (m_state == State::Finished)
        return;
    m_state = State::Finished;
    m_nextTurn.stop();
    for (QTcpSocket *socket : {m_plugin, m_emulator}) {
        socket->disconnect(this);
        if (socket->state() == QAbstractSocket::ConnectedState)
            reset(socket);
        else
            socket->abort();
    }
    Q_EMIT finished();
}

} // namespace Robustness
