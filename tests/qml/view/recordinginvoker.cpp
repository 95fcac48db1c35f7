// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "view/recordinginvoker.h"

#include "remote/remotedbusinvokerservice.h"

#include <QTest>
#include <QWebSocket>

using namespace Qt::StringLiterals;
using EmulationManagement::Internal::RemoteDBusInvokerService;

namespace TestView {

namespace {
const QString lastFrame = u"the last frame was sent before this "_s;
}

RecordingInvoker::RecordingInvoker(QObject *parent)
    : QObject(parent)
    , m_server(u"recording invoker"_s, QWebSocketServer::NonSecureMode)
{
    connect(&m_server, &QWebSocketServer::newConnection, this, &RecordingInvoker::acceptConnection);
}

RecordingInvoker::~RecordingInvoker()
{
    delete m_socket;
}

bool RecordingInvoker::connectChannel(RemoteDBusInvokerService *channel)
{
    m_channel = channel;
    if (!m_server.listen(QHostAddress::LocalHost, RemoteDBusInvokerService::hostTcpPort)) {
        qCritical().noquote() << m_server.errorString();
        return false;
    }
    bool connected = false;
    connect(
        channel,
        &RemoteDBusInvokerService::webSocketConnected,
        this,
        [&connected] { connected = true; },
        Qt::SingleShotConnection);
    channel->connectToEmulator();
    return QTest::qWaitFor([&] { return connected && m_socket; }, 30'000);
}

QStringList RecordingInvoker::takeFrames()
{
    // One channel keeps the order: when this frame is here, all earlier ones are.
    m_channel->callDBusMethod(lastFrame, {}, {}, {}, {}, {});
    const auto isLast = [this] { return !m_frames.isEmpty() && m_frames.constLast().startsWith(lastFrame); };
    if (!QTest::qWaitFor(isLast, 30'000))
        qFatal("The recording invoker has lost its connection.");
    m_frames.removeLast();
    return std::exchange(m_frames, {});
}

void RecordingInvoker::reply(const QString &frame)
{
    m_socket->sendTextMessage(frame);
}

void RecordingInvoker::acceptConnection()
{
    m_socket = m_server.nextPendingConnection();
    connect(m_socket, &QWebSocket::textMessageReceived, this, [this](const QString &frame) {
        m_frames.append(frame);
        Q_EMIT frameReceived();
    });
}

} // namespace TestView
