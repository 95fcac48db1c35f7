// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/faultyinvoker.h"

#include <QCryptographicHash>
#include <QTcpSocket>
#include <QWebSocket>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace Robustness {

FaultyInvoker::FaultyInvoker(QObject *parent)
    : QObject(parent)
    , m_webSocketServer(u"faulty invoker"_s, QWebSocketServer::NonSecureMode)
{
    connect(&m_tcpServer, &QTcpServer::newConnection, this, &FaultyInvoker::accept);
    connect(&m_webSocketServer, &QWebSocketServer::newConnection, this, &FaultyInvoker::acceptWebSocket);
}

FaultyInvoker::~FaultyInvoker()
{
    // Sockets report their end to this object, so they go first.
    qDeleteAll(findChildren<QWebSocket *>());
    qDeleteAll(findChildren<QTcpSocket *>());
}

bool FaultyInvoker::listen(quint16 port)
{
    return m_tcpServer.listen(QHostAddress::LocalHost, port);
}

QByteArray FaultyInvoker::agreement(const QByteArray &request)
{
    QByteArray key;
    for (const QByteArray &line : request.split('\n')) {
        if (line.toLower().startsWith("sec-websocket-key:"))
            key = line.sliced(line.indexOf(':') + 1).trimmed();
    }
    const QByteArray accepted =
        QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1).toBase64();
    return "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Accept: "
        + accepted + "\r\n\r\n";
}

QByteArray FaultyInvoker::frame(int opcode, const QByteArray &payload, bool isFinal)
{
    constexpr qsizetype shortest = 126;
    QByteArray header(1, char(opcode | (isFinal ? 0x80 : 0)));
    const auto appendBigEndian = [&header](auto number) {
        number = qToBigEndian(number);
        header.append(reinterpret_cast<const char *>(&number), sizeof number);
    };
    if (payload.size() < shortest) {
        appendBigEndian(quint8(payload.size()));
    } else if (payload.size() <= 0xffff) {
        appendBigEndian(quint8(126));
        appendBigEndian(quint16(payload.size()));
    } else {
        appendBigEndian(quint8(127));
        appendBigEndian(quint64(payload.size()));
    }
    return header + payload;
}

QByteArray FaultyInvoker::closing(quint16 code, const QByteArray &reason)
{
    const quint16 bigEndian = qToBigEndian(code);
    return QByteArray(reinterpret_cast<const char *>(&bigEndian), sizeof bigEndian) + reason;
}

void FaultyInvoker::send(const QByteArray &bytes)
{
    if (m_socket)
        m_socket->write(bytes);
}

void FaultyInvoker::abort()
{
    if (m_socket)
        m_socket->abort();
}

void FaultyInvoker::accept()
{
    while (QTcpSocket *socket = m_tcpServer.nextPendingConnection()) {
        ++m_connections;
        m_socket = socket;
        m_texts.clear();
        m_pongs.clear();
        if (m_handshake.answer)
            acceptBadly(socket);
        else
            m_webSocketServer.handleConnection(socket);
    }
}

void FaultyInvoker::acceptBadly(QTcpSocket *socket)
{
    socket->setParent(this);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this, [socket, handshake = m_handshake] {
        // Complete, and the first one: what follows is for nobody.
        const QByteArray request = socket->peek(socket->bytesAvailable());
        if (!request.startsWith("GET ") || !request.contains("\r\n\r\n"))
            return;
        socket->write(handshake.answer(socket->readAll()));
        if (handshake.closes)
            socket->disconnectFromHost();
    });
}

void FaultyInvoker::acceptWebSocket()
{
    while (QWebSocket *client = m_webSocketServer.nextPendingConnection()) {
        client->setParent(this);
        connect(client, &QWebSocket::textMessageReceived, this, [this](const QString &text) { m_texts.append(text); });
        connect(
            client, &QWebSocket::pong, this, [this](quint64, const QByteArray &payload) { m_pongs.append(payload); });
        connect(client, &QWebSocket::disconnected, client, &QObject::deleteLater);
    }
}

} // namespace Robustness
