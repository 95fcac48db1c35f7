// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/recordinginvoker.h"

#include <QHostAddress>
#include <QWebSocket>

#include <utility>

using namespace Qt::StringLiterals;

namespace TestUtils {

RecordingInvoker::RecordingInvoker(QObject *parent)
    : QObject(parent)
    , m_server(u"recording invoker"_s, QWebSocketServer::NonSecureMode)
{
    connect(&m_server, &QWebSocketServer::newConnection, this, &RecordingInvoker::accept);
}

RecordingInvoker::~RecordingInvoker()
{
    for (QWebSocket *client : std::as_const(m_clients))
        client->disconnect(this);
}

bool RecordingInvoker::listen(quint16 port)
{
    return m_server.listen(QHostAddress::LocalHost, port);
}

void RecordingInvoker::close()
{
    m_server.close();
}

void RecordingInvoker::dropClients()
{
    const QList<QWebSocket *> clients = m_clients;
    for (QWebSocket *client : clients)
        client->abort();
}

void RecordingInvoker::sendText(const QString &text)
{
    for (QWebSocket *client : std::as_const(m_clients))
        client->sendTextMessage(text);
}

void RecordingInvoker::sendBinary(const QByteArray &data)
{
    for (QWebSocket *client : std::as_const(m_clients))
        client->sendBinaryMessage(data);
}

QStringList RecordingInvoker::takeFrames()
{
    return std::exchange(m_frames, {});
}

void RecordingInvoker::setAnswer(const QString &frame, const QString &reply)
{
    m_answers.insert(frame, reply);
}

void RecordingInvoker::clearAnswers()
{
    m_answers.clear();
    m_answerToAll.reset();
}

void RecordingInvoker::accept()
{
    while (QWebSocket *client = m_server.nextPendingConnection()) {
        client->setParent(this);
        m_clients.append(client);
        ++m_connections;
        connect(client, &QWebSocket::textMessageReceived, this, [this, client](const QString &frame) {
            receive(client, frame);
        });
        connect(client, &QWebSocket::binaryMessageReceived, this, [this] { ++m_binaryFrames; });
        connect(client, &QWebSocket::disconnected, this, [this, client] {
            m_clients.removeAll(client);
            client->deleteLater();
        });
    }
}

void RecordingInvoker::receive(QWebSocket *client, const QString &frame)
{
    m_frames.append(frame);
    const auto answer = m_answers.constFind(frame);
    if (answer != m_answers.constEnd())
        client->sendTextMessage(*answer);
    else if (m_answerToAll)
        client->sendTextMessage(*m_answerToAll);
    Q_EMIT frameReceived(frame);
}

} // namespace TestUtils
