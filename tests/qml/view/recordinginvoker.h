// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QStringList>
#include <QWebSocketServer>

class QWebSocket;

namespace EmulationManagement::Internal {
class RemoteDBusInvokerService;
}

namespace TestView {

/// The emulator's end of the invoker channel: it listens where the channel connects to and keeps the frames it gets.
class RecordingInvoker : public QObject
{
    Q_OBJECT

public:
    explicit RecordingInvoker(QObject *parent = nullptr);
    ~RecordingInvoker() override;

    /// Opens the channel; false when no connection came about in time.
    bool connectChannel(EmulationManagement::Internal::RemoteDBusInvokerService *channel);

    /// Every frame sent since the last call, in order. Frames still on their way are waited for.
    Q_INVOKABLE QStringList takeFrames();
    /// Frames that have arrived by now, without waiting.
    qsizetype arrived() const { return m_frames.size(); }

    /// Answers with this frame.
    Q_INVOKABLE void reply(const QString &frame);

Q_SIGNALS:
    void frameReceived();

private:
    void acceptConnection();

    QWebSocketServer m_server;
    QWebSocket *m_socket = nullptr;
    EmulationManagement::Internal::RemoteDBusInvokerService *m_channel = nullptr;
    QStringList m_frames;
};

} // namespace TestView
