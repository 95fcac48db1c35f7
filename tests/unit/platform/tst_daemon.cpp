// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "domainxml.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
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
        stopDaemon();
        QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, longTime);
        QCOMPARE(failed.constFirst().constFirst().toString(), u"The connection to the hypervisor was lost."_s);
        QVERIFY(!sdk.isConnected());
        QVERIFY(Sdk::emulators().isEmpty());
        QTRY_VERIFY(!emulator);

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

private:
    QString socket() const { return m_home.filePath(u"libvirt/libvirt-sock"_s); }
    // The driver without machines, but over there.
    QString uri() const { return u"test+unix:///default?socket=%1"_s.arg(socket()); }

    QString domainFile() const
    {
        QFile file(m_home.filePath(u"domain.xml"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(DomainXml().toString().toUtf8()) < 0)
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
