// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/remotedbusinvokerservice.h"

#include "remote/remotelog.h"

#include <QPointer>
#include <QStringBuilder>
#include <QUrl>
#include <QWebSocket>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

// The fields are filled in one after another, so a placeholder in one of them takes a later one.
QString requestFrame(
    const QString &bus,
    const QString &service,
    const QString &object,
    const QString &interface,
    const QString &method,
    const QString &arguments)
{
    // Without placeholders, as all our fields are, this is the same text at a fraction of the cost.
    const auto isPlain = [](const QString &field) { return !field.contains(u'%'); };
    if (isPlain(bus) && isPlain(service) && isPlain(object) && isPlain(interface) && isPlain(method))
        return bus % u' ' % service % u' ' % object % u' ' % interface % u' ' % method % u' ' % arguments;
    return u"%1 %2 %3 %4 %5 %6"_s.arg(bus).arg(service).arg(object).arg(interface).arg(method).arg(arguments);
}

} // namespace

RemoteDBusInvokerService::RemoteDBusInvokerService(QObject *parent)
    : QObject(parent)
{
}

RemoteDBusInvokerService::~RemoteDBusInvokerService()
{
    // A socket that closes while it is destroyed must not be opened again.
    if (m_webSocket)
        m_webSocket->disconnect(this);
}

void RemoteDBusInvokerService::replaceWebSocket()
{
    if (m_webSocket) {
        m_webSocket->disconnect(this);
        m_webSocket.release()->deleteLater();
    }
    m_webSocket = std::make_unique<QWebSocket>(QString(), QWebSocketProtocol::Version13);
    connect(m_webSocket.get(), &QWebSocket::connected, this, &RemoteDBusInvokerService::webSocketConnected);
    connect(m_webSocket.get(), &QWebSocket::disconnected, this, &RemoteDBusInvokerService::handleDisconnected);
    connect(m_webSocket.get(), &QWebSocket::textMessageReceived, this, &RemoteDBusInvokerService::replyReceived);
}

void RemoteDBusInvokerService::connectToEmulator()
{
    replaceWebSocket();
    const QUrl url(u"ws://127.0.0.1:%1"_s.arg(hostTcpPort));
    qCDebug(remoteLog) << "Connecting to" << url;
    m_webSocket->open(url);
}

// A failed attempt is reported as a disconnection too, so this tries until the emulator is there.
void RemoteDBusInvokerService::handleDisconnected()
{
    // Whoever hears of it may wait in an event loop, where somebody may connect anew: the socket that is still
    // reporting has to outlive that.
    QWebSocket *reporting = m_webSocket.release();
    reporting->disconnect(this);
    const QPointer<RemoteDBusInvokerService> self = this;
    Q_EMIT webSocketDisconnected();
    reporting->deleteLater();
    if (self && !m_webSocket)
        connectToEmulator();
}

void RemoteDBusInvokerService::callDBusMethod(
    const QString &bus,
    const QString &service,
    const QString &object,
    const QString &interface,
    const QString &method,
    const QString &arguments)
{
    if (!m_webSocket)
        return;
    const QString request = requestFrame(bus, service, object, interface, method, arguments);
    qCDebug(remoteLog) << "Request:" << request;
    m_webSocket->sendTextMessage(request);
}

} // namespace EmulationManagement::Internal
