// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sshremoteprocessrunner.h"

#include <QLoggingCategory>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace QSsh {

namespace {

Q_LOGGING_CATEGORY(qsshLog, "qssh", QtWarningMsg)

constexpr int sshItselfFailed = 255; // ssh's exit code when it is not the command's

// A file name as a value in ssh's configuration syntax, where blanks separate, quotes group and % starts a token.
QString quotedFileName(QString name)
{
    name.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'%', u"%%"_s);
    return u'"' + name + u'"';
}

QStringList sshArguments(const QString &command, const SshConnectionParameters &parameters)
{
    const auto seconds = std::max(parameters.timeout, std::chrono::seconds(1)).count();
    QStringList options{
        u"BatchMode=yes"_s,
        u"ConnectTimeout=%1"_s.arg(seconds),
        // A server that falls silent in the middle of a command is noticed, too.
        u"ServerAliveInterval=%1"_s.arg(seconds),
        u"ServerAliveCountMax=3"_s,
        u"PreferredAuthentications=publickey"_s,
        u"IdentitiesOnly=yes"_s,
        u"IdentityAgent=none"_s,
        u"IdentityFile=%1"_s.arg(quotedFileName(parameters.privateKeyFile)),
        u"LogLevel=ERROR"_s,
    };
    switch (parameters.hostKeyCheck) {
    case HostKeyCheck::AcceptAnyHostKey:
        options << u"StrictHostKeyChecking=no"_s << u"UserKnownHostsFile=/dev/null"_s;
        break;
    case HostKeyCheck::RequireKnownHostKey:
        options << u"StrictHostKeyChecking=yes"_s;
        if (!parameters.knownHostsFile.isEmpty())
            options << u"UserKnownHostsFile=%1"_s.arg(quotedFileName(parameters.knownHostsFile));
        break;
    }
    options << u"GlobalKnownHostsFile=/dev/null"_s << u"UpdateHostKeys=no"_s;

    QStringList arguments{u"-F"_s, u"none"_s, u"-T"_s, u"-p"_s, QString::number(parameters.port)};
    if (!parameters.userName.isEmpty())
        arguments << u"-l"_s << parameters.userName;
    for (const QString &option : std::as_const(options))
        arguments << u"-o"_s << option;
    // Behind the mark ssh looks for no more options, not even behind the host: a second mark would be sent along.
    return arguments << u"--"_s << parameters.host << command;
}

} // namespace

// Ends the child within milliseconds. Should the system not let go of it in time, the object outlives its owner, so
// that nobody waits in the GUI thread.
void SshRemoteProcessRunner::ProcessDeleter::operator()(QProcess *process) const
{
    process->disconnect();
    if (process->state() != QProcess::NotRunning) {
        process->kill();
        if (!process->waitForFinished(500)) {
            QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
            return;
        }
    }
    delete process;
}

SshRemoteProcessRunner::SshRemoteProcessRunner(QObject *parent)
    : QObject(parent)
{
    m_commandTimer.setSingleShot(true);
    connect(&m_commandTimer, &QTimer::timeout, this, [this] {
        close(m_run, tr("The command on %1 did not end in time.").arg(m_destination));
    });
}

SshRemoteProcessRunner::~SshRemoteProcessRunner() = default;

void SshRemoteProcessRunner::run(
    const QString &command, const SshConnectionParameters &parameters, QProcess::InputChannelMode inputMode)
{
    if (m_running)
        qCDebug(qsshLog) << "abandoning" << m_command << "for" << command;
    abandonProcess();
    m_command = command;
    m_destination = u"%1:%2"_s.arg(parameters.host).arg(parameters.port);
    m_lastError.clear();
    m_exitCode = -1;
    m_running = true;
    const quint64 run = ++m_run;

    if (command.isEmpty())
        return closeLater(run, tr("There is no command to run on %1.").arg(m_destination));
    if (parameters.host.isEmpty())
        return closeLater(run, tr("There is no host to run \"%1\" on.").arg(command));
    const QString program = QStandardPaths::findExecutable(u"ssh"_s);
    if (program.isEmpty()) {
        return closeLater(
            run, tr("The program \"ssh\" was not found. Install the OpenSSH client (package \"openssh-client\")."));
    }

    m_process.reset(new QProcess);
    // Queued, so that a receiver of processClosed() may do anything, deleting this object included.
    connect(
        m_process.get(),
        &QProcess::finished,
        this,
        [this, run](int exitCode, QProcess::ExitStatus status) { handleFinished(run, exitCode, status); },
        Qt::QueuedConnection);
    connect(
        m_process.get(),
        &QProcess::errorOccurred,
        this,
        [this, run, program](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                close(run, tr("The program \"%1\" could not be started.").arg(program));
        },
        Qt::QueuedConnection);
    m_process->setInputChannelMode(inputMode);
    const QStringList arguments = sshArguments(command, parameters);
    qCDebug(qsshLog) << program << arguments;
    m_process->start(program, arguments);
    if (inputMode == QProcess::ManagedInputChannel)
        m_process->closeWriteChannel();
    if (parameters.commandTimeout > std::chrono::seconds::zero())
        m_commandTimer.start(parameters.commandTimeout);
}

QString SshRemoteProcessRunner::command() const
{
    return m_command;
}

bool SshRemoteProcessRunner::isRunning() const
{
    return m_running;
}

int SshRemoteProcessRunner::exitCode() const
{
    return m_exitCode;
}

QByteArray SshRemoteProcessRunner::readAllStandardOutput()
{
    return m_process ? m_process->readAllStandardOutput() : QByteArray();
}

QByteArray SshRemoteProcessRunner::readAllStandardError()
{
    QByteArray error = std::exchange(m_lastError, {});
    if (m_process)
        error += m_process->readAllStandardError();
    return error;
}

void SshRemoteProcessRunner::closeLater(quint64 run, const QString &error)
{
    QMetaObject::invokeMethod(this, [this, run, error] { close(run, error); }, Qt::QueuedConnection);
}

void SshRemoteProcessRunner::close(quint64 run, const QString &error)
{
    if (run != m_run || !m_running)
        return;
    m_running = false;
    m_commandTimer.stop();
    if (m_process && m_process->state() != QProcess::NotRunning)
        m_process->kill();
    if (!error.isEmpty())
        qCDebug(qsshLog) << m_command << "failed:" << error;
    Q_EMIT processClosed(error);
}

void SshRemoteProcessRunner::handleFinished(quint64 run, int exitCode, QProcess::ExitStatus status)
{
    if (run != m_run || !m_running)
        return;
    if (status == QProcess::CrashExit)
        return close(run, tr("The connection to %1 was cut off.").arg(m_destination));
    if (exitCode == 0) {
        m_exitCode = exitCode;
        return close(run, {});
    }
    // The reader still gets what is looked at here.
    m_lastError += m_process->readAllStandardError();
    const QString details = QString::fromUtf8(m_lastError).trimmed();
    if (exitCode == sshItselfFailed)
        return close(run, tr("The command could not be run on %1: %2").arg(m_destination, details));
    m_exitCode = exitCode;
    close(run, tr("The command ended with exit code %1 on %2. %3").arg(exitCode).arg(m_destination, details).trimmed());
}

void SshRemoteProcessRunner::abandonProcess()
{
    m_commandTimer.stop();
    m_process.reset();
    m_running = false;
}

} // namespace QSsh
