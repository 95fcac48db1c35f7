// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "qssh_global.h"
#include "sshconnectionparameters.h"

#include <QObject>
#include <QProcess>
#include <QTimer>

#include <memory>

namespace QSsh {

// Runs one command at a time on an SSH server, with the system's OpenSSH client ("ssh" on the PATH).
//
// Destroying the runner ends a command that is still going, on this side, without a signal.
class QSSH_EXPORT SshRemoteProcessRunner : public QObject
{
    Q_OBJECT

public:
    explicit SshRemoteProcessRunner(QObject *parent = nullptr);
    ~SshRemoteProcessRunner() override;

    // Starts the command and returns at once. The server's login shell interprets the command; no shell of this host
    // ever sees it. With ManagedInputChannel the command reads an empty standard input.
    //
    // A command that is still going is ended first, and its processClosed() never comes: the newest run counts.
    void
    run(const QString &command,
        const SshConnectionParameters &parameters,
        QProcess::InputChannelMode inputMode = QProcess::ManagedInputChannel);

    QString command() const; // of the latest run
    bool isRunning() const;
    // Of the command, once it has closed; -1 when it has not, or did not get so far as to have one.
    int exitCode() const;

    // What the latest run has written since the last call, as it was sent: the caller decodes it.
    QByteArray readAllStandardOutput();
    QByteArray readAllStandardError();

Q_SIGNALS:
    // Exactly once per run, never from within run(). The error is empty when the command was run and its exit code
    // was 0; otherwise it is a text for the user.
    void processClosed(const QString &error);

private:
    void closeLater(quint64 run, const QString &error);
    void close(quint64 run, const QString &error);
    void handleFinished(quint64 run, int exitCode, QProcess::ExitStatus status);
    void abandonProcess();

    struct ProcessDeleter
    {
        void operator()(QProcess *process) const;
    };
    std::unique_ptr<QProcess, ProcessDeleter> m_process;
    QTimer m_commandTimer;
    QString m_command;
    QString m_destination;  // host and port, for messages
    QByteArray m_lastError; // of ssh itself, kept for messages and for the reader
    quint64 m_run = 0;      // numbers the runs, so that what is left of an earlier one is recognised
    int m_exitCode = -1;
    bool m_running = false;
};

} // namespace QSsh
