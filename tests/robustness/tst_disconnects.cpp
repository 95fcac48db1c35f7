// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A thousand connections that break anywhere, while a user goes on working.
//
// What "equal" means here. The emulator's services live on while the channel is away; the plugin is told nothing of
// what was lost, so it cannot know what they hold. On each connection it therefore sets all of it anew:
//  - the sensors' values are the last ones that the user set, whether the connection was there then or not; before the
//  first connection they are those of the session before;
//  - each sensor is on if the device model has it, whatever the user had switched;
//  - the position is the last one set by hand, and the player's loop, speed and interval mode are the user's last;
//  - the player is stopped at its first point. The track itself counts as lost, so the emulator may hold any earlier
//  one
//    until the user chooses a point, which uploads it again.
// Once a connection is there and stays, each property of both services must equal what the script says, and so must
// each value of the models; likewise after everything that is done on a good connection. The only difference allowed is
// the position: a track moves the emulator's, and not the one that was set by hand.

#include "robustness/comparison.h"
#include "robustness/faultproxy.h"
#include "robustness/invokerprocess.h"
#include "robustness/pluginside.h"
#include "robustness/resources.h"
#include "robustness/userscript.h"
#include "robustness/waiting.h"
#include "utils/idesettings.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Robustness;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;

namespace {

constexpr quint16 invokerPort = 1235;

int numberFromEnvironment(const char *name, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : otherwise;
}

} // namespace

class TestDisconnects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void stateIsRightAfterAThousandDisconnects();

private:
    std::optional<Fault> nextFault();
    void breakOnce();
    void restartInvoker();
    void compareAfterReconnection();
    void compareAfterWork();
    void compare();

    std::unique_ptr<IdeSettings> m_ide;
    std::unique_ptr<InvokerProcess> m_invoker;
    std::unique_ptr<FaultProxy> m_proxy;
    std::unique_ptr<PluginSide> m_side;
    std::unique_ptr<UserScript> m_script;
    QRandomGenerator m_random;
    bool m_faulty = false;
};

void TestDisconnects::init()
{
    const auto seed =
        quint32(numberFromEnvironment("EMULATIONMANAGEMENT_TEST_SEED", QRandomGenerator::global()->bounded(1'000'000)));
    qInfo("Again with: EMULATIONMANAGEMENT_TEST_SEED=%u", seed);
    m_random.seed(seed);

    m_ide = std::make_unique<IdeSettings>();
    UserScript::storeSensors(*m_ide);
    m_invoker = std::make_unique<InvokerProcess>(invokerPort);
    QVERIFY(m_invoker->start());
    m_proxy = std::make_unique<FaultProxy>(invokerPort);
    QVERIFY(m_proxy->listen(RemoteDBusInvokerService::hostTcpPort));
    m_proxy->setNextFault([this] { return nextFault(); });
    m_side = std::make_unique<PluginSide>();
    m_script = std::make_unique<UserScript>(m_side.get(), seed);
    connect(
        &m_side->channel, &RemoteDBusInvokerService::webSocketConnected, this, [this] { m_script->noteConnection(); });
}

void TestDisconnects::cleanup()
{
    m_script.reset();
    m_side.reset();
    m_proxy.reset();
    m_invoker.reset();
    m_ide.reset();
}

// Somewhere in the handshake, in what a connection begins with (about 4,000 bytes up, 1,500 down), or in the work
// after.
std::optional<Fault> TestDisconnects::nextFault()
{
    m_proxy->setBytesAtOnce(0);
    if (!m_faulty)
        return std::nullopt;
    if (m_random.bounded(10) == 0)
        m_proxy->setBytesAtOnce(1 + m_random.bounded(100));
    const int ending = m_random.bounded(10);
    const auto direction = m_random.bounded(2) == 0 ? Direction::ToEmulator : Direction::ToPlugin;
    const int within = direction == Direction::ToEmulator ? 8000 : 3000;
    return Fault{
        .ending = ending == 0 ? Ending::HalfOpen : (ending < 5 ? Ending::Reset : Ending::Close),
        .direction = direction,
        .bytes = m_random.bounded(m_random.bounded(4) == 0 ? 400 : within),
    };
}

// The user goes on whether the connection is there or not.
void TestDisconnects::breakOnce()
{
    const int before = m_proxy->broken();
    bool silent = false;
    const auto connection = connect(m_proxy.get(), &FaultProxy::linkBroken, this, [&silent](Ending ending) {
        silent = ending == Ending::HalfOpen;
    });
    QVERIFY(m_script->workUntil([&] { return m_proxy->broken() > before; }));
    disconnect(connection);
    if (silent) {
        int turns = m_random.bounded(20);
        QVERIFY(m_script->workUntil([&turns] { return turns-- == 0; }));
        m_proxy->breakAll(m_random.bounded(2) == 0 ? Ending::Reset : Ending::Close);
    }
}

void TestDisconnects::restartInvoker()
{
    if (m_random.bounded(2) == 0)
        m_invoker->kill();
    else
        m_invoker->stop();
    m_script->doSomething();
    QVERIFY(m_invoker->start());
}

void TestDisconnects::compare()
{
    compareEnds(*m_side, *m_script, *m_proxy);
}

void TestDisconnects::compareAfterReconnection()
{
    m_faulty = false;
    const int before = m_side->connections();
    m_proxy->breakAll(Ending::Reset);
    QVERIFY(waitFor([&] { return m_side->isConnected() && m_side->connections() > before; }));
    compare();
}

void TestDisconnects::compareAfterWork()
{
    m_script->loadTrack();
    for (int i = 0; i < 100; ++i)
        m_script->doSomething();
    compare();
    m_faulty = true;
    m_proxy->setFault(nextFault());
}

void TestDisconnects::stateIsRightAfterAThousandDisconnects()
{
    const int disconnects = numberFromEnvironment("EMULATIONMANAGEMENT_TEST_DISCONNECTS", 1000);
    constexpr int stretch = 25; // until the next comparison

    QElapsedTimer timer;
    timer.start();
    m_side->channel.connectToEmulator();
    QVERIFY(waitFor([&] { return m_side->isConnected(); }));
    QVERIFY(m_side->waitUntilCarriedOut());
    compareAfterReconnection();
    const int descriptors = Resources::descriptors();
    const int invokersDescriptors = Resources::descriptors(m_invoker->processId());
    const qint64 memory = Resources::memory();

    int restarts = 0;
    int comparisons = 0;
    while (m_proxy->broken() < disconnects) {
        compareAfterWork();
        if (QTest::currentTestFailed())
            return;
        for (int i = 0; i < stretch && !QTest::currentTestFailed(); ++i)
            breakOnce();
        if (++restarts % 4 == 0)
            restartInvoker();
        if (QTest::currentTestFailed())
            return;
        compareAfterReconnection();
        if (QTest::currentTestFailed())
            return;
        ++comparisons;
        QCOMPARE(Resources::descriptors(), descriptors);
        QTRY_COMPARE_WITH_TIMEOUT(
            Resources::descriptors(m_invoker->processId()), invokersDescriptors, 30'000); // it closes in its own time
    }
    qInfo(
        "%d breaks, %d connections, %d disconnections, %d comparisons in %lld ms; memory %lld -> %lld KiB, %d "
        "descriptors",
        m_proxy->broken(),
        m_side->connections(),
        m_side->disconnections(),
        2 * comparisons,
        timer.elapsed(),
        memory,
        Resources::memory(),
        descriptors);
}

QTEST_GUILESS_MAIN(TestDisconnects)

#include "tst_disconnects.moc"
