// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QWebSocketServer>

#include <optional>

class QWebSocket;

namespace TestUtils {

/// The far end of the channel: a WebSocket server on the loopback that keeps every text frame and answers only what it
/// is told to.
class RecordingInvoker : public QObject
{
    Q_OBJECT

public:
    explicit RecordingInvoker(QObject *parent = nullptr);
    ~RecordingInvoker() override;

    /// False when the port is taken.
    bool listen(quint16 port);
    /// Refuses further connections; those that are open stay.
    void close();
    /// Ends every open connection.
    void dropClients();

    Q_INVOKABLE void sendText(const QString &text);
    void sendBinary(const QByteArray &data);

    /// Text frames so far, as they came.
    QStringList frames() const { return m_frames; }
    /// Takes the frames away.
    QStringList takeFrames();
    int binaryFrames() const { return m_binaryFrames; }
    /// Connections so far, and those that are open.
    int connections() const { return m_connections; }
    int clients() const { return int(m_clients.size()); }

    /// Answers a frame with a text: those rules that are set, nothing else.
    Q_INVOKABLE void setAnswer(const QString &frame, const QString &reply);
    /// Answers every other frame, too.
    Q_INVOKABLE void setAnswerToAll(const QString &reply) { m_answerToAll = reply; }
    Q_INVOKABLE void clearAnswers();

Q_SIGNALS:
    void frameReceived(const QString &frame);

private:
    void accept();
    void receive(QWebSocket *client, const QString &frame);

    QWebSocketServer m_server;
    QList<QWebSocket *> m_clients;
    QStringList m_frames;
    QHash<QString, QString> m_answers;
    std::optional<QString> m_answerToAll;
    int m_binaryFrames = 0;
    int m_connections = 0;
};

} // namespace TestUtils
