// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QObject>
#include <QTcpServer>

#include <functional>
#include <optional>

namespace Robustness {

class FaultyLink;

enum class Direction { ToEmulator, ToPlugin };

/// How a connection breaks: with a FIN, with a RST, or silently, with both sockets open and nothing forwarded any more.
enum class Ending { Close, Reset, HalfOpen };

struct Fault
{
    Ending ending = Ending::Close;
    Direction direction = Direction::ToEmulator;
    qint64 bytes = 0; // in that direction, which still get through
};

/// Stands between the channel and an invoker, in the place of the machine's port forwarding, and breaks connections
/// wherever it is told to.
class FaultProxy : public QObject
{
    Q_OBJECT

public:
    using NextFault = std::function<std::optional<Fault>()>;

    explicit FaultProxy(quint16 emulatorPort, QObject *parent = nullptr);
    ~FaultProxy() override;

    /// False when the port is taken.
    bool listen(quint16 port);

    /// Asked at each connection; without one, or without an answer, the connection is a good one.
    void setNextFault(const NextFault &nextFault) { m_nextFault = nextFault; }
    /// In one go, in either direction; 0 for as many as there are. For connections to come.
    void setBytesAtOnce(qint64 bytes) { m_bytesAtOnce = bytes; }
    /// Of the last connection, if it is open; bytes count from here.
    void setFault(const std::optional<Fault> &fault);
    /// Breaks whatever is open now.
    void breakAll(Ending ending);

    /// So far, and those that are open.
    int connections() const { return m_connections; }
    int open() const { return int(m_links.size()); }
    /// How many faults have come true so far.
    int broken() const { return m_broken; }
    /// What got through on the last connection.
    qint64 bytes(Direction direction) const { return m_bytes.value(direction); }

Q_SIGNALS:
    void linkBroken(Ending ending);

private:
    void accept();

    quint16 m_emulatorPort;
    QTcpServer m_server;
    QList<FaultyLink *> m_links;
    NextFault m_nextFault;
    QHash<Direction, qint64> m_bytes;
    qint64 m_bytesAtOnce = 0;
    int m_connections = 0;
    int m_broken = 0;
};

} // namespace Robustness
