// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Runs where the emulator's services are: with their bus as the system bus, and their invoker on the channel's port.

#include "sensors/sensorsemulationmanager.h"

#include "utils/idesettings.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;

using Action = std::function<void(SensorsEmulationManager &)>;
Q_DECLARE_METATYPE(Action)

namespace {

const QString service = u"ru.kelo.SensorfwEmulationManagement"_s;
const QString object = u"/ru/kelo/SensorfwEmulationManagement"_s;

// What an application in the emulator would see.
QVariant state(const QString &property)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, object, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message << service << property;
    const QDBusReply<QVariant> reply = QDBusConnection::systemBus().call(message);
    return reply.isValid() ? reply.value() : QVariant(reply.error().message());
}

QVariantMap states(const QStringList &properties)
{
    QVariantMap map;
    for (const QString &property : properties)
        map.insert(property, state(property));
    return map;
}

QVariantMap acceleration(int x, int y, int z)
{
    return {{u"accelerometerX"_s, x}, {u"accelerometerY"_s, y}, {u"accelerometerZ"_s, z}};
}

QVariantMap gyroscope(double x, double y, double z)
{
    return {{u"gyroscopeX"_s, x}, {u"gyroscopeY"_s, y}, {u"gyroscopeZ"_s, z}};
}

QVariantMap magnetometer(double x, double y, double z)
{
    return {{u"magnetometerX"_s, x}, {u"magnetometerY"_s, y}, {u"magnetometerZ"_s, z}};
}

} // namespace

class TestSensorsEmulationManagerServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void restoresStoredValues();
    void readsWhichSensorsAreOn();
    void switchesOffWhatIsNotAvailable();
    void setsState_data();
    void setsState();
    void switchesSensors();
    void reportsErrors();
    void doesNotMindADragOfManyFrames();

private:
    void connectManager();

    std::unique_ptr<IdeSettings> m_ide;
    std::unique_ptr<RemoteDBusInvokerService> m_channel;
    std::unique_ptr<SensorsEmulationManager> m_manager;
    QStringList m_replies;
};

void TestSensorsEmulationManagerServices::initTestCase()
{
    m_ide = std::make_unique<IdeSettings>();
}

void TestSensorsEmulationManagerServices::init()
{
    m_ide->clear();
    m_replies.clear();
    m_channel = std::make_unique<RemoteDBusInvokerService>();
    m_manager = std::make_unique<SensorsEmulationManager>();
    m_manager->setRdbusinvoker(m_channel.get());
    connect(m_manager.get(), &EmulationManager::replyFromEmulatorReceived, this, [this](const QString &reply) {
        m_replies.append(reply);
    });
}

void TestSensorsEmulationManagerServices::cleanup()
{
    if (m_manager && m_manager->rdbusinvoker() && !m_replies.isEmpty()) {
        m_replies.clear();
        m_manager->makeAllSensorsAvailable();
        QTRY_COMPARE(m_replies.size(), 8);
    }
    m_manager.reset();
    m_channel.reset();
}

void TestSensorsEmulationManagerServices::connectManager()
{
    m_channel->connectToEmulator();
    // Eight sensors are asked for and seven values restored.
    QTRY_COMPARE(m_replies.size(), 15);
    QCOMPARE(m_replies, QStringList(15, u"OK"_s));
    m_replies.clear();
}

void TestSensorsEmulationManagerServices::restoresStoredValues()
{
    const QVariantMap stored{
        {u"accelerometer_x"_s, 1},
        {u"accelerometer_y"_s, -2},
        {u"accelerometer_z"_s, 3},
        {u"als"_s, 400},
        {u"gyroscope_x"_s, 0.5},
        {u"gyroscope_y"_s, 1.5},
        {u"gyroscope_z"_s, -2.5},
        {u"magnetometer_x"_s, 1e-06},
        {u"magnetometer_y"_s, 2e-06},
        {u"magnetometer_z"_s, 3e-06},
        {u"magnetometer_calib_level"_s, 2},
        {u"proximity_reflectance"_s, 9},
        {u"tap"_s, 4},
    };
    for (const auto &[key, value] : stored.asKeyValueRange())
        m_ide->setValue(u"emulationmanagement/"_s + key, value);
    connectManager();

    QVariantMap expected{
        {u"als"_s, 400},
        {u"magnetometerCalibrationLevel"_s, 2},
        {u"proximity"_s, 9},
        {u"tap"_s, 4},
    };
    expected.insert(acceleration(1, -2, 3));
    expected.insert(gyroscope(0.5, 1.5, -2.5));
    expected.insert(magnetometer(1e-06, 2e-06, 3e-06));
    QCOMPARE(states(expected.keys()), expected);
}

