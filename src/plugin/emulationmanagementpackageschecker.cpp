// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin/emulationmanagementpackageschecker.h"

#include <algorithm>

using namespace Qt::StringLiterals;

const QString EmulationManagementPackagesChecker::sensorfwPluginsPackageName = u"sensorfw-qt5-emulator-plugins"_s;
const QString EmulationManagementPackagesChecker::rdbusinvokerPackageName = u"remote-dbus-invoker"_s;
const QString EmulationManagementPackagesChecker::geoclueEmulatorPackageName = u"geoclue-emulator"_s;
const QString EmulationManagementPackagesChecker::gtsreamerEmulatorPackageName = u"gstreamer-emulator"_s;
const QString EmulationManagementPackagesChecker::searchPackagesCommand = u"rpm -qa"_s;

EmulationManagementPackagesChecker::EmulationManagementPackagesChecker(QObject *parent)
    : QObject(parent)
{
    connect(
        &m_runner,
        &QSsh::SshRemoteProcessRunner::processClosed,
        this,
        &EmulationManagementPackagesChecker::handleSshProcessFinished);
}

void EmulationManagementPackagesChecker::checkPackages(const QSsh::SshConnectionParameters &parameters)
{
    m_parameters = parameters;
    initPackagesToInstallList();
    runCheckingPackages();
}

void EmulationManagementPackagesChecker::runCheckingPackages()
{
    m_runner.run(searchPackagesCommand, m_parameters, QProcess::ManagedInputChannel);
}

// The error is not looked at: without a connection the output is empty, and so every package counts as missing.
void EmulationManagementPackagesChecker::handleSshProcessFinished([[maybe_unused]] const QString &error)
{
    const QString output = QString::fromUtf8(m_runner.readAllStandardOutput());
    if (!m_runner.command().contains(searchPackagesCommand))
        return;

    parseCommandOutputForCheckingInstalledPackages(output);
    if (arePackagesInstalled()) {
        Q_EMIT checkFinished({}, {});
        return;
    }

    QString detailedText = tr("Packages is not installed: \n");
    for (const auto &[package, installed] : m_packages.asKeyValueRange()) {
        if (!installed)
            detailedText += package + u'\n';
    }
    Q_EMIT checkFinished(tr("Necessary packages not found on emulator!"), detailedText);
}

void EmulationManagementPackagesChecker::initPackagesToInstallList()
{
    m_packages = {
        {sensorfwPluginsPackageName, false},
        {rdbusinvokerPackageName, false},
        {geoclueEmulatorPackageName, false},
        {gtsreamerEmulatorPackageName, false},
    };
}

// The query lists names with versions, and a name inside a longer one counts as well.
void EmulationManagementPackagesChecker::parseCommandOutputForCheckingInstalledPackages(const QString &output)
{
    for (auto [package, installed] : m_packages.asKeyValueRange())
        installed = output.contains(package);
}

bool EmulationManagementPackagesChecker::arePackagesInstalled() const
{
    return std::ranges::all_of(m_packages, [](bool installed) { return installed; });
}
