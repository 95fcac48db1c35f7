// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

QT_BEGIN_NAMESPACE
class QWebSocket;
QT_END_NAMESPACE

namespace EmulationManagement::Internal {

// The one channel to the invoker inside the emulator, which performs D-Bus calls there.
//
// One text frame per request and one per reply. Nothing is queued: a request made while the socket is not open is lost.
// Replies are not matched with requests. Once asked to connect, the channel does so for ever: at once after a
// connection that was lost, and with a pause after an attempt that failed.
class RemoteDBusInvokerService : public QObject
{
    Q_OBJECT

public:
    // The virtual machine's rule that forwards hostTcpPort to emulatorTcpPort.
    static inline const QString portForwardingRule = QStringLiteral("emulationmanagementtcp");
    static constexpr quint16 hostTcpPort = 5454;
    static constexpr quint16 emulatorTcpPort = 1234;

    explicit RemoteDBusInvokerService(QObject *parent = nullptr);
    ~RemoteDBusInvokerService() override;

    void connectToEmulator();

    // The fields bus to method must not contain blanks; arguments is a text of DBusArguments, possibly empty.
    void callDBusMethod(
        const QString &bus,
        const QString &service,
        const QString &object,
        const QString &interface,
        const QString &method,
        const QString &arguments);

Q_SIGNALS:
    void webSocketConnected();
    void webSocketDisconnected();
    void replyReceived(const QString &reply);

private:
    void replaceWebSocket();
    void handleConnected();
    void handleDisconnected();

    // One for each connection: used again, it would end the next one over a frame that the one before left unfinished.
    // Not made earlier, as it loads the TLS library, which the start of the IDE need not wait for.
    std::unique_ptr<QWebSocket> m_webSocket;
    bool m_connected = false;
    QTimer m_retryTimer;
};

} // namespace EmulationManagement::Internal
