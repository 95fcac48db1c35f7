// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "caller.h"
#include "framelog.h"

#include <QObject>
#include <QWebSocketServer>

class QHostAddress;
class QWebSocket;

namespace Emulator {

/*!
    Takes requests from WebSocket clients, one a text frame, and answers each with one text frame, in the order in which
    the calls complete.

    What clients can make it keep is bounded: there is a limit to their number, and one who does not read the answers is
    disconnected. Either is said on the standard error output.
*/
class InvokerServer : public QObject
{
    Q_OBJECT

public:
    explicit InvokerServer(const QString &systemBus, QObject *parent = nullptr);
    ~InvokerServer() override;

    /*! Appends what goes over the wire to \a fileName. Returns whether it can be written. */
    bool setLogFile(const QString &fileName);

    bool listen(const QHostAddress &address, quint16 port);
    quint16 port() const;
    QString errorString() const;

private:
    void acceptConnections();
    void accept(QWebSocket *socket);

    FrameLog m_log;
    Caller m_caller;
    QWebSocketServer m_server;
    int m_clients = 0; // ever
    int m_connected = 0;
};

} // namespace Emulator
