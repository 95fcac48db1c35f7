// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invokerserver.h"

#include <QHostAddress>
#include <QTimer>
#include <QUrl>
#include <QWebSocket>
#include <QWebSocketCorsAuthenticator>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Emulator {

namespace {

// Room for a track of a million points.
constexpr quint64 largestMessage = 64 * 1024 * 1024;

constexpr int mostClients = 100;
constexpr qint64 mostUnreadBytes = 8 * 1024 * 1024; // before one more answer, which may be of any size
constexpr auto acceptPause = 1s;

// Browsers say where a script comes from. Pages of the web have no business here; programs send no origin or their own.
bool isLocalOrigin(const QString &origin)
{
    const QString host = QUrl(origin).host();
    return origin.isEmpty() || host == "localhost"_L1 || QHostAddress(host).isLoopback();
}

} // namespace

InvokerServer::InvokerServer(const QString &systemBus, QObject *parent)
    : QObject(parent)
    , m_caller(systemBus)
    , m_server(u"remote-dbus-invoker"_s, QWebSocketServer::NonSecureMode)
{
    connect(
        &m_server,
        &QWebSocketServer::originAuthenticationRequired,
        this,
        [](QWebSocketCorsAuthenticator *authenticator) {
            authenticator->setAllowed(isLocalOrigin(authenticator->origin()));
        });
    connect(&m_server, &QWebSocketServer::newConnection, this, &InvokerServer::acceptConnections);
    // The server has paused then, most likely because there are no descriptors left.
    connect(&m_server, &QWebSocketServer::acceptError, this, [this] {
        qWarning("Clients cannot be accepted: %s", qUtf8Printable(m_server.errorString()));
        QTimer::singleShot(acceptPause, this, [this] { m_server.resumeAccepting(); });
    });
}

InvokerServer::~InvokerServer()
{
    // Sockets report their end to this object, so they go first.
    m_server.close();
    qDeleteAll(m_server.findChildren<QWebSocket *>(Qt::FindDirectChildrenOnly));
}

bool InvokerServer::setLogFile(const QString &fileName)
{
    return m_log.open(fileName);
}

bool InvokerServer::listen(const QHostAddress &address, quint16 port)
{
    return m_server.listen(address, port);
}

quint16 InvokerServer::port() const
{
    return m_server.serverPort();
}

QString InvokerServer::errorString() const
{
    return m_server.errorString();
}

void InvokerServer::acceptConnections()
{
    while (QWebSocket *socket = m_server.nextPendingConnection())
        accept(socket);
}

void InvokerServer::accept(QWebSocket *socket)
{
    if (m_connected >= mostClients) {
        qWarning("A client is refused, as there are %d already", m_connected);
        connect(socket, &QWebSocket::disconnected, socket, &QObject::deleteLater);
        socket->close(QWebSocketProtocol::CloseCodePolicyViolated, u"There are too many clients"_s);
        return;
    }
    const int client = ++m_clients;
    ++m_connected;
    m_log.connected(client);
    socket->setMaxAllowedIncomingFrameSize(largestMessage);
    socket->setMaxAllowedIncomingMessageSize(largestMessage);

    const auto answer = [this, socket, client](const Reply &reply) {
        if (socket->bytesToWrite() > mostUnreadBytes) {
            qWarning("Client %d does not read its answers and is disconnected", client);
            disconnect(socket, &QWebSocket::textMessageReceived, this, nullptr);
            disconnect(socket, &QWebSocket::binaryMessageReceived, this, nullptr);
            // Later, as this may be in the midst of what it has sent.
            QMetaObject::invokeMethod(socket, &QWebSocket::abort, Qt::QueuedConnection);
            return;
        }
        const QString text = formatReply(reply);
        m_log.reply(client, text);
        socket->sendTextMessage(text);
    };
    connect(socket, &QWebSocket::textMessageReceived, this, [this, socket, client, answer](const QString &text) {
        m_log.text(client, text);
        m_caller.call(text, socket, answer);
    });
    connect(socket, &QWebSocket::binaryMessageReceived, this, [this, client, answer](const QByteArray &data) {
        m_log.binary(client, data.size());
        answer({
            .item = {},
            .arguments = {},
            .value = {},
            .errorName = errorName(u"InvalidRequest"_s),
            .errorMessage = u"A request is a text frame"_s,
        });
    });
    connect(socket, &QWebSocket::disconnected, this, [this, socket, client] {
        --m_connected;
        m_log.disconnected(client);
        socket->deleteLater();
    });
}

} // namespace Emulator
