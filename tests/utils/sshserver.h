// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace TestUtils {

/// A real sshd of the current user on a loopback port, with keys of its own. Whatever command it is asked for, it
/// answers with the text and exit code set here, and keeps a list of what was asked. Needs no rights and leaves no
/// traces.
class SshServer
{
public:
    /// Makes the keys. With a path, the client's key is copied there (a definition elsewhere may name it already).
    explicit SshServer(const QString &privateKeyCopy = {});
    ~SshServer();
    Q_DISABLE_COPY_MOVE(SshServer)

    /// Listens on the port, or on a free one; false and a warning when it cannot.
    bool start(quint16 port = 0);
    void stop();

    quint16 port() const { return m_port; }
    QString userName() const { return m_userName; }
    QString privateKeyFile() const;

    /// Standard output and exit code of every command from now on.
    void setAnswer(const QByteArray &output, int exitCode = 0);
    /// From now on, what is asked for is run by a shell instead of being answered.
    void runCommands();
    /// While held, a command is taken but its answer waits.
    void holdAnswers(bool hold);
    /// The commands so far, as they were asked.
    QStringList commands() const;

private:
    QString path(const QString &name) const;
    void write(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_directory;
    QProcess m_sshd;
    QString m_userName;
    quint16 m_port = 0;
};

} // namespace TestUtils
