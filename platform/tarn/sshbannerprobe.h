// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

namespace Tarn::Internal {

// Waits until an SSH server greets on a port. A mere connection does not tell: a forwarding host accepts it long before
// the guest listens.
class SshBannerProbe : public QObject
{
    Q_OBJECT

public:
    explicit SshBannerProbe(QObject *parent = nullptr);

    void start(const QString &host, quint16 port); // tries again and again until it is stopped or answered
    void stop();

Q_SIGNALS:
    void answered(); // once per start

private:
    void connectSocket();
    void readBanner();
    void giveUpAttempt();
    void retry();

    QTcpSocket m_socket;
    QTimer m_attemptTimer; // ends an attempt that nothing comes of
    QTimer m_retryTimer;
    QString m_host;
    quint16 m_port = 0;
    bool m_active = false;
};

} // namespace Tarn::Internal
