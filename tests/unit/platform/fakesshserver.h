// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <chrono>

// A port of the loopback interface that accepts connections and greets each with what its greeting is by then.
class FakeSshServer : public QTcpServer
{
public:
    explicit FakeSshServer(const QByteArray &greeting = "SSH-2.0-Fake\r\n")
        : greeting(greeting)
    {
        connect(this, &QTcpServer::newConnection, this, [this] {
            ++connectionCount;
            QTcpSocket *socket = nextPendingConnection();
            QTimer::singleShot(delay, socket, [this, socket] { socket->write(this->greeting); });
        });
        if (!listen(QHostAddress::LocalHost))
            qFatal("no port to listen on");
    }

    QByteArray greeting;
    std::chrono::milliseconds delay{0};
    int connectionCount = 0;
};
