// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/gpsemulationmanager.h"

#include "utils/idesettings.h"
#include "utils/managerlog.h"
#include "utils/metaobjects.h"

#include <QMetaProperty>
#include <QTest>

#include <functional>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;
using TestUtils::LoggedManager;
using TestUtils::ManagerLog;

using Action = std::function<void(GPSEmulationManager &)>;
Q_DECLARE_METATYPE(Action)

namespace {

const QString latitudeKey = u"emulationmanagement/gps_latitude"_s;
const QString longitudeKey = u"emulationmanagement/gps_longitude"_s;
const QString altitudeKey = u"emulationmanagement/gps_altitude"_s;

QVariant point(const QVariant &latitude, const QVariant &longitude, const QVariant &altitude, const QVariant &interval)
{
    return QVariantMap{
        {u"latitude"_s, latitude},
        {u"longitude"_s, longitude},
        {u"altitude"_s, altitude},
        {u"interval"_s, interval},
    };
}

// What a connection leads to, with the player's settings as they are at first.
QStringList setUp(const QString &position = u"double:0.0000000 double:0.0000000 double:0.00"_s)
{
    return {
        u"stopTrack "_s,
        u"setTrackLooped boolean:0"_s,
        u"setTrackIntervalMode boolean:0"_s,
        u"setTrackSpeed int32:1"_s,
        u"setPosition "_s + position,
    };
}

} // namespace

class TestGPSEmulationManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void describesItselfToQml();
    void startsWithNothing();
    void worksWithoutChannel();

    void operation_data();
    void operation();
    void loadedTrackStartsSilently();
    void writtenIndexSendsNothing();

    void positionIsStored_data();
    void positionIsStored();

    void connectionSendsEverything();
    void connectionForgetsTheTrack();
    void boundTwiceSendsTwice();
    void answersAreNotLookedAt();

private:
    // The calls alone, without the signals.
    QStringList calls();

    std::unique_ptr<IdeSettings> m_ide;
    std::unique_ptr<ManagerLog> m_log;
    std::unique_ptr<LoggedManager<GPSEmulationManager>> m_manager;
};

void TestGPSEmulationManager::initTestCase()
{
    m_ide = std::make_unique<IdeSettings>();
}

void TestGPSEmulationManager::init()
{
    m_ide->clear();
    const QString service = u"ru.kelo.GeoclueEmulationManagement"_s;
    m_log = std::make_unique<ManagerLog>(u"system"_s, service, u"/ru/kelo/GeoclueEmulationManagement"_s, service);
    QVERIFY(m_log->listen());
    m_manager = std::make_unique<LoggedManager<GPSEmulationManager>>(m_log.get());
    m_log->watch(m_manager.get());
    m_log->watch(m_manager->currentPosition(), u"position"_s);
}

void TestGPSEmulationManager::cleanup()
{
    m_manager.reset();
    m_log.reset();
}

QStringList TestGPSEmulationManager::calls()
{
    return m_log->takeEvents().filter(u" "_s);
}

void TestGPSEmulationManager::describesItselfToQml()
{
    const QMetaObject &metaObject = GPSEmulationManager::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &EmulationManager::staticMetaObject);

    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        properties.append(u"%1 %2%3 %4"_s.arg(
            QLatin1StringView(property.typeName()),
            QLatin1StringView(property.name()),
            property.isWritable() ? u" writable"_s : QString(),
            property.isConstant() ? u"constant"_s : QString::fromLatin1(property.notifySignal().methodSignature())));
    }
    QCOMPARE(
        properties,
        QStringList(
            {u"EmulationManagement::Internal::PositionModel* currentPosition constant"_s,
             u"bool trackLooped trackLoopedChanged()"_s,
             u"bool useDefaultInterval defaultIntervalUsingChanged()"_s,
             u"int trackSpeed trackSpeedChanged()"_s,
             u"int currentPositionIndex writable currentPositionIndexChanged()"_s,
             u"bool trackLoaded "_s}));

    QCOMPARE(
        TestUtils::ownMethods(metaObject),
        QStringList(
            {u"signal trackLoopedChanged()"_s,
             u"signal defaultIntervalUsingChanged()"_s,
             u"signal trackSpeedChanged()"_s,
             u"signal currentPositionIndexChanged()"_s,
             u"setLocalPosition(double latitude, double longitude, double altitude)"_s,
             u"setPosition(double latitude, double longitude, double altitude)"_s,
             u"setLatitude(double latitude)"_s,
             u"setLongitude(double longitude)"_s,
             u"setAltitude(double altitude)"_s,
             u"loadTrack(QList<QVariant> trackPoints)"_s,
             u"startTrack()"_s,
             u"pauseTrack()"_s,
             u"stopTrack()"_s,
             u"setTrackLooped(bool looped)"_s,
             u"setTrackIntervalMode(bool useDefaultInterval)"_s,
             u"setTrackSpeed(int speed)"_s,
             u"goToPositionOnTrack(int index)"_s}));
    QVERIFY(QMetaType::fromName("PositionModel*").isValid());
}

