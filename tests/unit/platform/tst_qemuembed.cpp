// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "domainxml.h"

#include <tarn/emulator.h>
#include <tarn/execasynchronous.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Tarn;

namespace {

constexpr int longTime = 60000; // ms

// Machines with nothing but their firmware in them, in the hypervisor driver inside this process.
DomainXml machine(const QString &name, int sshPort)
{
    DomainXml xml;
    xml.name = name;
    xml.type = u"qemu"_s;
    xml.os = u"<type arch='x86_64' machine='q35'>hvm</type>"_s;
    xml.portForwards = DomainXml::portForward(u"tcp"_s, sshPort, 22);
    xml.devices = u"<emulator>/usr/bin/qemu-system-x86_64</emulator>"_s;
    return xml;
}

} // namespace

class tst_QemuEmbed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_root.path()).mkdir(u"etc"_s));
        QFile configuration(m_root.filePath(u"etc/qemu.conf"_s));
        QVERIFY(configuration.open(QIODevice::WriteOnly));
        configuration.write("stdio_handler = \"file\"\nsecurity_driver = \"none\"\nremember_owner = 0\n"
                            "namespaces = []\ncgroup_controllers = []\n");
        configuration.close();

        define(machine(u"plain"_s, 2201));
        define(machine(u"running"_s, 2202));
        DomainXml incomplete = machine(u"incomplete"_s, 2203);
        incomplete.devices += u"<disk type='file'><source file='/nowhere/disk.img'/><target dev='vda'/></disk>"_s;
        define(incomplete);
        virsh({u"start"_s, u"running"_s});
    }

    void cleanupTestCase()
    {
        // No machine outlives a test that has failed.
        for (const Emulator *emulator : Sdk::emulators()) {
            emulator->virtualMachine()->kill();
            QTRY_VERIFY_WITH_TIMEOUT(emulator->virtualMachine()->isOff(), longTime);
        }
        m_sdk.reset();
    }

    void findsWhatVirshHasDefined()
    {
        m_sdk = std::make_unique<Sdk>(ConnectionSettings{.uri = uri(), .embedRoot = {}, .deviceModelDirectory = {}});
        QVERIFY(!m_sdk->isConnected()); // nobody waits for it
        QTRY_COMPARE_WITH_TIMEOUT(Sdk::emulators().size(), 3, longTime);
        QCOMPARE(Sdk::emulators().at(0)->name(), u"incomplete"_s);
        QCOMPARE(Sdk::emulators().at(1)->name(), u"plain"_s);
        QCOMPARE(Sdk::emulators().at(2)->name(), u"running"_s);
    }

    void takesOverAMachineThatRuns()
    {
        VirtualMachine *running = Sdk::emulators().at(2)->virtualMachine();
        bool startedOutside = false;
        QVERIFY(!running->isOff(nullptr, &startedOutside));
        QVERIFY(startedOutside);
        running->kill();
        QTRY_VERIFY_WITH_TIMEOUT(running->isOff(), longTime);
    }

    void startsAndKills()
    {
        VirtualMachine *plain = Sdk::emulators().at(1)->virtualMachine();
        QSignalSpy errors(plain, &VirtualMachine::errorOccurred);
        for (int i = 0; i < 2; ++i) {
            plain->start();
            QTRY_COMPARE_WITH_TIMEOUT(plain->state(), VirtualMachine::Running, longTime);
            plain->kill();
            QTRY_VERIFY_WITH_TIMEOUT(plain->isOff(), longTime);
        }
        QCOMPARE(errors.size(), 0);
    }

    void aForwardedPortTakesConnections()
    {
        VirtualMachine *plain = Sdk::emulators().at(1)->virtualMachine();
        bool ok = false;
        execAsynchronous(
            ok, &VirtualMachine::addPortForwarding, plain, u"web"_s, u"tcp"_s, quint16(5454), quint16(1234));
        QVERIFY(ok);
        bool udp = false;
        execAsynchronous(
            udp, &VirtualMachine::addPortForwarding, plain, u"camera"_s, u"udp"_s, quint16(34343), quint16(34343));
        QVERIFY(udp);
        plain->start();
        QTRY_COMPARE_WITH_TIMEOUT(plain->state(), VirtualMachine::Running, longTime);
        QVERIFY(plain->hasPortForwarding(5454));
        QVERIFY(plain->hasPortForwarding(34343));
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.1"_s, 5454);
        QVERIFY(socket.waitForConnected(longTime));
        // Nobody greets: passt has taken the connection, the guest has not.
        QCOMPARE(plain->state(), VirtualMachine::Running);
        plain->kill();
        QTRY_VERIFY_WITH_TIMEOUT(plain->isOff(), longTime);
    }

    void aClientWhoComesBeforeTheMachineLeavesItItsNetwork()
    {
        VirtualMachine *plain = Sdk::emulators().at(1)->virtualMachine();
        QVERIFY(plain->hasPortForwarding(5454));

        // As a client whose machine was killed does: it connects again whenever the connection is refused or ends.
        QTcpSocket client;
        int taken = 0;
        const auto connectAgain = [&client] {
            client.abort();
            client.connectToHost(u"127.0.0.1"_s, 5454);
        };
        connect(&client, &QTcpSocket::connected, this, [&taken] { ++taken; });
        connect(&client, &QTcpSocket::errorOccurred, this, connectAgain, Qt::QueuedConnection);
        connectAgain();
        plain->start();
        QTRY_COMPARE_WITH_TIMEOUT(plain->state(), VirtualMachine::Running, longTime);
        QTRY_VERIFY_WITH_TIMEOUT(taken > 0, longTime);

        QTcpSocket later;
        later.connectToHost(u"127.0.0.1"_s, 5454);
        QVERIFY2(later.waitForConnected(longTime), qPrintable(later.errorString()));
        client.disconnect(this);
        client.abort();
        plain->kill();
        QTRY_VERIFY_WITH_TIMEOUT(plain->isOff(), longTime);
        // passt ends with the machine.
        QTRY_VERIFY_WITH_TIMEOUT(
            [] {
                QTcpSocket socket;
                socket.connectToHost(u"127.0.0.1"_s, 5454);
                return !socket.waitForConnected(1000);
            }(),
            longTime);
    }

    void saysWhatIsMissing()
    {
        VirtualMachine *incomplete = Sdk::emulators().at(0)->virtualMachine();
        QSignalSpy errors(incomplete, &VirtualMachine::errorOccurred);
        bool connected = true;
        execAsynchronous(connected, &VirtualMachine::connectTo, incomplete, VirtualMachine::ConnectOptions());
        QVERIFY(!connected);
        QVERIFY(incomplete->isOff());
        QCOMPARE(errors.size(), 1);
        QCOMPARE(
            errors.constFirst().constFirst().toString(),
            u"incomplete could not be started. The disk image \"/nowhere/disk.img\" does not exist."_s);
    }

    void changesTheDeviceModelOfAMachineThatRuns()
    {
        Emulator *emulator = Sdk::emulators().at(1);
        QSignalSpy changed(emulator, &Emulator::deviceModelNameChanged);
        emulator->virtualMachine()->start();
        QTRY_COMPARE_WITH_TIMEOUT(emulator->virtualMachine()->state(), VirtualMachine::Running, longTime);
        emulator->setDeviceModel(u"Velmo Two"_s);
        QTRY_COMPARE_WITH_TIMEOUT(changed.size(), 1, longTime);
        emulator->virtualMachine()->kill();
        QTRY_VERIFY_WITH_TIMEOUT(emulator->virtualMachine()->isOff(), longTime);
        QCOMPARE(emulator->deviceModel().name, u"Velmo Two"_s);
        QVERIFY(emulator->virtualMachine()->hasPortForwarding(5454));
    }

    void mayGoInTheMiddleOfAStart()
    {
        Sdk::emulators().at(1)->virtualMachine()->start();
        m_sdk.reset();
        m_sdk = std::make_unique<Sdk>(ConnectionSettings{.uri = uri(), .embedRoot = {}, .deviceModelDirectory = {}});
        QTRY_COMPARE_WITH_TIMEOUT(Sdk::emulators().size(), 3, longTime);
        VirtualMachine *plain = Sdk::emulators().at(1)->virtualMachine();
        plain->kill();
        QTRY_VERIFY_WITH_TIMEOUT(plain->isOff(), longTime);
    }

private:
    QString uri() const { return u"qemu:///embed?root="_s + m_root.path(); }

    void virsh(const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(u"virsh"_s, QStringList{u"-c"_s, uri()} + arguments);
        process.waitForFinished(longTime);
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            qFatal("virsh: %s", process.readAll().constData());
    }

    void define(const DomainXml &xml)
    {
        QFile file(m_root.filePath(xml.name + u".xml"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(xml.toString().toUtf8());
        file.close();
        virsh({u"define"_s, file.fileName()});
    }

    QTemporaryDir m_root;
    std::unique_ptr<Sdk> m_sdk;
};

QTEST_GUILESS_MAIN(tst_QemuEmbed)

#include "tst_qemuembed.moc"