void TestSensorsEmulationManagerServices::readsWhichSensorsAreOn()
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, object, service, u"disableSensor"_s);
    message << u"compass"_s;
    QCOMPARE(QDBusConnection::systemBus().call(message).type(), QDBusMessage::ReplyMessage);
    connectManager();
    for (const auto &[name, enabled] : m_manager->sensorsEnabledStates().asKeyValueRange())
        QCOMPARE(enabled.toBool(), name != "compass"_L1);
}

void TestSensorsEmulationManagerServices::switchesOffWhatIsNotAvailable()
{
    m_manager->setSensorAvailable(u"als"_s, false);
    m_channel->connectToEmulator();
    QTRY_COMPARE(m_replies.size(), 16); // the reply about als leads to one more call
    QVERIFY(!state(u"enabledSensors"_s).toStringList().contains(u"als"_s));
    QCOMPARE(m_manager->sensorsEnabledStates().value(u"als"_s), QVariant(false));
    QCOMPARE(m_manager->sensorsEnabledStates().value(u"tap"_s), QVariant(true));
}

void TestSensorsEmulationManagerServices::setsState_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<int>("calls");
    QTest::addColumn<QVariantMap>("expected");

    using M = SensorsEmulationManager;
    const auto row = [](const char *name, const Action &action, const QVariantMap &expected, int calls = 1) {
        QTest::newRow(name) << action << calls << expected;
    };
    row("setAccelerometerValues", [](M &m) { m.setAccelerometerValues(1, -2, 3); }, acceleration(1, -2, 3));
    row("setAccelerometerX", [](M &m) { m.setAccelerometerX(-3000); }, acceleration(-3000, 0, 1000));
    row("setAccelerometerY", [](M &m) { m.setAccelerometerY(20); }, acceleration(0, 20, 1000));
    row("setAccelerometerZ", [](M &m) { m.setAccelerometerZ(-1); }, acceleration(0, 0, -1));
    row("setAlsLuxValue", [](M &m) { m.setAlsLuxValue(-1); }, {{u"als"_s, -1}});
    row("setAlsLightLevel", [](M &m) { m.setAlsLightLevel(AlsModel::LightLevel::Sunny); }, {{u"als"_s, 2500}});
    row("setGyroscopeValues", [](M &m) { m.setGyroscopeValues(1.5, -2, 0.25); }, gyroscope(1.5, -2, 0.25));
    row("setGyroscopeX with six digits", [](M &m) { m.setGyroscopeX(1.23456789); }, {{u"gyroscopeX"_s, 1.23457}});
    row("setGyroscopeY", [](M &m) { m.setGyroscopeY(-25); }, {{u"gyroscopeY"_s, -25.0}});
    row("setGyroscopeZ", [](M &m) { m.setGyroscopeZ(1e-07); }, {{u"gyroscopeZ"_s, 1e-07}});
    row("setGyroscopeZ to what is no number",
        [](M &m) { m.setGyroscopeZ(std::numeric_limits<double>::quiet_NaN()); },
        {{u"gyroscopeZ"_s, 0.0}});
    row(
        "setMagnetometerValues",
        [](M &m) { m.setMagnetometerValues(4.3e-05, 0, -6.5e-05); },
        magnetometer(4.3e-05, 0, -6.5e-05));
    row("setMagnetometerX", [](M &m) { m.setMagnetometerX(1e-06); }, magnetometer(1e-06, 0, 0));
    row("setMagnetometerY", [](M &m) { m.setMagnetometerY(1e-06); }, magnetometer(4.3e-05, 1e-06, 0));
    row("setMagnetometerZ", [](M &m) { m.setMagnetometerZ(1e-06); }, magnetometer(4.3e-05, 0, 1e-06));
    row("setMagnetometerCalibrationLevel",
        [](M &m) { m.setMagnetometerCalibrationLevel(3); },
        {{u"magnetometerCalibrationLevel"_s, 3}});
    row("setCompassCalibrationLevel",
        [](M &m) { m.setCompassCalibrationLevel(1); },
        {{u"magnetometerCalibrationLevel"_s, 1}});
    row("setCompassAzimuth lays the device flat", [](M &m) { m.setCompassAzimuth(180); }, acceleration(0, 0, 1000), 2);
    row(
        "setCompassAzimuth turns the field",
        [](M &m) { m.setCompassAzimuth(45); },
        magnetometer(-3.08221e-05, 3.08221e-05, 0),
        2);
    row("setOrientation", [](M &m) { m.setOrientation(QOrientationReading::LeftUp); }, acceleration(-100, 0, 0));
    row("setProximitySensorReflectanceValue",
        [](M &m) { m.setProximitySensorReflectanceValue(3); },
        {{u"proximity"_s, 3}});
    row("near", [](M &m) { m.setProximitySensorNearValue(true); }, {{u"proximity"_s, 0}});
    row("far", [](M &m) { m.setProximitySensorNearValue(false); }, {{u"proximity"_s, 10}});
    row("setTapSensorValue", [](M &m) { m.setTapSensorValue(TapModel::TapDirection::Z_Pos); }, {{u"tap"_s, 6}});
    row(
        "setMagneticFieldValues stays here",
        [](M &m) {
            m.setMagneticFieldValues(1, 2, 3);
            m.setTapSensorValue(TapModel::TapDirection::Undefined);
        },
        magnetometer(4.3e-05, 0, 0));
    QVariantMap defaults{{u"als"_s, 100}, {u"magnetometerCalibrationLevel"_s, 0}, {u"proximity"_s, 5}, {u"tap"_s, -1}};
    defaults.insert(acceleration(0, 0, 1000));
    defaults.insert(gyroscope(0, 0, 1.14592));
    defaults.insert(magnetometer(4.3e-05, 0, 0));
    row("setDefaultValues", [](M &m) { m.setDefaultValues(); }, defaults, 7);
}

