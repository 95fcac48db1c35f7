// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/invokerprocess.h"

#include "robustness/waiting.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

namespace Robustness {

namespace {

constexpr int deadline = 30'000; // ms

} // namespace

InvokerProcess::InvokerProcess(quint16 port)
    : m_port(port)
{
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.setProgram(qEnvironmentVariable("EMULATIONMANAGEMENT_TEST_INVOKER"));
    m_process.setArguments({u"--address"_s, u"127.0.0.1"_s, u"--port"_s, QString::number(port)});
}

InvokerProcess::~InvokerProcess()
{
    stop();
}

bool InvokerProcess::start()
{
    m_process.start();
    return QTest::qWaitFor(
        [this] {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
            return socket.waitForConnected();
        },
        deadline);
}

void InvokerProcess::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    // It says goodbye to its client, which is in this process: events must go on.
    if (!waitFor([this] { return m_process.state() == QProcess::NotRunning; }))
        kill();
}

void InvokerProcess::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace Robustness
