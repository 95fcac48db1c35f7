// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakesshserver.h"
#include "testhypervisor.h"

#include <tarn/emulator.h>
#include <tarn/execasynchronous.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <QDomDocument>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace Tarn;

namespace {

constexpr int longTime = 20000; // ms

// How often and with what a callback was called.
struct Answers
{
    int count = 0;
    std::optional<bool> last;

    auto callback()
    {
        return [this](bool ok) {
            ++count;
            last = ok;
        };
    }
};

} // namespace

class tst_VirtualMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        m_sdk.reset();
        m_hypervisor.reset();
    }

    void followsItsDomain()
    {
        open();
        QVERIFY(m_machine->isOff());
        QSignalSpy states(m_machine, &VirtualMachine::stateChanged);
        QSignalSpy offs(m_machine, &VirtualMachine::virtualMachineOffChanged);

        m_hypervisor->start(u"emulator"_s);
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Running);
        bool headless = false;
        bool startedOutside = false;
        QVERIFY(!m_machine->isOff(&headless, &startedOutside));
        QVERIFY(headless);
        QVERIFY(startedOutside);
        QCOMPARE(states.size(), 1);
        QCOMPARE(offs.size(), 1);
        QCOMPARE(offs.takeFirst(), QVariantList{false});

        m_hypervisor->shutDown(u"emulator"_s);
        QTRY_VERIFY(m_machine->isOff(&headless, &startedOutside));
        QVERIFY(!headless);
        QVERIFY(!startedOutside);
        QCOMPARE(offs.size(), 1);
        QCOMPARE(offs.takeFirst(), QVariantList{true});
    }

    void tellsOfNothingThatIsOver()
    {
        open();
        QSignalSpy offs(m_machine, &VirtualMachine::virtualMachineOffChanged);
        // As a box in a slot does, this lets events go on until the machine is off again.
        bool isInLoop = false;
        bool wasOff = false;
        connect(m_machine, &VirtualMachine::stateChanged, m_machine, [&] {
            if (std::exchange(isInLoop, true))
                return;
            m_hypervisor->kill(u"emulator"_s);
            wasOff = QTest::qWaitFor([&] { return m_machine->isOff(); }, longTime);
        });
        m_hypervisor->start(u"emulator"_s);
        QTRY_VERIFY(wasOff);
        QVERIFY(m_machine->isOff());
        QVERIFY2(offs.isEmpty() || offs.constLast() == QVariantList{true}, "it is said to be on");
    }

    void startsAndIsKilled()
    {
        open();
        QList<VirtualMachine::State> states;
        connect(m_machine, &VirtualMachine::stateChanged, this, [&] { states.append(m_machine->state()); });
        m_machine->start();
        m_machine->start(); // no more than one start
        QCOMPARE(m_machine->state(), VirtualMachine::Starting);
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Running);
        bool startedOutside = true;
        QVERIFY(!m_machine->isOff(nullptr, &startedOutside));
        QVERIFY(!startedOutside);
        m_machine->kill();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Off);
        using enum VirtualMachine::State;
        QCOMPARE(states, (QList{Starting, Running, Off}));
    }

    void shutsDown()
    {
        open();
        m_machine->start();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Running);
        QList<VirtualMachine::State> states;
        connect(m_machine, &VirtualMachine::stateChanged, this, [&] { states.append(m_machine->state()); });
        m_machine->shutDown();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Off);
        QCOMPARE(states, (QList{VirtualMachine::Stopping, VirtualMachine::Off}));
    }

    void startsAgainAfterAShutDown()
    {
        open();
        m_machine->start();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Running);
        m_machine->shutDown();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Off);

        QList<VirtualMachine::State> states;
        connect(m_machine, &VirtualMachine::stateChanged, this, [&] { states.append(m_machine->state()); });
        m_machine->start();
        QTRY_COMPARE_GE(states.size(), 2);
        QCOMPARE(states, (QList{VirtualMachine::Starting, VirtualMachine::Running}));
    }

    void connectsWhenSshGreets()
    {
        FakeSshServer server;
        open(server.serverPort());
        QSignalSpy states(m_machine, &VirtualMachine::stateChanged);
        Answers answers;
        m_machine->connectTo({}, this, answers.callback());
        QCOMPARE(m_machine->state(), VirtualMachine::Starting);
        QTRY_COMPARE(answers.count, 1);
        QCOMPARE(answers.last, true);
        QCOMPARE(m_machine->state(), VirtualMachine::Connected);
        QCOMPARE(int(m_machine->state()), 4);
        const int connections = server.connectionCount;

        // Connected already
        m_machine->connectTo({}, this, answers.callback());
        QCOMPARE(answers.count, 1); // never from within
        QTRY_COMPARE(answers.count, 2);
        QCOMPARE(answers.last, true);
        QCOMPARE(server.connectionCount, connections);

        m_machine->kill();
        QTRY_VERIFY(m_machine->isOff());
        QCOMPARE(answers.count, 2);
    }

    void findsAConnectedMachine()
    {
        FakeSshServer server;
        m_hypervisor = std::make_unique<TestHypervisor>();
        m_hypervisor->define(xmlWithSsh(server.serverPort()));
        m_hypervisor->start(u"emulator"_s);
        openSdk();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Connected);
    }

    void waitsForTheRealGreeting_data()
    {
        QTest::addColumn<QByteArray>("greeting");
        QTest::newRow("silence, as of a guest that has not booted") << QByteArray();
        QTest::newRow("another protocol") << QByteArray("HTTP/1.1 400 Bad Request\r\n");
        QTest::newRow("cut off") << QByteArray("SSH");
    }

    void waitsForTheRealGreeting()
    {
        QFETCH(const QByteArray, greeting);
        auto server = std::make_unique<FakeSshServer>(greeting);
        const quint16 port = server->serverPort();
        open(port);
        Answers answers;
        m_machine->connectTo({}, this, answers.callback());
        QTRY_VERIFY(server->connectionCount > 0);
        QCOMPARE(m_machine->state(), VirtualMachine::Running);
        QCOMPARE(answers.count, 0);

        server.reset(); // the guest has booted meanwhile
        FakeSshServer later;
        later.close();
        QVERIFY(later.listen(QHostAddress::LocalHost, port));
        QTRY_COMPARE_WITH_TIMEOUT(m_machine->state(), VirtualMachine::Connected, longTime);
        QCOMPARE(answers.last, true);
    }

    // A forwarding host may keep a connection that came too early, and never hand it to the guest.
    void triesAnotherConnectionAfterASilentOne()
    {
        FakeSshServer server{QByteArray()};
        open(server.serverPort());
        Answers answers;
        m_machine->connectTo({}, this, answers.callback());
        QTRY_COMPARE(server.connectionCount, 1);
        server.greeting = "SSH-2.0-Fake\r\n";
        QTRY_COMPARE_WITH_TIMEOUT(m_machine->state(), VirtualMachine::Connected, longTime);
        QCOMPARE(answers.last, true);
        QCOMPARE(server.connectionCount, 2);
    }

    // A machine under load: asked as often as ever, it would never come to greet anybody.
    void waitsLongerForAServerThatIsSlow()
    {
        FakeSshServer server;
        server.delay = 7s;
        open(server.serverPort());
        Answers answers;
        m_machine->connectTo({}, this, answers.callback());
        QTRY_COMPARE_WITH_TIMEOUT(m_machine->state(), VirtualMachine::Connected, 60'000);
        QCOMPARE(answers.last, true);
        QCOMPARE(server.connectionCount, 2);
    }

    void failsToConnectWhenItStops()
    {
        open();
        Answers first;
        Answers second;
        m_machine->connectTo({}, this, first.callback());
        m_machine->connectTo({}, nullptr, second.callback());
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Running);
        m_hypervisor->kill(u"emulator"_s);
        QTRY_COMPARE(first.count, 1);
        QCOMPARE(first.last, false);
        QCOMPARE(second.count, 1);
        QCOMPARE(second.last, false);
    }

    void startsNothingWhenToldNotTo()
    {
        open();
        Answers answers;
        m_machine->connectTo(VirtualMachine::DoNotStart, this, answers.callback());
        QTRY_COMPARE(answers.count, 1);
        QCOMPARE(answers.last, false);
        QVERIFY(m_machine->isOff());
    }

    void saysWhyItDoesNotStart()
    {
        open();
        QSignalSpy errors(m_machine, &VirtualMachine::errorOccurred);
        QSignalSpy offs(m_machine, &VirtualMachine::virtualMachineOffChanged);
        Answers answers;
        QPointer emulator = Sdk::emulators().constFirst();
        m_hypervisor->undefine(u"emulator"_s); // the SDK does not know yet
        m_machine->connectTo({}, this, answers.callback());
        QTRY_COMPARE(answers.count, 1);
        QCOMPARE(answers.last, false);
        QTRY_VERIFY(!emulator);
        QCOMPARE(answers.count, 1);
    }

    void isSilentOnceTheContextHasGone()
    {
        FakeSshServer server;
        open(server.serverPort());
        Answers answers;
        {
            const QObject context;
            m_machine->connectTo({}, &context, answers.callback());
            m_machine->addPortForwarding(u"a"_s, u"tcp"_s, 1, 1, &context, answers.callback());
            m_machine->addPortForwarding(u"a"_s, u"nonsense"_s, 1, 1, &context, answers.callback());
        }
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Connected);
        const QObject gone;
        m_machine->connectTo({}, &gone, answers.callback());
        m_sdk.reset();
        QCOMPARE(answers.count, 1); // of the context that was still there
        QCOMPARE(answers.last, false);
    }

    void answersWhenTheSdkGoes()
    {
        open();
        Answers connecting;
        Answers forwarding;
        m_machine->addPortForwarding(u"a"_s, u"tcp"_s, 5454, 1234, this, forwarding.callback());
        m_machine->connectTo({}, this, connecting.callback());
        m_sdk.reset();
        QCOMPARE(connecting.count, 1);
        QCOMPARE(connecting.last, false);
        QCOMPARE(forwarding.count, 1);
    }

    void aLoopEndsWhenTheSdkGoes()
    {
        open();
        QTimer::singleShot(0, this, [this] { m_sdk.reset(); });
        bool result = true;
        m_machine->connectTo({}, this, [](bool) {});
        execAsynchronous(result, &VirtualMachine::connectTo, m_machine, VirtualMachine::ConnectOptions());
        QVERIFY(!result);
    }

    void forwardsPorts()
    {
        open();
        QString name = u"something"_s;
        QVERIFY(!m_machine->hasPortForwarding(5454, &name));
        QCOMPARE(name, QString());
        const QDomDocument before = definition();

        bool tcp = false;
        execAsynchronous(
            tcp,
            &VirtualMachine::addPortForwarding,
            m_machine,
            u"emulationmanagementtcp"_s,
            u"tcp"_s,
            quint16(5454),
            quint16(1234));
        QVERIFY(tcp);
        QVERIFY(m_machine->hasPortForwarding(5454, &name)); // known as soon as the caller is
        QCOMPARE(name, u"emulationmanagementtcp"_s);

        bool udp = false;
        execAsynchronous(
            udp,
            &VirtualMachine::addPortForwarding,
            m_machine,
            u"emulationmanagementudp"_s,
            u"udp"_s,
            quint16(34343),
            quint16(34343));
        QVERIFY(udp);
        QVERIFY(m_machine->hasPortForwarding(34343, &name));
        QCOMPARE(name, u"emulationmanagementudp"_s);
        QVERIFY(m_machine->hasPortForwarding(2222, &name));
        QCOMPARE(name, QString());

        // What libvirt has made of it: taken away again, the definition is as it was.
        QDomDocument after = definition();
        int removed = 0;
        const QDomNodeList named = after.elementsByTagName(u"velmo:portForwarding"_s);
        for (; !named.isEmpty(); ++removed)
            named.at(0).parentNode().removeChild(named.at(0));
        const QDomNodeList ranges = after.elementsByTagName(u"range"_s);
        for (int i = ranges.size() - 1; i >= 0; --i) {
            if (ranges.at(i).toElement().attribute(u"start"_s) == "5454"_L1) {
                ranges.at(i).parentNode().removeChild(ranges.at(i));
                ++removed;
            }
        }
        const QDomNodeList forwards = after.elementsByTagName(u"portForward"_s);
        for (int i = forwards.size() - 1; i >= 0; --i) {
            if (forwards.at(i).toElement().attribute(u"proto"_s) == "udp"_L1) {
                forwards.at(i).parentNode().removeChild(forwards.at(i));
                ++removed;
            }
        }
        QCOMPARE(removed, 4);
        QCOMPARE(after.toString(), before.toString());
    }

    void forwardsAPortOnce()
    {
        open();
        QString once;
        for (int i = 0; i < 2; ++i) {
            bool ok = false;
            execAsynchronous(
                ok, &VirtualMachine::addPortForwarding, m_machine, u"web"_s, u"tcp"_s, quint16(5454), quint16(1234));
            QVERIFY(ok);
            const QString now = m_hypervisor->definition(u"emulator"_s);
            if (i == 0)
                once = now;
            QCOMPARE(now, once);
        }
    }

    void keepsPasswordsWhenPortsAreAdded()
    {
        DomainXml xml;
        xml.devices = u"<graphics type='vnc' port='-1' autoport='yes' passwd='open sesame'/>"_s;
        m_hypervisor = std::make_unique<TestHypervisor>();
        m_hypervisor->define(xml);
        openSdk();
        QVERIFY(m_hypervisor->definition(u"emulator"_s).contains("passwd='open sesame'"_L1));
        bool ok = false;
        execAsynchronous(
            ok, &VirtualMachine::addPortForwarding, m_machine, u"web"_s, u"tcp"_s, quint16(5454), quint16(1234));
        QVERIFY(ok);
        QVERIFY(m_machine->hasPortForwarding(5454));
        QVERIFY(m_hypervisor->definition(u"emulator"_s).contains("passwd='open sesame'"_L1));
    }

    void forwardsNothingThatMakesNoSense_data()
    {
        QTest::addColumn<QString>("protocol");
        QTest::addColumn<int>("hostPort");
        QTest::addColumn<int>("guestPort");
        QTest::newRow("an unknown protocol") << u"sctp"_s << 1 << 1;
        QTest::newRow("no host port") << u"tcp"_s << 0 << 1;
        QTest::newRow("no guest port") << u"tcp"_s << 1 << 0;
    }

    void forwardsNothingThatMakesNoSense()
    {
        QFETCH(const QString, protocol);
        QFETCH(const int, hostPort);
        QFETCH(const int, guestPort);
        open();
        QSignalSpy errors(m_machine, &VirtualMachine::errorOccurred);
        const QString before = m_hypervisor->definition(u"emulator"_s);
        bool ok = true;
        execAsynchronous(
            ok,
            &VirtualMachine::addPortForwarding,
            m_machine,
            u"web"_s,
            protocol,
            quint16(hostPort),
            quint16(guestPort));
        QVERIFY(!ok);
        QCOMPARE(errors.size(), 1);
        QCOMPARE(m_hypervisor->definition(u"emulator"_s), before);
    }

    void forwardsNothingWhileItRuns()
    {
        open();
        m_machine->start();
        QTRY_COMPARE(m_machine->state(), VirtualMachine::Running);
        QSignalSpy errors(m_machine, &VirtualMachine::errorOccurred);
        Answers answers;
        m_machine->addPortForwarding(u"web"_s, u"tcp"_s, 5454, 1234, this, answers.callback());
        QCOMPARE(answers.count, 0); // never from within
        QTRY_COMPARE(answers.count, 1);
        QCOMPARE(answers.last, false);
        QCOMPARE(errors.size(), 1);
        QVERIFY(!m_machine->hasPortForwarding(5454));
    }

    void forwardsNothingWithoutPasst()
    {
        m_hypervisor = std::make_unique<TestHypervisor>();
        DomainXml xml;
        xml.interfaceBackend = u"default"_s;
        xml.portForwards.clear();
        m_hypervisor->define(xml);
        QTest::ignoreMessage(QtWarningMsg, "The definition of emulator forwards no port to its SSH server");
        openSdk();
        QSignalSpy errors(m_machine, &VirtualMachine::errorOccurred);
        Answers answers;
        m_machine->addPortForwarding(u"web"_s, u"tcp"_s, 5454, 1234, this, answers.callback());
        QTRY_COMPARE(answers.count, 1);
        QCOMPARE(answers.last, false);
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors.constFirst().constFirst().toString().contains("passt"_L1));
    }

    void tellsHowToLogIn()
    {
        open(2233);
        const QSsh::SshConnectionParameters parameters = m_machine->sshParameters();
        QCOMPARE(parameters.host, u"127.0.0.1"_s);
        QCOMPARE(parameters.port, 2233);
        QCOMPARE(parameters.userName, u"root"_s);
        QCOMPARE(parameters.privateKeyFile, u"/keys/emulator"_s);
        QCOMPARE(parameters.hostKeyCheck, QSsh::HostKeyCheck::AcceptAnyHostKey);
    }

    void trustsOnlyThisHost_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QSsh::HostKeyCheck>("check");
        using enum QSsh::HostKeyCheck;
        QTest::newRow("the loopback interface") << u"127.0.0.1"_s << u"127.0.0.1"_s << AcceptAnyHostKey;
        QTest::newRow("all of its addresses") << u"127.1.2.3"_s << u"127.1.2.3"_s << AcceptAnyHostKey;
        QTest::newRow("every interface") << u"0.0.0.0"_s << u"127.0.0.1"_s << AcceptAnyHostKey;
        QTest::newRow("another interface") << u"192.0.2.1"_s << u"192.0.2.1"_s << RequireKnownHostKey;
    }

    void trustsOnlyThisHost()
    {
        QFETCH(const QString, address);
        QFETCH(const QString, host);
        QFETCH(const QSsh::HostKeyCheck, check);
        DomainXml xml = xmlWithSsh(2222);
        xml.portForwards.replace(u"127.0.0.1"_s, address);
        QVERIFY(xml.portForwards.contains(address));
        m_hypervisor = std::make_unique<TestHypervisor>();
        m_hypervisor->define(xml);
        openSdk();
        const QSsh::SshConnectionParameters parameters = m_machine->sshParameters();
        QCOMPARE(parameters.host, host);
        QCOMPARE(parameters.hostKeyCheck, check);
    }

    void keepsTheIdeGoing()
    {
        // Every question is answered from what is known, and every operation returns at once.
        open();
        QElapsedTimer timer;
        timer.start();
        m_machine->start();
        m_machine->kill();
        m_machine->isOff();
        m_machine->hasPortForwarding(1);
        m_machine->sshParameters();
        QVERIFY(timer.elapsed() < 500);
        QTRY_VERIFY(m_machine->isOff());
    }

private:
    static DomainXml xmlWithSsh(quint16 sshPort)
    {
        DomainXml xml;
        xml.portForwards = DomainXml::portForward(u"tcp"_s, sshPort, 22);
        return xml;
    }

    void openSdk()
    {
        m_sdk = std::make_unique<Sdk>(ConnectionSettings{
            .uri = QString::fromLatin1(TestHypervisor::uri), .embedRoot = {}, .deviceModelDirectory = {}});
        QTRY_COMPARE(Sdk::emulators().size(), 1);
        m_machine = Sdk::emulators().constFirst()->virtualMachine();
    }

    void open(quint16 sshPort = 2222)
    {
        m_hypervisor = std::make_unique<TestHypervisor>();
        m_hypervisor->define(xmlWithSsh(sshPort));
        openSdk();
    }

    QDomDocument definition()
    {
        QDomDocument document;
        document.setContent(m_hypervisor->definition(u"emulator"_s));
        return document;
    }

    std::unique_ptr<TestHypervisor> m_hypervisor;
    std::unique_ptr<Sdk> m_sdk;
    VirtualMachine *m_machine = nullptr;
};

QTEST_GUILESS_MAIN(tst_VirtualMachine)

#include "tst_virtualmachine.moc"