void TestGPSEmulationManager::startsWithNothing()
{
    QCOMPARE(m_manager->currentPosition()->parent(), m_manager.get());
    QCOMPARE(m_manager->currentPosition()->latitude(), 0.0);
    QCOMPARE(m_manager->currentPosition()->longitude(), 0.0);
    QCOMPARE(m_manager->currentPosition()->altitude(), 0.0);
    QVERIFY(!m_manager->trackLooped());
    QVERIFY(!m_manager->useDefaultInterval());
    QCOMPARE(m_manager->trackSpeed(), 1);
    QCOMPARE(m_manager->currentPositionIndex(), 0);
    QVERIFY(!m_manager->trackLoaded());
    QCOMPARE(m_manager->bus(), u"system"_s);
    QCOMPARE(m_manager->dbusService(), u"ru.kelo.GeoclueEmulationManagement"_s);
    QCOMPARE(m_manager->dbusObject(), u"/ru/kelo/GeoclueEmulationManagement"_s);
    QCOMPARE(m_manager->dbusInterface(), u"ru.kelo.GeoclueEmulationManagement"_s);
}

void TestGPSEmulationManager::worksWithoutChannel()
{
    m_manager->loadTrack({point(1, 2, 3, 0)});
    m_manager->goToPositionOnTrack(3);
    m_manager->setPosition(1, 2, 3);
    m_manager->setupGPSData();
    QCOMPARE(m_manager->currentPositionIndex(), 0);
    QCOMPARE(m_manager->currentPosition()->altitude(), 3.0);
}