void TestSensorsEmulationManagerServices::setsState()
{
    QFETCH(Action, action);
    QFETCH(int, calls);
    QFETCH(QVariantMap, expected);

    connectManager();
    action(*m_manager);
    QTRY_COMPARE(m_replies.size(), calls);
    QCOMPARE(m_replies, QStringList(calls, u"OK"_s));
    QCOMPARE(states(expected.keys()), expected);
}

void TestSensorsEmulationManagerServices::switchesSensors()
{
    connectManager();
    m_manager->disableSensor(u"gyroscope"_s);
    QTRY_COMPARE(m_replies, QStringList(u"OK"_s));
    QVERIFY(!state(u"enabledSensors"_s).toStringList().contains(u"gyroscope"_s));
    m_manager->enableSensor(u"gyroscope"_s);
    QTRY_COMPARE(m_replies.size(), 2);
    QVERIFY(state(u"enabledSensors"_s).toStringList().contains(u"gyroscope"_s));
}

void TestSensorsEmulationManagerServices::reportsErrors()
{
    connectManager();
    m_manager->enableSensor(u"thermometer"_s);
    m_manager->callDBusMethod(u"noSuchMethod"_s, {});
    QTRY_COMPARE(m_replies.size(), 2);
    for (const QString &reply : std::as_const(m_replies)) {
        QVERIFY2(reply != "OK"_L1, qPrintable(reply));
        QVERIFY2(reply.contains(u' '), qPrintable(reply));
    }
}

void TestSensorsEmulationManagerServices::doesNotMindADragOfManyFrames()
{
    connectManager();
    constexpr int steps = 100; // several seconds of dragging at once
    for (int x = 1; x <= steps; ++x)
        m_manager->setAccelerometerX(x);
    QTRY_COMPARE(m_replies.size(), steps);
    QCOMPARE(m_replies, QStringList(steps, u"OK"_s));
    QCOMPARE(state(u"accelerometerX"_s), QVariant(steps));
}

QTEST_GUILESS_MAIN(TestSensorsEmulationManagerServices)

#include "tst_sensorsemulationmanager_services.moc"
