// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"

#include "ide/ide.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace IdeTests {

namespace {

// The machine's definition names this port and this key; the network and /tmp are the test's own.
constexpr quint16 sshPort = 2222;
const QString privateKeyFile = u"/tmp/emulator-key"_s;

} // namespace

EmulatorFixture::EmulatorFixture()
    : m_ssh(privateKeyFile)
{
    m_ssh.setAnswer(installedPackagesWithout());
    QObject::connect(&m_services, &QProcess::finished, &m_services, [this](int exitCode, QProcess::ExitStatus status) {
        // Of a service that has crashed, whoever runs them tells in the end.
        if (m_stopping && status == QProcess::NormalExit && exitCode == 0)
            return;
        const QString what = u"The services have ended with %1."_s.arg(exitCode);
        QTest::qFail(qPrintable(what), __FILE__, __LINE__);
    });
}

EmulatorFixture::~EmulatorFixture()
{
    stopServices();
}

Tarn::Emulator *EmulatorFixture::emulator() const
{
    if (!QTest::qWaitFor([] { return !Tarn::Sdk::emulators().isEmpty(); }, 10'000))
        return nullptr;
    return Tarn::Sdk::emulators().constFirst();
}

Tarn::VirtualMachine *EmulatorFixture::machine() const
{
    return emulator()->virtualMachine();
}

bool EmulatorFixture::startSsh()
{
    return m_ssh.start(sshPort);
}

bool EmulatorFixture::startServices()
{
    stopServices();
    const QDir build(qEnvironmentVariable("EMULATIONMANAGEMENT_TEST_BUILD_DIR"));
    m_services.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_stopping = false;
    m_services.start(
        build.filePath(u"emulator/bin/emulator-host"_s),
        {u"--port"_s, u"5454"_s, u"--directory"_s, m_directory.path()});
    QByteArray output;
    while (!output.contains('\n') && m_services.waitForReadyRead(30'000))
        output += m_services.readAllStandardOutput();
    return output.startsWith("DBUS_SYSTEM_BUS_ADDRESS=");
}

void EmulatorFixture::stopServices()
{
    if (m_services.state() == QProcess::NotRunning)
        return;
    // The invoker says goodbye to its client, which is in this process: events must go on, and one of them may lead to
    // a new start.
    const QSignalSpy finished(&m_services, &QProcess::finished);
    m_stopping = true;
    m_services.terminate();
    if (!QTest::qWaitFor([&finished] { return !finished.isEmpty(); }, 30'000)) {
        qWarning("The services do not end.");
        m_services.kill();
        m_services.waitForFinished();
    }
}

int EmulatorFixture::connections() const
{
    return int(std::ranges::count(log(), u"connected"_s, &LogEntry::event));
}

QStringList EmulatorFixture::frames() const
{
    QStringList frames;
    for (const LogEntry &entry : log()) {
        if (entry.event == "text"_L1)
            frames.append(entry.text);
    }
    return frames;
}

QStringList EmulatorFixture::framesOf(const std::function<void()> &action)
{
    const qsizetype before = frames().size();
    action();
    ++m_marker;
    QMetaObject::invokeMethod(sensorsManager(), "setAlsLuxValue", m_marker);
    const QString marker = sensorFrame(u"setAlsValue"_s, u"int32:%1"_s.arg(m_marker));
    if (!QTest::qWaitFor([this, &marker] { return frames().contains(marker); }, 30'000))
        return {};
    const QStringList all = frames();
    return all.sliced(before, all.indexOf(marker) - before);
}

QStringList EmulatorFixture::framesOfDeviceModel(const QString &name)
{
    const auto change = [this](const QString &model) {
        return framesOf([&] { Q_EMIT emulator()->deviceModelNameChanged(model); });
    };
    if (m_timesApplied == 0) {
        // A model that is known to nobody enables each sensor once.
        const qsizetype frames = change(u"Known to nobody"_s).size();
        if (frames == 0 || frames % allSensors.size() != 0)
            return {u"no whole sets of frames"_s};
        m_timesApplied = frames / allSensors.size();
    }
    const QStringList frames = change(name);
    const QStringList once = frames.first(frames.size() / m_timesApplied);
    QStringList repeated;
    for (qsizetype i = 0; i < m_timesApplied; ++i)
        repeated += once;
    return frames == repeated ? once : QStringList{u"the sets differ"_s};
}

QList<EmulatorFixture::LogEntry> EmulatorFixture::log() const
{
    QFile file(m_directory.filePath(u"invoker.log"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<LogEntry> entries;
    while (!file.atEnd()) {
        const QJsonObject object = QJsonDocument::fromJson(file.readLine()).object();
        entries.append({object.value("event"_L1).toString(), object.value("text"_L1).toString()});
    }
    return entries;
}

QByteArray installedPackagesWithout(const QByteArrayList &names)
{
    const QByteArrayList packages{
        "bash",
        "sensorfw-qt5-emulator-plugins",
        "remote-dbus-invoker",
        "geoclue-emulator",
        "gstreamer-emulator",
        "zlib",
    };
    QByteArray output;
    for (const QByteArray &package : packages) {
        if (!names.contains(package))
            output += package + "-1.2.3-1.i486\n";
    }
    return output;
}

QString sensorFrame(const QString &method, const QString &arguments)
{
    return u"system ru.kelo.SensorfwEmulationManagement /ru/kelo/SensorfwEmulationManagement "
           "ru.kelo.SensorfwEmulationManagement %1 %2"_s.arg(method, arguments);
}

const QStringList allSensors{
    u"accelerometer"_s,
    u"als"_s,
    u"compass"_s,
    u"gyroscope"_s,
    u"magnetometer"_s,
    u"orientation"_s,
    u"proximity"_s,
    u"tap"_s,
};

QStringList framesForAllSensors(const QString &method)
{
    QStringList frames;
    for (const QString &sensor : allSensors)
        frames.append(sensorFrame(method, u"string:"_s + sensor));
    return frames;
}

QString gpsFrame(const QString &method, const QString &arguments)
{
    return u"system ru.kelo.GeoclueEmulationManagement /ru/kelo/GeoclueEmulationManagement "
           "ru.kelo.GeoclueEmulationManagement %1 %2"_s.arg(method, arguments);
}

QStringList framesOfGpsSetup(const QString &position)
{
    return {
        gpsFrame(u"stopTrack"_s),
        gpsFrame(u"setTrackLooped"_s, u"boolean:0"_s),
        gpsFrame(u"setTrackIntervalMode"_s, u"boolean:0"_s),
        gpsFrame(u"setTrackSpeed"_s, u"int32:1"_s),
        gpsFrame(u"setPosition"_s, position),
    };
}

QStringList framesOfConnection(const QStringList &sensorFrames, const QStringList &gpsSetup)
{
    return gpsSetup + sensorFrames + gpsSetup;
}

const qsizetype connectionFrameCount = 25;

QObject *sensorsManager()
{
    return contextProperty(u"sensorsEmulationManager"_s).value<QObject *>();
}

void openView()
{
    showViewAction()->trigger();
}

} // namespace IdeTests