void TestGPSEmulationManager::operation_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("expected");

    using M = GPSEmulationManager;
    const auto row = [](const char *name, const Action &action, const QStringList &expected) {
        QTest::newRow(name) << action << expected;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const QString index0 = u"currentPositionIndex=0"_s;

    row("a local position is not sent",
        [](M &m) { m.setLocalPosition(59.93863, 30.31413, 12.5); },
        {u"position.latitude=59.93863"_s, u"position.longitude=30.31413"_s, u"position.altitude=12.5"_s});
    row("a position is sent, then shown",
        [](M &m) { m.setPosition(59.93863, 30.31413, 12.5); },
        {u"setPosition double:59.9386300 double:30.3141300 double:12.50"_s,
         u"position.latitude=59.93863"_s,
         u"position.longitude=30.31413"_s,
         u"position.altitude=12.5"_s});
    row("latitude has seven decimals",
        [](M &m) { m.setLatitude(-33.8688); },
        {u"setLatitude double:-33.8688000"_s, u"position.latitude=-33.8688"_s});
    row("longitude has seven decimals",
        [](M &m) { m.setLongitude(55.75); },
        {u"setLongitude double:55.7500000"_s, u"position.longitude=55.75"_s});
    row("altitude has two decimals",
        [](M &m) { m.setAltitude(-12.5); },
        {u"setAltitude double:-12.50"_s, u"position.altitude=-12.5"_s});
    row("altitude has no group separators",
        [](M &m) { m.setAltitude(10000); },
        {u"setAltitude double:10000.00"_s, u"position.altitude=10000"_s});
    row("what is no number counts as 0",
        [nan](M &m) { m.setLatitude(nan); },
        {u"setLatitude double:0.0000000"_s, u"position.latitude=0"_s});
    row("infinite values count as 0",
        [infinity](M &m) { m.setPosition(infinity, -infinity, infinity); },
        {u"setPosition double:0.0000000 double:0.0000000 double:0.00"_s,
         u"position.latitude=0"_s,
         u"position.longitude=0"_s,
         u"position.altitude=0"_s});
    row("values are not clamped",
        [](M &m) { m.setLatitude(1000); },
        {u"setLatitude double:1000.0000000"_s, u"position.latitude=1000"_s});

    row("start", [](M &m) { m.startTrack(); }, {u"startTrack "_s});
    row("pause", [](M &m) { m.pauseTrack(); }, {u"pauseTrack "_s});
    row("stop goes back to the first point", [](M &m) { m.stopTrack(); }, {u"stopTrack "_s, index0});
    row("looping", [](M &m) { m.setTrackLooped(true); }, {u"setTrackLooped boolean:1"_s, u"trackLooped=true"_s});
    row("a repetition is sent and announced again",
        [](M &m) { m.setTrackLooped(false); },
        {u"setTrackLooped boolean:0"_s, u"trackLooped=false"_s});
    row("default interval",
        [](M &m) { m.setTrackIntervalMode(true); },
        {u"setTrackIntervalMode boolean:1"_s, u"useDefaultInterval=true"_s});
    row("own intervals",
        [](M &m) { m.setTrackIntervalMode(false); },
        {u"setTrackIntervalMode boolean:0"_s, u"useDefaultInterval=false"_s});
    row("speed", [](M &m) { m.setTrackSpeed(5); }, {u"setTrackSpeed int32:5"_s, u"trackSpeed=5"_s});
    row("jump",
        [](M &m) { m.goToPositionOnTrack(123456); },
        {u"goToPositionOnTrack int32:123456"_s, u"currentPositionIndex=123456"_s});

    row("an empty track", [](M &m) { m.loadTrack({}); }, {u"loadTrack array:array:double:"_s});
    row("a track of one point has no separator",
        [](M &m) { m.loadTrack({point(59.93863, 30.31413, 12.5, 0)}); },
        {u"loadTrack array:array:double:59.9386300,30.3141300,12.50,0"_s});
    row("a track of two points",
        [](M &m) { m.loadTrack({point(59.93863, 30.31413, 12.5, 0), point(59.93864, 30.31414, 13, 1000)}); },
        {u"loadTrack array:array:double:59.9386300,30.3141300,12.50,0;59.9386400,30.3141400,13.00,1000"_s});
    row("texts are numbers in the C locale",
        [](M &m) { m.loadTrack({point(u"-33.8688000"_s, u"151.2092955"_s, u"1250.00"_s, 2000)}); },
        {u"loadTrack array:array:double:-33.8688000,151.2092955,1250.00,2000"_s});
    row("a text with a group separator counts as 0",
        [](M &m) { m.loadTrack({point(1, 2, u"1,250.00"_s, 0)}); },
        {u"loadTrack array:array:double:1.0000000,2.0000000,0.00,0"_s});
    row("missing values count as 0",
        [](M &m) { m.loadTrack({QVariantMap{{u"longitude"_s, 2}}, QVariantMap{}, u"no point"_s, QVariant()}); },
        {u"loadTrack array:array:double:0.0000000,2.0000000,0.00,0;0.0000000,0.0000000,0.00,0;"
         "0.0000000,0.0000000,0.00,0;0.0000000,0.0000000,0.00,0"_s});
    row("texts of no number count as 0",
        [nan](M &m) { m.loadTrack({point(u"nan"_s, u"inf"_s, nan, u"soon"_s)}); },
        {u"loadTrack array:array:double:0.0000000,0.0000000,0.00,0"_s});
    row("an interval has six significant digits",
        [](M &m) { m.loadTrack({point(0, 0, 0, 1500.5), point(0, 0, 0, 2'500'000), point(0, 0, 0, -100)}); },
        {u"loadTrack array:array:double:0.0000000,0.0000000,0.00,1500.5;0.0000000,0.0000000,0.00,2.5e+06;"
         "0.0000000,0.0000000,0.00,-100"_s});
}

void TestGPSEmulationManager::operation()
{
    QFETCH(Action, action);
    QFETCH(QStringList, expected);

    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    m_log->takeEvents();
    action(*m_manager);
    QCOMPARE(m_log->takeEvents(), expected);
}

void TestGPSEmulationManager::loadedTrackStartsSilently()
{
    m_manager->setCurrentPositionIndex(7);
    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    m_manager->setCurrentPositionIndex(7);
    m_log->takeEvents();

    m_manager->loadTrack({point(1, 2, 3, 0)});
    QCOMPARE(m_manager->currentPositionIndex(), 0);
    QVERIFY(m_manager->trackLoaded());
    QCOMPARE(m_log->takeEvents(), QStringList(u"loadTrack array:array:double:1.0000000,2.0000000,3.00,0"_s));

    m_manager->loadTrack({});
    QVERIFY(m_manager->trackLoaded());
}

void TestGPSEmulationManager::writtenIndexSendsNothing()
{
    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    m_log->takeEvents();
    QVERIFY(m_manager->setProperty("currentPositionIndex", 4));
    QVERIFY(m_manager->setProperty("currentPositionIndex", 4));
    QCOMPARE(m_manager->currentPositionIndex(), 4);
    QCOMPARE(m_log->takeEvents(), QStringList({u"currentPositionIndex=4"_s, u"currentPositionIndex=4"_s}));
}

