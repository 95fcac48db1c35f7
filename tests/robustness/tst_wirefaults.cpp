// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One fault at a time between the channel and the real invoker, with the real services behind it.

#include "robustness/comparison.h"
#include "robustness/faultproxy.h"
#include "robustness/guest.h"
#include "robustness/invokerprocess.h"
#include "robustness/pluginside.h"
#include "robustness/resources.h"
#include "robustness/userscript.h"
#include "robustness/waiting.h"
#include "utils/idesettings.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Robustness;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;

Q_DECLARE_METATYPE(Robustness::Ending)
Q_DECLARE_METATYPE(Robustness::Direction)

namespace {

constexpr quint16 invokerPort = 1235;

} // namespace

class TestWireFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void recovers_data();
    void recovers();
    void firstConnectionMayBreakAnywhere_data();
    void firstConnectionMayBreakAnywhere();
    void silenceIsNotNoticedUntilTheConnectionEnds();
    void slowNetworkLosesNothing_data();
    void slowNetworkLosesNothing();
    void restartedInvokerIsFoundAgain_data();
    void restartedInvokerIsFoundAgain();
    void askingAgainLeavesOneConnection();
    void unfinishedFrameDoesNotEndTheNextConnection();

private:
    void startPlugin();
    void connectChannel();
    void compare();

    std::unique_ptr<IdeSettings> m_ide;
    std::unique_ptr<InvokerProcess> m_invoker;
    std::unique_ptr<FaultProxy> m_proxy;
    std::unique_ptr<PluginSide> m_side;
    std::unique_ptr<UserScript> m_script;
};

void TestWireFaults::initTestCase()
{
    m_ide = std::make_unique<IdeSettings>();
}

void TestWireFaults::init()
{
    m_ide->clear();
    UserScript::storeSensors(*m_ide);
    m_invoker = std::make_unique<InvokerProcess>(invokerPort);
    QVERIFY(m_invoker->start());
    m_proxy = std::make_unique<FaultProxy>(invokerPort);
    QVERIFY(m_proxy->listen(RemoteDBusInvokerService::hostTcpPort));
    startPlugin();
    // A first connection only asks which sensors are on.
    for (const QString &sensor : UserScript::storedSensors().value(u"enabledSensors"_s).toStringList())
        QVERIFY(Guest::call(Guest::sensorService, u"enableSensor"_s, {sensor}));
}

void TestWireFaults::cleanup()
{
    m_script.reset();
    m_side.reset();
    m_proxy.reset();
    m_invoker.reset();
}

void TestWireFaults::startPlugin()
{
    m_side.reset(); // before the other one reads what it stores
    m_side = std::make_unique<PluginSide>();
    m_script = std::make_unique<UserScript>(m_side.get(), 1);
    connect(
        &m_side->channel, &RemoteDBusInvokerService::webSocketConnected, this, [this] { m_script->noteConnection(); });
}

void TestWireFaults::connectChannel()
{
    m_side->channel.connectToEmulator();
    QVERIFY(waitFor([this] { return m_side->isConnected(); }));
    QVERIFY(m_side->waitUntilCarriedOut());
}

void TestWireFaults::compare()
{
    compareEnds(*m_side, *m_script, *m_proxy);
}

void TestWireFaults::recovers_data()
{
    QTest::addColumn<Ending>("ending");
    QTest::addColumn<Direction>("direction");
    QTest::addColumn<int>("bytes");

    for (const auto &[name, ending] : {std::pair("FIN", Ending::Close), std::pair("RST", Ending::Reset)}) {
        // A request's frame has 8 bytes of header: two for short lengths, two more for long ones, four of mask.
        for (const int bytes : {0, 1, 3, 7, 8, 9, 100, 1000, 10'000, 100'000})
            QTest::addRow("%s after %d bytes to the emulator", name, bytes) << ending << Direction::ToEmulator << bytes;
        // A reply's has two.
        for (const int bytes : {0, 1, 2, 3, 20, 24, 25, 26, 1000})
            QTest::addRow("%s after %d bytes to the plugin", name, bytes) << ending << Direction::ToPlugin << bytes;
    }
}

// A connection that has been good for a while ends in the midst of what is being sent.
void TestWireFaults::recovers()
{
    QFETCH(const Ending, ending);
    QFETCH(const Direction, direction);
    QFETCH(const int, bytes);

    connectChannel();
    m_script->loadTrack();
    for (int i = 0; i < 50; ++i)
        m_script->doSomething();
    compare();
    if (QTest::currentTestFailed())
        return;
    m_proxy->setFault(Fault{.ending = ending, .direction = direction, .bytes = bytes});
    QVERIFY(m_script->workUntil([this] { return m_proxy->broken() == 1; }));
    QVERIFY(waitFor([this] { return m_side->connections() == 2; }));
    QCOMPARE(m_side->disconnections(), 1);
    QVERIFY(!m_side->gps.trackLoaded());
    compare();
    if (QTest::currentTestFailed())
        return;
    for (int i = 0; i < 50; ++i)
        m_script->doSomething();
    compare();
}

void TestWireFaults::firstConnectionMayBreakAnywhere_data()
{
    QTest::addColumn<Direction>("direction");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("step");
    QTest::newRow("on the way to the emulator, in the handshake and the first request")
        << Direction::ToEmulator << 400 << 7;
    QTest::newRow("on the way to the emulator, in any request") << Direction::ToEmulator << 4000 << 101;
    QTest::newRow("on the way to the plugin, in the handshake and the first replies")
        << Direction::ToPlugin << 300 << 3;
    QTest::newRow("on the way to the plugin, in any reply") << Direction::ToPlugin << 900 << 31;
}

