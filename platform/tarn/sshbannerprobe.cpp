// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sshbannerprobe.h"

#include <QNetworkProxy>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace Tarn::Internal {

namespace {

// A machine under load may take long to greet, and longer still while it is asked again and again: each attempt that
// nothing comes of gives the next one more time.
constexpr std::chrono::milliseconds shortestAttempt = 5s;
constexpr std::chrono::milliseconds longestAttempt = 60s;
constexpr auto retryPause = 300ms;
constexpr QByteArrayView bannerStart = "SSH-";

} // namespace

SshBannerProbe::SshBannerProbe(QObject *parent)
    : QObject(parent)
{
    m_socket.setProxy(QNetworkProxy::NoProxy); // the IDE's proxy is for the world outside
    m_attemptTimer.setSingleShot(true);
    m_retryTimer.setSingleShot(true);
    m_retryTimer.setInterval(retryPause);
    connect(&m_socket, &QTcpSocket::readyRead, this, &SshBannerProbe::readBanner);
    connect(&m_socket, &QTcpSocket::disconnected, this, &SshBannerProbe::retry);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &SshBannerProbe::retry);
    connect(&m_attemptTimer, &QTimer::timeout, this, &SshBannerProbe::giveUpAttempt);
    connect(&m_retryTimer, &QTimer::timeout, this, &SshBannerProbe::connectSocket);
}

void SshBannerProbe::start(const QString &host, quint16 port)
{
    stop();
    m_host = host;
    m_port = port;
    m_active = true;
    m_attemptTimer.setInterval(shortestAttempt);
    m_retryTimer.start(); // the machine has only just been switched on
}

void SshBannerProbe::stop()
{
    m_active = false;
    m_attemptTimer.stop();
    m_retryTimer.stop();
    m_socket.abort();
}

void SshBannerProbe::connectSocket()
{
    m_socket.abort();
    m_retryTimer.stop(); // the end of the attempt before, which is no reason to cut this one short
    m_attemptTimer.start();
    m_socket.connectToHost(m_host, m_port);
}

void SshBannerProbe::readBanner()
{
    if (!m_active || m_socket.bytesAvailable() < bannerStart.size())
        return;
    if (m_socket.peek(bannerStart.size()) != bannerStart)
        return retry();
    stop();
    Q_EMIT answered();
}

void SshBannerProbe::giveUpAttempt()
{
    m_attemptTimer.setInterval(std::min(2 * m_attemptTimer.intervalAsDuration(), longestAttempt));
    retry();
}

void SshBannerProbe::retry()
{
    if (!m_active || m_retryTimer.isActive())
        return;
    m_attemptTimer.stop();
    m_retryTimer.start();
}

} // namespace Tarn::Internal
