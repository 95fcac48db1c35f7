// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "domainxml.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace Tarn;

namespace {

constexpr int longTime = 60000; // ms

}

// A hypervisor in another process, which may come and go.
class tst_Daemon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_RUNTIME_DIR", m_home.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", m_home.path().toLocal8Bit());
        qputenv("XDG_CACHE_HOME", m_home.path().toLocal8Bit());
        startDaemon();
    }

    void cleanupTestCase() { stopDaemon(); }

    void connectsAgainWhenTheDaemonComesBack()
    {
        Sdk sdk({.uri = uri(), .embedRoot = {}, .deviceModelDirectory = {}});
        QTRY_VERIFY_WITH_TIMEOUT(sdk.isConnected(), longTime);
        virsh({u"define"_s, domainFile()});
        QTRY_COMPARE_WITH_TIMEOUT(Sdk::emulators().size(), 1, longTime);
        QPointer emulator = Sdk::emulators().constFirst();
        emulator->virtualMachine()->start();
        QTRY_COMPARE_WITH_TIMEOUT(emulator->virtualMachine()->state(), VirtualMachine::Running, longTime);

        QSignalSpy failed(&sdk, &Sdk::connectionFailed);
        QSignalSpy connected(&sdk, &Sdk::connected);
        QSignalSpy states(emulator->virtualMachine(), &VirtualMachine::stateChanged);
        QSignalSpy offs(emulator->virtualMachine(), &VirtualMachine::virtualMachineOffChanged);
        stopDaemon();
        QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, longTime);
        QCOMPARE(failed.constFirst().constFirst().toString(), u"The connection to the hypervisor was lost."_s);
        QVERIFY(!sdk.isConnected());
        QVERIFY(Sdk::emulators().isEmpty());
        QTRY_VERIFY(!emulator);
        // What becomes of the machine is not known: nobody was told that it is off.
        QCOMPARE(states.size(), 0);
        QCOMPARE(offs.size(), 0);

        startDaemon();
        QTRY_COMPARE_WITH_TIMEOUT(connected.size(), 1, longTime);
        QVERIFY(sdk.isConnected());
    }

    void mayGoWhenTheConnectionIsLost()
    {
        auto *sdk = new Sdk({.uri = uri(), .embedRoot = {}, .deviceModelDirectory = {}});
        QTRY_VERIFY_WITH_TIMEOUT(sdk->isConnected(), longTime);
        connect(sdk, &Sdk::connectionFailed, sdk, [sdk] { delete sdk; });
        stopDaemon();
        QTRY_VERIFY_WITH_TIMEOUT(!Sdk::instance(), longTime);
        startDaemon();
    }

    void endsWhenTheDaemonHangs()
    {
        auto sdk = std::make_unique<Sdk>(ConnectionSettings{.uri = uri(), .embedRoot = {}, .deviceModelDirectory = {}});
        QTRY_VERIFY_WITH_TIMEOUT(sdk->isConnected(), longTime);
        virsh({u"define"_s, domainFile()});
        QTRY_COMPARE_WITH_TIMEOUT(Sdk::emulators().size(), 1, longTime);

        QCOMPARE(::kill(pid_t(m_daemon.processId()), SIGSTOP), 0);
        const auto goOn = qScopeGuard([this] { ::kill(pid_t(m_daemon.processId()), SIGCONT); });
        bool connected = true;
        Sdk::emulators().constFirst()->virtualMachine()->connectTo(
            VirtualMachine::NoConnectOptions, nullptr, [&connected](bool ok) { connected = ok; });
        QTest::ignoreMessage(QtWarningMsg, "The hypervisor does not answer; a call to it is given up.");
        QElapsedTimer timer;
        timer.start();
        sdk.reset();
        QVERIFY2(timer.durationElapsed() < 15s, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(!connected);
    }

    // The call that was given up may return now, when nobody waits for it.
    void goesOnAfterAHang()
    {
        Sdk sdk({.uri = uri(), .embedRoot = {}, .deviceModelDirectory = {}});
        QTRY_VERIFY_WITH_TIMEOUT(sdk.isConnected(), longTime);
        virsh({u"define"_s, domainFile(u"another"_s)});
        const auto isListed = [] {
            return std::ranges::any_of(
                Sdk::emulators(), [](const Emulator *emulator) { return emulator->name() == "another"_L1; });
        };
        QTRY_VERIFY_WITH_TIMEOUT(isListed(), longTime);
    }

    // libvirt starts a daemon when there is none, with the environment of whoever asks.
    void aDaemonOfTheSessionFindsOurPasst()
    {
        stopDaemon();
        QString started;
        {
            Sdk sdk({.uri = u"qemu:///session"_s, .embedRoot = {}, .deviceModelDirectory = {}});
            QTRY_VERIFY2_WITH_TIMEOUT(sdk.isConnected(), qPrintable(sdk.connectionError()), longTime);
            const QByteArray path = qgetenv("PATH").split(':').constFirst();
            QVERIFY2(path.endsWith("/tarn"), path.constData());
            started = folderOfStartedDaemon();
            QFile environment(started + "/environ"_L1);
            QVERIFY(environment.open(QIODevice::ReadOnly));
            QVERIFY(environment.readAll().contains("PATH=" + path + ':'));
        }
        ::kill(QFileInfo(started).fileName().toInt(), SIGKILL);
        QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(started + "/exe"_L1), longTime);
        QFile::remove(socket());
        startDaemon();
    }

private:
    QString socket() const { return m_home.filePath(u"libvirt/libvirt-sock"_s); }
    // The driver without machines, but over there.
    QString uri() const { return u"test+unix:///default?socket=%1"_s.arg(socket()); }

    QString domainFile(const QString &name = u"emulator"_s) const
    {
        DomainXml xml;
        xml.name = name;
        QFile file(m_home.filePath(u"domain.xml"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(xml.toString().toUtf8()) < 0)
            qFatal("cannot write a domain");
        return file.fileName();
    }

    void startDaemon()
    {
        m_daemon.setStandardErrorFile(m_home.filePath(u"log"_s));
        m_daemon.start(u"/usr/sbin/libvirtd"_s, {});
        QVERIFY(m_daemon.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(socket()), longTime);
    }

    void stopDaemon()
    {
        m_daemon.kill();
        QVERIFY(m_daemon.waitForFinished(longTime));
        QFile::remove(socket());
    }

    // Below /proc.
    static QString folderOfStartedDaemon()
    {
        const QDir processes(u"/proc"_s);
        for (const QString &process : processes.entryList({u"[0-9]*"_s}, QDir::Dirs)) {
            const QString folder = processes.filePath(process);
            const QString program = QFileInfo(folder + "/exe"_L1).symLinkTarget();
            if (program.endsWith("/libvirtd"_L1) || program.endsWith("/virtqemud"_L1))
                return folder;
        }
        return {};
    }

    void virsh(const QStringList &arguments) const
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(u"virsh"_s, QStringList{u"-c"_s, uri()} + arguments);
        process.waitForFinished(longTime);
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            qFatal("virsh: %s", process.readAll().constData());
    }

    QTemporaryDir m_home;
    QProcess m_daemon;
};

QTEST_GUILESS_MAIN(tst_Daemon)

#include "tst_daemon.moc"
