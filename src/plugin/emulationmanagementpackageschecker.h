// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <qssh/sshconnectionparameters.h>
#include <qssh/sshremoteprocessrunner.h>

#include <QHash>
#include <QObject>
#include <QString>

/// Asks an emulator over SSH for its packages and reports which of those that emulation needs are missing.
class EmulationManagementPackagesChecker : public QObject
{
    Q_OBJECT

public:
    static const QString sensorfwPluginsPackageName;
    static const QString rdbusinvokerPackageName;
    static const QString geoclueEmulatorPackageName;
    static const QString gtsreamerEmulatorPackageName;
    static const QString searchPackagesCommand;

    explicit EmulationManagementPackagesChecker(QObject *parent = nullptr);

    /// Starts a check; checkFinished() reports its end. A failed connection counts as an emulator without packages.
    void checkPackages(const QSsh::SshConnectionParameters &parameters);

Q_SIGNALS:
    /// Both texts are empty when everything is installed; otherwise the detailed one names what is missing.
    void checkFinished(const QString &message, const QString &detailedText);

private:
    void runCheckingPackages();
    void handleSshProcessFinished(const QString &error);
    void initPackagesToInstallList();
    void parseCommandOutputForCheckingInstalledPackages(const QString &output);
    bool arePackagesInstalled() const;

    QHash<QString, bool> m_packages;
    QSsh::SshRemoteProcessRunner m_runner;
    QSsh::SshConnectionParameters m_parameters;
};
