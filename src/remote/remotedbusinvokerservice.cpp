// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/remotedbusinvokerservice.h"

#include "remote/remotelog.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QStringBuilder>
#include <QUrl>
#include <QWebSocket>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace EmulationManagement::Internal {

namespace {

// Nobody listens who could miss these milliseconds; without them, attempts take a whole core while the emulator is off.
constexpr auto retryPause = 20ms;

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
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(retryPause);
    connect(&m_retryTimer, &QTimer::timeout, this, &RemoteDBusInvokerService::connectToEmulator);
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
    m_connected = false;
    m_retryTimer.stop();
    m_webSocket = std::make_unique<QWebSocket>(QString(), QWebSocketProtocol::Version13);
    m_webSocket->setProxy(
        QNetworkProxy::NoProxy); // the port is this machine's; to look for a proxy costs more than to try
    connect(m_webSocket.get(), &QWebSocket::connected, this, &RemoteDBusInvokerService::handleConnected);
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

void RemoteDBusInvokerService::handleConnected()
{
    m_connected = true;
    Q_EMIT webSocketConnected();
}

// A failed attempt is reported as a disconnection too, so this tries until the emulator is there.
void RemoteDBusInvokerService::handleDisconnected()
{
    // Whoever hears of it may wait in an event loop, where somebody may connect anew: the socket that is still
    // reporting has to outlive that.
    QWebSocket *reporting = m_webSocket.release();
    reporting->disconnect(this);
    const bool wasConnected = std::exchange(m_connected, false);
    const QPointer<RemoteDBusInvokerService> self = this;
    Q_EMIT webSocketDisconnected();
    reporting->deleteLater();
    if (!self || m_webSocket)
        return;
    if (wasConnected)
        connectToEmulator();
    else
        m_retryTimer.start();
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
