// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "utils/sshserver.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace Tarn {
class Emulator;
class VirtualMachine;
} // namespace Tarn

namespace IdeTests {

/// What lies around the plugin: a virtual machine of libvirt's test driver, which runs nothing; a real SSH server in
/// the place of the machine's; and the emulator's real services on this host, on the port that the machine would
/// forward.
class EmulatorFixture
{
public:
    /// Answers "rpm -qa" completely until it is told otherwise. The machine is off, the services do not run.
    EmulatorFixture();
    /// Destroy it in a test's function, such as cleanup(): it stops the services.
    ~EmulatorFixture();

    /// The first emulator; waits until the SDK lists it. Null when it does not.
    Tarn::Emulator *emulator() const;
    Tarn::VirtualMachine *machine() const;

    TestUtils::SshServer &ssh() { return m_ssh; }
    bool startSsh();

    bool startServices();
    /// A service that has crashed or leaked fails the test function that is running.
    void stopServices();

    /// How many clients have connected to the invoker so far.
    int connections() const;
    /// Every text frame that the invoker has received so far, over all connections.
    QStringList frames() const;
    /// The frames that an action leads to, up to its return. The channel must be open; a marker frame shows that all of
    /// them have arrived. Nothing if it does not come.
    QStringList framesOf(const std::function<void()> &action);

    /// What one application of a device model's sensors sends. The SDK's notifications at its start decide how often a
    /// change is applied; all of them must be alike. The channel must be open.
    QStringList framesOfDeviceModel(const QString &name);

private:
    struct LogEntry
    {
        QString event;
        QString text;
    };
    QList<LogEntry> log() const;

    QTemporaryDir m_directory;
    TestUtils::SshServer m_ssh;
    QProcess m_services;
    bool m_stopping = false;
    int m_marker = 1'000'000;
    qsizetype m_timesApplied = 0;
};

/// The output of "rpm -qa" on a complete emulator, without the packages named.
QByteArray installedPackagesWithout(const QByteArrayList &names = {});

/// A frame for the sensor service.
QString sensorFrame(const QString &method, const QString &arguments);

/// The eight sensors in the order in which a map lists them.
extern const QStringList allSensors;

/// One frame for each of the eight sensors, in that order.
QStringList framesForAllSensors(const QString &method);

/// A frame for the GPS service.
QString gpsFrame(const QString &method, const QString &arguments = {});

/// What the GPS manager sends when it sets the service up, for a player as at the start and the position stored.
QStringList framesOfGpsSetup(const QString &position = QStringLiteral("double:0.0000000 double:0.0000000 double:0.00"));

/// All frames of a connection, around those of the sensors. The GPS manager is bound twice.
QStringList framesOfConnection(const QStringList &sensorFrames, const QStringList &gpsSetup = framesOfGpsSetup());

/// How many these are when no sensor is missing.
extern const qsizetype connectionFrameCount;

/// The sensors manager of the view.
QObject *sensorsManager();

/// The menu entry, as a user chooses it.
void openView();

} // namespace IdeTests