void TestGPSEmulationManager::positionIsStored_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QVariantMap>("expected");

    using M = GPSEmulationManager;
    const QVariantMap all{{latitudeKey, 1.5}, {longitudeKey, -2.25}, {altitudeKey, 3.125}};
    QTest::newRow("local position") << Action([](M &m) { m.setLocalPosition(1.5, -2.25, 3.125); }) << all;
    QTest::newRow("position") << Action([](M &m) { m.setPosition(1.5, -2.25, 3.125); }) << all;
    QTest::newRow("latitude") << Action([](M &m) { m.setLatitude(1.5); }) << QVariantMap{{latitudeKey, 1.5}};
    QTest::newRow("longitude") << Action([](M &m) { m.setLongitude(-2.25); }) << QVariantMap{{longitudeKey, -2.25}};
    QTest::newRow("altitude") << Action([](M &m) { m.setAltitude(3.125); }) << QVariantMap{{altitudeKey, 3.125}};
    QTest::newRow("a track is not") << Action([](M &m) { m.loadTrack({point(1, 2, 3, 0)}); }) << QVariantMap{};
    QTest::newRow("not a number") << Action([](M &m) { m.setAltitude(std::numeric_limits<double>::quiet_NaN()); })
                                  << QVariantMap{{altitudeKey, 0.0}};
}

void TestGPSEmulationManager::positionIsStored()
{
    QFETCH(Action, action);
    QFETCH(QVariantMap, expected);

    action(*m_manager);
    QVariantMap stored;
    const QStringList keys = m_ide->keys();
    for (const QString &key : keys)
        stored.insert(key, m_ide->value(key));
    QCOMPARE(stored, expected);
}

void TestGPSEmulationManager::connectionSendsEverything()
{
    m_ide->setValue(latitudeKey, 48.1173);
    m_ide->setValue(longitudeKey, u"-11.5166667"_s);
    m_ide->setValue(altitudeKey, u"high"_s);
    m_manager->setTrackLooped(true);
    m_manager->setTrackIntervalMode(true);
    m_manager->setTrackSpeed(3);
    m_manager->setCurrentPositionIndex(5);
    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    const QStringList events = m_log->takeEvents();
    QCOMPARE(
        events.sliced(events.indexOf(u"stopTrack "_s)),
        QStringList(
            {u"stopTrack "_s,
             u"currentPositionIndex=0"_s,
             u"setTrackLooped boolean:1"_s,
             u"trackLooped=true"_s,
             u"setTrackIntervalMode boolean:1"_s,
             u"useDefaultInterval=true"_s,
             u"setTrackSpeed int32:3"_s,
             u"trackSpeed=3"_s,
             u"setPosition double:48.1173000 double:-11.5166667 double:0.00"_s,
             u"position.latitude=48.1173"_s,
             u"position.longitude=-11.5166667"_s,
             u"position.altitude=0"_s,
             u"emulatorConnected"_s})); // the manager has heard of it first
}

void TestGPSEmulationManager::connectionForgetsTheTrack()
{
    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    QCOMPARE(calls(), setUp());
    m_manager->setPosition(1, 2, 3);
    m_manager->loadTrack({point(1, 2, 3, 0)});
    m_manager->goToPositionOnTrack(9);
    m_log->takeEvents();

    m_log->invoker().dropClients();
    QTRY_COMPARE_WITH_TIMEOUT(m_log->invoker().connections(), 2, 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(!m_manager->trackLoaded(), 30'000);
    QCOMPARE(m_manager->currentPositionIndex(), 0);
    QCOMPARE(calls(), setUp(u"double:1.0000000 double:2.0000000 double:3.00"_s));
}

void TestGPSEmulationManager::boundTwiceSendsTwice()
{
    m_manager->setRdbusinvoker(m_log->channel());
    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    QCOMPARE(calls(), setUp() + setUp());

    m_log->invoker().sendText(u"a:b:c::"_s);
    const QStringList twice(2, u"replyFromEmulatorReceived"_s);
    QStringList events;
    QTRY_COMPARE_GE_WITH_TIMEOUT((events += m_log->takeEvents()).size(), 2, 30'000);
    QCOMPARE(events, twice);
}

void TestGPSEmulationManager::answersAreNotLookedAt()
{
    m_manager->processDBusMethodsReturnValues({u"enabled"_s, u"tap|"_s, u"true"_s, {}, {}});
    m_manager->processDBusMethodsReturnValues({});
    m_manager->setRdbusinvoker(m_log->channel());
    QVERIFY(m_log->connectChannel());
    QCOMPARE(calls(), setUp());
}

QTEST_GUILESS_MAIN(TestGPSEmulationManager)

#include "tst_gpsemulationmanager.moc"
