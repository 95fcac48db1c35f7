// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/sshserver.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <pwd.h>
#include <unistd.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace TestUtils {

namespace {

bool makeKey(const QString &file)
{
    return QProcess::execute(u"ssh-keygen"_s, {u"-q"_s, u"-t"_s, u"ed25519"_s, u"-N"_s, QString(), u"-f"_s, file}) == 0;
}

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

bool answersWithBanner(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    return socket.waitForConnected(1000) && socket.waitForReadyRead(5000) && socket.readAll().startsWith("SSH-2.0");
}

} // namespace

SshServer::SshServer(const QString &privateKeyCopy)
    : m_userName(QString::fromLocal8Bit(getpwuid(geteuid())->pw_name))
{
    if (!makeKey(path(u"host"_s)) || !makeKey(path(u"client"_s)))
        qFatal("ssh-keygen does not work");
    if (!privateKeyCopy.isEmpty()) {
        QFile::remove(privateKeyCopy);
        QFile::copy(path(u"client"_s), privateKeyCopy);
    }

    const QByteArray directory = m_directory.path().toUtf8();
    write(
        u"answer.sh"_s,
        "#!/bin/sh\ncd " + directory
            + "\nprintf '%s\\n' \"$SSH_ORIGINAL_COMMAND\" >> commands\n"
              "if [ -e run ]; then exec /bin/sh -c \"$SSH_ORIGINAL_COMMAND\"; fi\n"
              "while [ -e hold ]; do sleep 0.02; done\n"
              "cat output\nexit \"$(cat exitcode)\"\n");
    QFile::setPermissions(path(u"answer.sh"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    setAnswer({});
}

SshServer::~SshServer()
{
    stop();
}

bool SshServer::start(quint16 port)
{
    stop();
    m_port = port ? port : freePort();
    const QByteArray directory = m_directory.path().toUtf8();
    write(
        u"config"_s,
        "ListenAddress 127.0.0.1\nPort " + QByteArray::number(m_port) + "\nHostKey " + directory
            + "/host\nAuthorizedKeysFile " + directory + "/client.pub\nForceCommand " + directory
            + "/answer.sh\nStrictModes no\nUsePAM no\nPasswordAuthentication no\nPidFile none\n");

    m_sshd.setStandardErrorFile(path(u"log"_s));
    m_sshd.start(u"/usr/sbin/sshd"_s, {u"-D"_s, u"-e"_s, u"-f"_s, path(u"config"_s)});
    if (!m_sshd.waitForStarted())
        return false;
    for (QDeadlineTimer deadline(10s); !deadline.hasExpired();) {
        if (answersWithBanner(m_port))
            return true;
        QThread::sleep(20ms);
    }
    qWarning("sshd does not answer on port %d", m_port);
    return false;
}

void SshServer::stop()
{
    if (m_sshd.state() == QProcess::NotRunning)
        return;
    m_sshd.terminate();
    if (!m_sshd.waitForFinished(5000))
        m_sshd.kill();
    m_sshd.waitForFinished();
}

QString SshServer::privateKeyFile() const
{
    return path(u"client"_s);
}

void SshServer::setAnswer(const QByteArray &output, int exitCode)
{
    write(u"output"_s, output);
    write(u"exitcode"_s, QByteArray::number(exitCode));
}

void SshServer::runCommands()
{
    write(u"run"_s, {});
}

void SshServer::holdAnswers(bool hold)
{
    if (hold)
        write(u"hold"_s, {});
    else
        QFile::remove(path(u"hold"_s));
}

QStringList SshServer::commands() const
{
    QFile file(path(u"commands"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

QString SshServer::path(const QString &name) const
{
    return m_directory.filePath(name);
}

void SshServer::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
}

} // namespace TestUtils
