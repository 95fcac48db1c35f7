// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

// A port of the loopback interface that accepts connections and greets each with the same bytes.
class FakeSshServer : public QTcpServer
{
public:
    explicit FakeSshServer(const QByteArray &greeting = "SSH-2.0-Fake\r\n")
    {
        connect(this, &QTcpServer::newConnection, this, [this, greeting] {
            ++connectionCount;
            nextPendingConnection()->write(greeting);
        });
        if (!listen(QHostAddress::LocalHost))
            qFatal("no port to listen on");
    }

    int connectionCount = 0;
};