// The first connection asks which sensors are on; what it could not learn is set by the second.
void TestWireFaults::firstConnectionMayBreakAnywhere()
{
    QFETCH(const Direction, direction);
    QFETCH(const int, last);
    QFETCH(const int, step);

    bool isFirst = true;
    int bytes = 0;
    m_proxy->setNextFault([&] {
        const bool breaks = std::exchange(isFirst, false);
        return breaks ? std::optional(Fault{.ending = Ending::Close, .direction = direction, .bytes = bytes})
                      : std::nullopt;
    });
    for (bytes = 0; bytes <= last; bytes += step) {
        QVERIFY(Guest::call(Guest::sensorService, u"disableSensor"_s, {u"compass"_s}));
        isFirst = true;
        startPlugin();
        const int before = m_proxy->broken();
        m_side->channel.connectToEmulator();
        QVERIFY(waitFor([&] { return m_proxy->broken() > before; }));
        QVERIFY(waitFor([&] { return m_side->disconnections() == 1 && m_side->isConnected(); }));
        QVERIFY(m_side->waitUntilCarriedOut());
        if (m_side->connections() == 1) // the other one never was a connection: this is the first
            m_script->noteSwitchedOff(u"compass"_s);
        compare();
        if (QTest::currentTestFailed()) {
            qWarning("after %d bytes", bytes);
            return;
        }
    }
}

void TestWireFaults::silenceIsNotNoticedUntilTheConnectionEnds()
{
    connectChannel();
    const QVariantMap before = Guest::sensors();
    m_proxy->breakAll(Ending::HalfOpen);
    for (int i = 0; i < 1000; ++i)
        m_script->doSomething();
    QCOMPARE(m_side->sensorValues(), m_script->guestSensors());
    QCOMPARE(Guest::sensors(), before);
    QVERIFY(m_side->isConnected());

    m_proxy->breakAll(Ending::Reset);
    QVERIFY(waitFor([this] { return m_side->connections() == 2; }));
    compare();
}

void TestWireFaults::slowNetworkLosesNothing_data()
{
    QTest::addColumn<int>("bytesAtOnce");
    QTest::newRow("byte by byte") << 1;
    QTest::newRow("a few at a time") << 5;
    QTest::newRow("a packet at a time") << 1400;
}

void TestWireFaults::slowNetworkLosesNothing()
{
    QFETCH(const int, bytesAtOnce);
    m_proxy->setBytesAtOnce(bytesAtOnce);
    connectChannel();
    m_script->loadTrack();
    for (int i = 0; i < 200; ++i)
        m_script->doSomething();
    compare();
    QCOMPARE(m_side->connections(), 1);
}

void TestWireFaults::restartedInvokerIsFoundAgain_data()
{
    QTest::addColumn<bool>("crashes");
    QTest::newRow("after a crash") << true;
    QTest::newRow("after an orderly end") << false;
}

void TestWireFaults::restartedInvokerIsFoundAgain()
{
    QFETCH(const bool, crashes);
    connectChannel();
    m_script->loadTrack();
    for (int i = 0; i < 50; ++i)
        m_script->doSomething();
    if (crashes)
        m_invoker->kill();
    else
        m_invoker->stop();
    QVERIFY(waitFor([this] { return !m_side->isConnected(); }));
    for (int i = 0; i < 50; ++i)
        m_script->doSomething();
    QVERIFY(m_invoker->start());
    QVERIFY(waitFor([this] { return m_side->connections() == 2; }));
    compare();
}

// As it happens when the view is opened anew after the machine was off.
void TestWireFaults::askingAgainLeavesOneConnection()
{
    connectChannel();
    const int descriptors = Resources::descriptors();
    for (int i = 0; i < 20; ++i) {
        const int before = m_side->connections();
        m_side->channel.connectToEmulator();
        m_script->doSomething();
        m_side->channel.connectToEmulator(); // before the other one is through
        QVERIFY(waitFor([&] { return m_side->connections() > before; }));
        QVERIFY(waitFor([this] { return m_proxy->open() == 1; }));
        compare();
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(m_side->connections(), 21);
    QCOMPARE(m_side->disconnections(), 0);
    QCOMPARE(Resources::descriptors(), descriptors);
}

// A WebSocket gives an unfinished frame a few seconds. A second channel, whose frame stays unfinished, shows that they
// are over.
void TestWireFaults::unfinishedFrameDoesNotEndTheNextConnection()
{
    connectChannel();
    m_proxy->setFault(Fault{.ending = Ending::Reset, .direction = Direction::ToPlugin, .bytes = 10});
    m_side->sensors.setAlsLuxValue(1);
    QVERIFY(waitFor([this] { return m_side->connections() == 2; }));
    QVERIFY(m_side->waitUntilCarriedOut());

    RemoteDBusInvokerService other;
    QSignalSpy connected(&other, &RemoteDBusInvokerService::webSocketConnected);
    QSignalSpy disconnected(&other, &RemoteDBusInvokerService::webSocketDisconnected);
    other.connectToEmulator();
    QVERIFY(waitFor([&] { return connected.count() == 1; }));
    m_proxy->setFault(Fault{.ending = Ending::HalfOpen, .direction = Direction::ToPlugin, .bytes = 10});
    other.callDBusMethod(u"system"_s, u"a.b"_s, u"/"_s, u"a.b"_s, u"c"_s, {});
    QVERIFY(waitFor([&] { return disconnected.count() == 1; }));

    QCOMPARE(m_side->disconnections(), 1);
    QCOMPARE(m_side->connections(), 2);
    QVERIFY(m_side->waitUntilCarriedOut());
}

QTEST_GUILESS_MAIN(TestWireFaults)

#include "tst_wirefaults.moc"
