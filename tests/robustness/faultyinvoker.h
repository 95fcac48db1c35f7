// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>
#include <QWebSocketServer>

#include <functional>

class QTcpSocket;
class QWebSocket;

namespace Robustness {

/// An invoker that understands its clients well and answers as badly as a test wants: with any bytes between the frames
/// of a proper WebSocket, or in the place of its handshake.
class FaultyInvoker : public QObject
{
    Q_OBJECT

public:
    enum Opcode { Continuation = 0, Text = 1, Binary = 2, Close = 8, Ping = 9, Pong = 10 };

    /// What is sent in answer to a request to upgrade, before the connection is closed if it is to be.
    struct Handshake
    {
        std::function<QByteArray(const QByteArray &request)> answer;
        bool closes = true;
    };

    explicit FaultyInvoker(QObject *parent = nullptr);
    ~FaultyInvoker() override;

    /// False when the port is taken.
    bool listen(quint16 port);
    /// For connections to come; without an answer they get a proper one.
    void setHandshake(const Handshake &handshake) { m_handshake = handshake; }
    /// The header that agrees to a request to upgrade.
    static QByteArray agreement(const QByteArray &request);

    static QByteArray frame(int opcode, const QByteArray &payload, bool isFinal = true);
    /// The payload of a close frame.
    static QByteArray closing(quint16 code, const QByteArray &reason = {});
    /// To the last client, as they are.
    void send(const QByteArray &bytes);
    void abort();

    /// Text frames, and answers to pings, of the last client so far.
    QStringList texts() const { return m_texts; }
    QList<QByteArray> pongs() const { return m_pongs; }
    /// TCP connections so far.
    int connections() const { return m_connections; }

private:
    void accept();
    void acceptBadly(QTcpSocket *socket);
    void acceptWebSocket();

    QTcpServer m_tcpServer;
    QWebSocketServer m_webSocketServer;
    QPointer<QTcpSocket> m_socket;
    Handshake m_handshake;
    QStringList m_texts;
    QList<QByteArray> m_pongs;
    int m_connections = 0;
};

} // namespace Robustness
