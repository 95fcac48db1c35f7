// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/sensorsemulationmanager.h"

#include "utils/idesettings.h"
#include "utils/managerlog.h"
#include "utils/metaobjects.h"

#include <QElapsedTimer>
#include <QMetaProperty>
#include <QOrientationReading>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;
using TestUtils::LoggedManager;
using TestUtils::ManagerLog;

using Action = std::function<void(SensorsEmulationManager &)>;
Q_DECLARE_METATYPE(Action)

namespace {

const QString address = u"system ru.kelo.SensorfwEmulationManagement /ru/kelo/SensorfwEmulationManagement "
                        "ru.kelo.SensorfwEmulationManagement "_s;

// The names as the emulator's service and the maps sort them.
const QStringList sortedSensorNames{
    u"accelerometer"_s,
    u"als"_s,
    u"compass"_s,
    u"gyroscope"_s,
    u"magnetometer"_s,
    u"orientation"_s,
    u"proximity"_s,
    u"tap"_s,
};

QVariantMap allSensors(bool state)
{
    QVariantMap map;
    for (const QString &name : sortedSensorNames)
        map.insert(name, state);
    return map;
}

const QStringList defaultRestoreFrames{
    address + u"setAccelerometerValues int32:0 int32:0 int32:1000"_s,
    address + u"setMagnetometerValues double:4.3e-05 double:0 double:0"_s,
    address + u"setMagnetometerCalibrationLevel int32:0"_s,
    address + u"setGyroscopeValues double:0 double:0 double:1.14592"_s,
    address + u"setAlsValue int32:100"_s,
    address + u"setProximitySensorValue int32:5"_s,
    address + u"setTapSensorValue int32:-1"_s,
};

// None of them a default.
void setOtherValues(SensorsEmulationManager &manager)
{
    manager.setAccelerometerValues(1, 2, 3);
    manager.setAlsLuxValue(4);
    manager.setGyroscopeValues(5.5, 6.5, 7.5);
    manager.setMagneticFieldValues(8.5, 9.5, 10.5);
    manager.setMagnetometerValues(1.5e-05, 2.5e-05, 3.5e-05);
    manager.setMagnetometerCalibrationLevel(2);
    manager.setProximitySensorReflectanceValue(6);
    manager.setTapSensorValue(TapModel::TapDirection::Z_Pos);
}

const QVariantMap otherValues{
    {u"emulationmanagement/accelerometer_x"_s, 1},
    {u"emulationmanagement/accelerometer_y"_s, 2},
    {u"emulationmanagement/accelerometer_z"_s, 3},
    {u"emulationmanagement/als"_s, 4},
    {u"emulationmanagement/gyroscope_x"_s, 5.5},
    {u"emulationmanagement/gyroscope_y"_s, 6.5},
    {u"emulationmanagement/gyroscope_z"_s, 7.5},
    {u"emulationmanagement/magnetic_field_x"_s, 8.5},
    {u"emulationmanagement/magnetic_field_y"_s, 9.5},
    {u"emulationmanagement/magnetic_field_z"_s, 10.5},
    {u"emulationmanagement/magnetometer_calib_level"_s, 2},
    {u"emulationmanagement/magnetometer_x"_s, 1.5e-05},
    {u"emulationmanagement/magnetometer_y"_s, 2.5e-05},
    {u"emulationmanagement/magnetometer_z"_s, 3.5e-05},
    {u"emulationmanagement/proximity_reflectance"_s, 6},
    {u"emulationmanagement/tap"_s, 6},
};

QStringList queryFrames(const QStringList &names = sortedSensorNames)
{
    QStringList frames;
    for (const QString &name : names)
        frames.append(address + u"enabled string:"_s + name);
    return frames;
}

} // namespace

class TestSensorsEmulationManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void describesItselfToQml();
    void ownsItsModels();
    void startsWithEverySensorAvailableAndOff();
    void worksWithoutChannel();

    void operation_data();
    void operation();
    void restsOnTheAzimuthItWasGiven();

    void reply_data();
    void reply();
    void answersReachThePages();

    void firstConnection();
    void firstConnectionQueriesWhatIsInTheMapByThen();
    void firstConnectionRestoresStoredValues();
    void laterConnectionSwitchesSensorsAsTheyWere();
    void connectionEvents();
    void boundTwiceSetsUpTwice();
    void availabilityIsForgottenByNobodyButMakeAllAvailable();

    void savesValuesOnDestruction();
    void storesEachValueSoon_data();
    void storesEachValueSoon();
    void storesWhileChangesFollowEachOther();
    void storesManyStepsAtOnce();
    void laterConnectionKeepsTheValuesInForce();
    void firstConnectionOverwritesWhatWasSetBefore();
    void withoutAConnectionNothingStoredIsLost_data();
    void withoutAConnectionNothingStoredIsLost();
    void withoutAConnectionNothingIsStoredBeforeTheEnd();
    void withoutAConnectionAnEmptyStoreGetsTheValues_data();
    void withoutAConnectionAnEmptyStoreGetsTheValues();

private:
    void connectChannel();
    void bind();
    QVariantMap stored() const;
    void storeOtherValues();

    std::unique_ptr<IdeSettings> m_ide;
    std::unique_ptr<ManagerLog> m_log;
    std::unique_ptr<LoggedManager<SensorsEmulationManager>> m_manager;
};

void TestSensorsEmulationManager::initTestCase()
{
    m_ide = std::make_unique<IdeSettings>();
}

void TestSensorsEmulationManager::init()
{
    m_ide->clear();
    const QString service = u"ru.kelo.SensorfwEmulationManagement"_s;
    m_log = std::make_unique<ManagerLog>(u"system"_s, service, u"/ru/kelo/SensorfwEmulationManagement"_s, service);
    QVERIFY(m_log->listen());
    m_manager = std::make_unique<LoggedManager<SensorsEmulationManager>>(m_log.get());
    m_log->watch(m_manager.get());
    m_log->watch(m_manager->accelerometer(), u"accelerometer"_s);
    m_log->watch(m_manager->magnetometer(), u"magnetometer"_s);
    m_log->watch(m_manager->magneticField(), u"magneticField"_s);
    m_log->watch(m_manager->compass(), u"compass"_s);
    m_log->watch(m_manager->orientation(), u"orientation"_s);
    m_log->watch(m_manager->gyroscope(), u"gyroscope"_s);
    m_log->watch(m_manager->als(), u"als"_s);
    m_log->watch(m_manager->proximity(), u"proximity"_s);
    m_log->watch(m_manager->tap(), u"tap"_s);
}

void TestSensorsEmulationManager::cleanup()
{
    m_manager.reset();
    m_log.reset();
}

void TestSensorsEmulationManager::connectChannel()
{
    QVERIFY(m_log->connectChannel());
}

void TestSensorsEmulationManager::bind()
{
    m_manager->setRdbusinvoker(m_log->channel());
    m_log->forget();
}

QVariantMap TestSensorsEmulationManager::stored() const
{
    QVariantMap values;
    for (const QString &key : m_ide->keys())
        values.insert(key, m_ide->value(key));
    return values;
}

void TestSensorsEmulationManager::storeOtherValues()
{
    for (const auto &[key, value] : otherValues.asKeyValueRange())
        m_ide->setValue(key, value);
}

void TestSensorsEmulationManager::describesItselfToQml()
{
    const QMetaObject &metaObject = SensorsEmulationManager::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &EmulationManager::staticMetaObject);
    QCOMPARE(SensorsEmulationManager::magnetometerXYPolarRadius, 4.358898943540674e-05);

    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        QVERIFY(property.isReadable() && !property.isWritable());
        properties.append(u"%1 %2"_s.arg(
            QLatin1StringView(property.name()),
            property.isConstant() ? u"constant"_s : QString::fromLatin1(property.notifySignal().methodSignature())));
    }
    QCOMPARE(
        properties,
        QStringList(
            {u"accelerometer constant"_s,
             u"magnetometer constant"_s,
             u"magneticField constant"_s,
             u"compass constant"_s,
             u"orientation constant"_s,
             u"gyroscope constant"_s,
             u"als constant"_s,
             u"proximity constant"_s,
             u"tap constant"_s,
             u"sensorsEnabledStates sensorsEnabledStatesChanged()"_s,
             u"sensorsAvailability sensorsAvailabilityChanged()"_s}));

    QCOMPARE(
        TestUtils::ownMethods(metaObject),
        QStringList(
            {u"signal sensorsEnabledStatesChanged()"_s,
             u"signal sensorsInitialized()"_s,
             u"signal sensorsAvailabilityChanged()"_s,
             u"enableSensor(QString sensorName)"_s,
             u"disableSensor(QString sensorName)"_s,
             u"setAccelerometerValues(int x, int y, int z)"_s,
             u"setAccelerometerX(int x)"_s,
             u"setAccelerometerY(int y)"_s,
             u"setAccelerometerZ(int z)"_s,
             u"setAlsLuxValue(int lux)"_s,
             u"setAlsLightLevel(AlsModel::LightLevel lightLevel)"_s,
             u"setCompassAzimuth(int azimuth)"_s,
             u"setCompassCalibrationLevel(int calibrationLevel)"_s,
             u"setGyroscopeValues(double x, double y, double z)"_s,
             u"setGyroscopeX(double x)"_s,
             u"setGyroscopeY(double y)"_s,
             u"setGyroscopeZ(double z)"_s,
             u"setMagneticFieldValues(double x, double y, double z)"_s,
             u"setMagneticFieldX(double x)"_s,
             u"setMagneticFieldY(double y)"_s,
             u"setMagneticFieldZ(double z)"_s,
             u"setMagnetometerValues(double x, double y, double z)"_s,
             u"setMagnetometerX(double x)"_s,
             u"setMagnetometerY(double y)"_s,
             u"setMagnetometerZ(double z)"_s,
             u"setMagnetometerCalibrationLevel(int calibrationLevel)"_s,
             u"setOrientation(int orientation)"_s,
             u"setProximitySensorReflectanceValue(int reflectance)"_s,
             u"setProximitySensorNearValue(bool near)"_s,
             u"setTapSensorValue(TapModel::TapDirection tapDirection)"_s,
             u"setSensorEnabled(QString sensorName, bool checkSensorState)"_s,
             u"setDefaultValues()"_s}));
}

void TestSensorsEmulationManager::ownsItsModels()
{
    const QList<QObject *> models{
        m_manager->accelerometer(),
        m_manager->magnetometer(),
        m_manager->magneticField(),
        m_manager->compass(),
        m_manager->orientation(),
        m_manager->gyroscope(),
        m_manager->als(),
        m_manager->proximity(),
        m_manager->tap(),
    };
    QCOMPARE(m_manager->findChildren<SensorModel *>(Qt::FindDirectChildrenOnly).size(), models.size());
    for (const QObject *model : models)
        QCOMPARE(model->parent(), m_manager.get());
    for (int i = 0; i < models.size(); ++i) {
        const QMetaObject *metaObject = m_manager->metaObject();
        const QMetaProperty property =
            metaObject->property(SensorsEmulationManager::staticMetaObject.propertyOffset() + i);
        QCOMPARE(property.read(m_manager.get()).value<QObject *>(), models.at(i));
    }
}

void TestSensorsEmulationManager::startsWithEverySensorAvailableAndOff()
{
    QCOMPARE(m_manager->sensorsEnabledStates(), allSensors(false));
    QCOMPARE(m_manager->sensorsAvailability(), allSensors(true));
    QCOMPARE(m_manager->bus(), u"system"_s);
    QCOMPARE(m_manager->dbusService(), u"ru.kelo.SensorfwEmulationManagement"_s);
    QCOMPARE(m_manager->dbusObject(), u"/ru/kelo/SensorfwEmulationManagement"_s);
    QCOMPARE(m_manager->dbusInterface(), u"ru.kelo.SensorfwEmulationManagement"_s);
}

void TestSensorsEmulationManager::worksWithoutChannel()
{
    m_manager->setDefaultValues();
    m_manager->setAccelerometerZ(-1000);
    m_manager->enableSensor(u"tap"_s);
    m_manager->setupSensors();
    QVERIFY(!m_log->hasCalls());
    QCOMPARE(m_manager->accelerometer()->z(), 1000); // what the store has by default
    QCOMPARE(m_manager->compass()->azimuth(), 270);
}

void TestSensorsEmulationManager::operation_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("expected");

    using M = SensorsEmulationManager;
    const auto row = [](const char *name, const Action &action, const QStringList &expected) {
        QTest::newRow(name) << action << expected;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();

    row("enableSensor", [](M &m) { m.enableSensor(u"accelerometer"_s); }, {u"enableSensor string:accelerometer"_s});
    row("disableSensor", [](M &m) { m.disableSensor(u"tap"_s); }, {u"disableSensor string:tap"_s});
    row("setAccelerometerValues calls, then updates, then derives",
        [](M &m) { m.setAccelerometerValues(500, 0, 1000); },
        {u"setAccelerometerValues int32:500 int32:0 int32:1000"_s,
         u"accelerometer.x=500"_s,
         u"accelerometer.y=0"_s,
         u"accelerometer.z=1000"_s,
         u"compass.azimuth=270"_s,
         u"orientation.orientation=RightUp"_s});
    row("setAccelerometerX",
        [](M &m) { m.setAccelerometerX(-500); },
        {u"setAccelerometerX int32:-500"_s,
         u"accelerometer.x=-500"_s,
         u"compass.azimuth=270"_s,
         u"orientation.orientation=LeftUp"_s});
    row("setAccelerometerY",
        [](M &m) { m.setAccelerometerY(500); },
        {u"setAccelerometerY int32:500"_s,
         u"accelerometer.y=500"_s,
         u"compass.azimuth=270"_s,
         u"orientation.orientation=TopUp"_s});
    row("setAccelerometerZ",
        [](M &m) { m.setAccelerometerZ(-1000); },
        {u"setAccelerometerZ int32:-1000"_s,
         u"accelerometer.z=-1000"_s,
         u"compass.azimuth=90"_s,
         u"orientation.orientation=FaceDown"_s});
    row("setAccelerometerZ to nothing at all has no heading",
        [](M &m) { m.setAccelerometerZ(0); },
        {u"setAccelerometerZ int32:0"_s,
         u"accelerometer.z=0"_s,
         u"compass.azimuth=0"_s,
         u"orientation.orientation=FaceUp"_s});
    row("values are not clamped",
        [](M &m) { m.setAccelerometerZ(std::numeric_limits<int>::min()); },
        {u"setAccelerometerZ int32:-2147483648"_s,
         u"accelerometer.z=-2147483648"_s,
         u"compass.azimuth=90"_s,
         u"orientation.orientation=FaceDown"_s});
    row("setAlsLuxValue", [](M &m) { m.setAlsLuxValue(42); }, {u"setAlsValue int32:42"_s, u"als.lux=42"_s});
    row("setAlsLightLevel sends its lux",
        [](M &m) { m.setAlsLightLevel(AlsModel::LightLevel::Sunny); },
        {u"setAlsValue int32:2500"_s, u"als.lux=2500"_s});
    row("setAlsLightLevel Undefined is -1",
        [](M &m) { m.setAlsLightLevel(AlsModel::LightLevel::Undefined); },
        {u"setAlsValue int32:-1"_s, u"als.lux=-1"_s});
    row("setCompassAzimuth shows the azimuth, lays the device flat and turns the field",
        [](M &m) { m.setCompassAzimuth(45); },
        {u"compass.azimuth=45"_s,
         u"setAccelerometerValues int32:0 int32:0 int32:1000"_s,
         u"accelerometer.x=0"_s,
         u"accelerometer.y=0"_s,
         u"accelerometer.z=1000"_s,
         u"compass.azimuth=270"_s,
         u"orientation.orientation=FaceUp"_s,
         u"setMagnetometerValues double:-3.08221e-05 double:3.08221e-05 double:0"_s,
         u"magnetometer.x=-3.082207001484488e-05"_s,
         u"magnetometer.y=3.0822070014844885e-05"_s,
         u"magnetometer.z=0"_s,
         u"compass.azimuth=45"_s});
    row("setCompassAzimuth 0 has no negative zero",
        [](M &m) { m.setCompassAzimuth(0); },
        {u"compass.azimuth=0"_s,
         u"setAccelerometerValues int32:0 int32:0 int32:1000"_s,
         u"accelerometer.x=0"_s,
         u"accelerometer.y=0"_s,
         u"accelerometer.z=1000"_s,
         u"compass.azimuth=270"_s,
         u"orientation.orientation=FaceUp"_s,
         u"setMagnetometerValues double:0 double:4.3589e-05 double:0"_s,
         u"magnetometer.x=0"_s,
         u"magnetometer.y=4.358898943540674e-05"_s,
         u"magnetometer.z=0"_s,
         u"compass.azimuth=0"_s});
    row("setCompassCalibrationLevel announces the compass's level twice",
        [](M &m) { m.setCompassCalibrationLevel(2); },
        {u"compass.calibrationLevel=2"_s,
         u"setMagnetometerCalibrationLevel int32:2"_s,
         u"magnetometer.calibrationLevel=2"_s,
         u"compass.calibrationLevel=2"_s});
    row("setGyroscopeValues derives nothing",
        [](M &m) { m.setGyroscopeValues(1.23456789, -2, 0.5); },
        {u"setGyroscopeValues double:1.23457 double:-2 double:0.5"_s,
         u"gyroscope.x=1.23456789"_s,
         u"gyroscope.y=-2"_s,
         u"gyroscope.z=0.5"_s});
    row("setGyroscopeX",
        [](M &m) { m.setGyroscopeX(1.23456789); },
        {u"setGyroscopeX double:1.23457"_s, u"gyroscope.x=1.23456789"_s});
    row("setGyroscopeY",
        [](M &m) { m.setGyroscopeY(1e-07); },
        {u"setGyroscopeY double:1e-07"_s, u"gyroscope.y=1e-07"_s});
    row("setGyroscopeZ", [](M &m) { m.setGyroscopeZ(-25); }, {u"setGyroscopeZ double:-25"_s, u"gyroscope.z=-25"_s});
    row("a gyroscope value that is no number is 0",
        [=](M &m) { m.setGyroscopeValues(nan, infinity, -infinity); },
        {u"setGyroscopeValues double:0 double:0 double:0"_s,
         u"gyroscope.x=0"_s,
         u"gyroscope.y=0"_s,
         u"gyroscope.z=0"_s});
    row("setMagneticFieldValues sends nothing",
        [](M &m) { m.setMagneticFieldValues(1.5, -2.5, 3.5); },
        {u"magneticField.x=1.5"_s, u"magneticField.y=-2.5"_s, u"magneticField.z=3.5"_s});
    row("setMagneticFieldX", [](M &m) { m.setMagneticFieldX(1.5); }, {u"magneticField.x=1.5"_s});
    row("setMagneticFieldY", [](M &m) { m.setMagneticFieldY(1.5); }, {u"magneticField.y=1.5"_s});
    row("setMagneticFieldZ", [](M &m) { m.setMagneticFieldZ(1.5); }, {u"magneticField.z=1.5"_s});
    row("a magnetic field that is no number is 0",
        [=](M &m) {
            m.setMagneticFieldX(nan);
            m.setMagneticFieldY(infinity);
            m.setMagneticFieldZ(-infinity);
        },
        {u"magneticField.x=0"_s, u"magneticField.y=0"_s, u"magneticField.z=0"_s});
    row("setMagnetometerValues derives the azimuth only",
        [](M &m) { m.setMagnetometerValues(4.3e-05, 0, 0); },
        {u"setMagnetometerValues double:4.3e-05 double:0 double:0"_s,
         u"magnetometer.x=4.3e-05"_s,
         u"magnetometer.y=0"_s,
         u"magnetometer.z=0"_s,
         u"compass.azimuth=270"_s});
    row("setMagnetometerX",
        [](M &m) { m.setMagnetometerX(-4.3e-05); },
        {u"setMagnetometerX double:-4.3e-05"_s, u"magnetometer.x=-4.3e-05"_s, u"compass.azimuth=90"_s});
    row("setMagnetometerY",
        [](M &m) { m.setMagnetometerY(4.3e-05); },
        {u"setMagnetometerY double:4.3e-05"_s, u"magnetometer.y=4.3e-05"_s, u"compass.azimuth=315"_s});
    row("setMagnetometerZ",
        [](M &m) { m.setMagnetometerZ(1); },
        {u"setMagnetometerZ double:1"_s, u"magnetometer.z=1"_s, u"compass.azimuth=270"_s});
    row("a magnetometer value that is no number is 0",
        [=](M &m) {
            m.setMagnetometerY(nan);
            m.setMagnetometerZ(infinity);
        },
        {u"setMagnetometerY double:0"_s,
         u"magnetometer.y=0"_s,
         u"compass.azimuth=270"_s,
         u"setMagnetometerZ double:0"_s,
         u"magnetometer.z=0"_s,
         u"compass.azimuth=270"_s});
    row("setMagnetometerCalibrationLevel sets the compass's too",
        [](M &m) { m.setMagnetometerCalibrationLevel(3); },
        {u"setMagnetometerCalibrationLevel int32:3"_s,
         u"magnetometer.calibrationLevel=3"_s,
         u"compass.calibrationLevel=3"_s});

    const auto orientation = [&](const char *name, int value, const QString &vector, const QStringList &derived) {
        const QStringList xyz = vector.split(u' ');
        QStringList expected{
            u"setAccelerometerValues int32:%1 int32:%2 int32:%3"_s.arg(xyz.at(0), xyz.at(1), xyz.at(2)),
            u"accelerometer.x="_s + xyz.at(0),
            u"accelerometer.y="_s + xyz.at(1),
            u"accelerometer.z="_s + xyz.at(2),
        };
        expected += derived;
        row(name, [value](M &m) { m.setOrientation(value); }, expected);
    };
    orientation(
        "setOrientation TopUp", 1, u"0 100 0"_s, {u"compass.azimuth=270"_s, u"orientation.orientation=TopUp"_s});
    orientation(
        "setOrientation TopDown", 2, u"0 -100 0"_s, {u"compass.azimuth=270"_s, u"orientation.orientation=TopDown"_s});
    orientation(
        "setOrientation LeftUp", 3, u"-100 0 0"_s, {u"compass.azimuth=90"_s, u"orientation.orientation=LeftUp"_s});
    orientation(
        "setOrientation RightUp", 4, u"100 0 0"_s, {u"compass.azimuth=90"_s, u"orientation.orientation=RightUp"_s});
    orientation(
        "setOrientation FaceUp", 5, u"0 0 300"_s, {u"compass.azimuth=270"_s, u"orientation.orientation=FaceUp"_s});
    orientation(
        "setOrientation FaceDown", 6, u"0 0 -300"_s, {u"compass.azimuth=90"_s, u"orientation.orientation=FaceDown"_s});
    row("setOrientation Undefined does nothing", [](M &m) { m.setOrientation(0); }, {});
    row("setOrientation below does nothing", [](M &m) { m.setOrientation(-1); }, {});
    row("setOrientation above does nothing", [](M &m) { m.setOrientation(7); }, {});

    row("setProximitySensorReflectanceValue",
        [](M &m) { m.setProximitySensorReflectanceValue(7); },
        {u"setProximitySensorValue int32:7"_s, u"proximity.reflectance=7"_s});
    row("near is reflectance 0",
        [](M &m) { m.setProximitySensorNearValue(true); },
        {u"setProximitySensorValue int32:0"_s, u"proximity.reflectance=0"_s});
    row("far is reflectance 10",
        [](M &m) { m.setProximitySensorNearValue(false); },
        {u"setProximitySensorValue int32:10"_s, u"proximity.reflectance=10"_s});
    row("setTapSensorValue",
        [](M &m) { m.setTapSensorValue(TapModel::TapDirection::Y_Neg); },
        {u"setTapSensorValue int32:8"_s, u"tap.tapDirection=Y_Neg"_s});
    row("setTapSensorValue Undefined is -1",
        [](M &m) { m.setTapSensorValue(TapModel::TapDirection::Undefined); },
        {u"setTapSensorValue int32:-1"_s, u"tap.tapDirection=Undefined"_s});
    row("setSensorEnabled only records",
        [](M &m) {
            m.setSensorEnabled(u"tap"_s, true);
            QCOMPARE(m.sensorsEnabledStates().value(u"tap"_s), QVariant(true));
            m.setSensorEnabled(u"new"_s, false);
            QCOMPARE(m.sensorsEnabledStates().value(u"new"_s), QVariant(false));
            QVERIFY(!m.sensorsAvailability().contains(u"new"_s));
        },
        {u"sensorsEnabledStatesChanged"_s, u"sensorsEnabledStatesChanged"_s});
    row("setDefaultValues resets all but the magnetic field",
        [](M &m) { m.setDefaultValues(); },
        {u"setAccelerometerValues int32:0 int32:0 int32:1000"_s,
         u"accelerometer.x=0"_s,
         u"accelerometer.y=0"_s,
         u"accelerometer.z=1000"_s,
         u"compass.azimuth=270"_s,
         u"orientation.orientation=FaceUp"_s,
         u"setAlsValue int32:100"_s,
         u"als.lux=100"_s,
         u"setGyroscopeValues double:0 double:0 double:1.14592"_s,
         u"gyroscope.x=0"_s,
         u"gyroscope.y=0"_s,
         u"gyroscope.z=1.1459155902616465"_s,
         u"setMagnetometerValues double:4.3e-05 double:0 double:0"_s,
         u"magnetometer.x=4.3e-05"_s,
         u"magnetometer.y=0"_s,
         u"magnetometer.z=0"_s,
         u"compass.azimuth=270"_s,
         u"setMagnetometerCalibrationLevel int32:0"_s,
         u"magnetometer.calibrationLevel=0"_s,
         u"compass.calibrationLevel=0"_s,
         u"setProximitySensorValue int32:5"_s,
         u"proximity.reflectance=5"_s,
         u"setTapSensorValue int32:-1"_s,
         u"tap.tapDirection=Undefined"_s});
    row("setSensorAvailable true",
        [](M &m) {
            m.setSensorAvailable(u"tap"_s, true);
            QCOMPARE(m.sensorsEnabledStates().value(u"tap"_s), QVariant(true));
            QCOMPARE(m.sensorsAvailability().value(u"tap"_s), QVariant(true));
        },
        {u"sensorsEnabledStatesChanged"_s, u"enableSensor string:tap"_s, u"sensorsAvailabilityChanged"_s});
    row("setSensorAvailable false",
        [](M &m) {
            m.setSensorAvailable(u"tap"_s, false);
            QCOMPARE(m.sensorsEnabledStates().value(u"tap"_s), QVariant(false));
            QCOMPARE(m.sensorsAvailability().value(u"tap"_s), QVariant(false));
        },
        {u"sensorsEnabledStatesChanged"_s, u"disableSensor string:tap"_s, u"sensorsAvailabilityChanged"_s});
    row("setSensorAvailable with a new name adds it to both maps",
        [](M &m) {
            m.setSensorAvailable(u"new"_s, false);
            QCOMPARE(m.sensorsEnabledStates().value(u"new"_s), QVariant(false));
            QCOMPARE(m.sensorsAvailability().value(u"new"_s), QVariant(false));
        },
        {u"sensorsEnabledStatesChanged"_s, u"disableSensor string:new"_s, u"sensorsAvailabilityChanged"_s});

    QStringList all{u"sensorsAvailabilityChanged"_s};
    for (const QString &name : sortedSensorNames)
        all << u"enableSensor string:"_s + name << u"sensorsEnabledStatesChanged"_s;
    row("makeAllSensorsAvailable", [](M &m) { m.makeAllSensorsAvailable(); }, all);
}

void TestSensorsEmulationManager::operation()
{
    QFETCH(Action, action);
    QFETCH(QStringList, expected);

    connectChannel();
    bind();
    action(*m_manager);
    QCOMPARE(m_log->takeEvents(), expected);
}

void TestSensorsEmulationManager::restsOnTheAzimuthItWasGiven()
{
    for (int azimuth = -359; azimuth <= 720; ++azimuth) {
        m_manager->setCompassAzimuth(azimuth);
        QCOMPARE(m_manager->compass()->azimuth(), ((azimuth % 360) + 360) % 360);
        QCOMPARE(m_manager->orientation()->orientation(), QOrientationReading::FaceUp);
    }
    m_manager->setCompassAzimuth(std::numeric_limits<int>::min());
    QVERIFY(m_manager->compass()->azimuth() >= 0 && m_manager->compass()->azimuth() < 360);
}

void TestSensorsEmulationManager::reply_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QVariantMap>("changedStates");

    // "tap" is on and "als" is not available when the reply comes.
    const auto row =
        [](const char *name, const QString &reply, const QStringList &expected, const QVariantMap &changed) {
            QTest::newRow(name) << reply << expected << changed;
        };
    const QString ok = u"replyFromEmulatorReceived"_s;
    const QString changed = u"sensorsEnabledStatesChanged"_s;
    const QVariantMap compassOn{{u"compass"_s, true}};
    const QVariantMap tapOff{{u"tap"_s, false}};

    row("on", u"enabled:compass:true::"_s, {changed, ok}, compassOn);
    row("off", u"enabled:tap:false::"_s, {changed, ok}, tapOff);
    row("what was known is announced again", u"enabled:tap:true::"_s, {changed, ok}, {});
    row("1 is on", u"enabled:compass:1::"_s, {changed, ok}, compassOn);
    row("0 is off", u"enabled:tap:0::"_s, {changed, ok}, tapOff);
    row("an empty value is off", u"enabled:tap:::"_s, {changed, ok}, tapOff);
    row("false in any case is off", u"enabled:tap:FaLsE::"_s, {changed, ok}, tapOff);
    row("any other text is on", u"enabled:compass:no::"_s, {changed, ok}, compassOn);
    row("a blank is on", u"enabled:compass: ::"_s, {changed, ok}, compassOn);
    row("further arguments are ignored", u"enabled:compass|tap|x:true::"_s, {changed, ok}, compassOn);
    row("empty parts before the name are skipped", u"enabled:||compass:true::"_s, {changed, ok}, compassOn);
    row("no sensor name records nothing", u"enabled::true::"_s, {ok}, {});
    row("separators alone record nothing", u"enabled:||:true::"_s, {ok}, {});
    row("other methods are ignored", u"setTapSensorValue:compass:true::"_s, {ok}, {});
    row("the method's case counts", u"Enabled:compass:true::"_s, {ok}, {});
    row("an error never reaches the states", u"enabled:compass:true:org.example.Error:no"_s, {ok}, {});
    row("another shape never does", u"enabled:compass:true:"_s, {ok}, {});
    row("a sensor that is not available is switched off, reported on",
        u"enabled:als:true::"_s,
        {u"disableSensor string:als"_s, changed, ok},
        {{u"als"_s, false}});
    row("a sensor that is not available is switched off, reported off",
        u"enabled:als:false::"_s,
        {u"disableSensor string:als"_s, changed, ok},
        {{u"als"_s, false}});
    row("an unknown sensor is switched off",
        u"enabled:thermometer:true::"_s,
        {u"disableSensor string:thermometer"_s, changed, ok},
        {{u"thermometer"_s, false}});
}

void TestSensorsEmulationManager::reply()
{
    QFETCH(QString, reply);
    QFETCH(QStringList, expected);
    QFETCH(QVariantMap, changedStates);

    m_manager->setSensorEnabled(u"tap"_s, true);
    m_manager->setSensorAvailable(u"als"_s, false);
    QVariantMap states = m_manager->sensorsEnabledStates();
    QVariantMap availability = m_manager->sensorsAvailability();
    connectChannel();
    bind();

    Q_EMIT m_log->channel()->replyReceived(reply);
    QCOMPARE(m_log->takeEvents(), expected);
    states.insert(changedStates);
    QCOMPARE(m_manager->sensorsEnabledStates(), states);
    if (changedStates.contains(u"thermometer"_s))
        availability.insert(u"thermometer"_s, QVariant());
    QCOMPARE(m_manager->sensorsAvailability(), availability);
}

void TestSensorsEmulationManager::answersReachThePages()
{
    for (const QString &name : sortedSensorNames) {
        m_log->invoker().setAnswer(
            address + u"enabled string:"_s + name,
            u"enabled:%1:%2::"_s.arg(name, name == "compass"_L1 ? u"false"_s : u"true"_s));
    }
    m_log->invoker().setAnswer(defaultRestoreFrames.constLast(), u"setTapSensorValue:-1::org.example.Error:boom"_s);
    QStringList texts;
    connect(m_manager.get(), &EmulationManager::replyFromEmulatorReceived, this, [&](const QString &text) {
        texts.append(text);
    });
    bind();
    connectChannel();
    QTRY_COMPARE(texts.size(), 9);
    QCOMPARE(texts.mid(0, 8), QStringList(8, u"OK"_s));
    QCOMPARE(texts.at(8), u"org.example.Error boom"_s);
    QVariantMap states = allSensors(true);
    states.insert(u"compass"_s, false);
    QCOMPARE(m_manager->sensorsEnabledStates(), states);
}

void TestSensorsEmulationManager::firstConnection()
{
    bind();
    connectChannel();
    const QStringList expected = queryFrames() + defaultRestoreFrames;
    QTRY_COMPARE(m_log->invoker().frames().size(), expected.size());
    QCOMPARE(m_log->invoker().frames(), expected);
}

void TestSensorsEmulationManager::firstConnectionQueriesWhatIsInTheMapByThen()
{
    m_manager->setSensorEnabled(u"barometer"_s, true);
    bind();
    connectChannel();
    QStringList names = sortedSensorNames;
    names.insert(2, u"barometer"_s);
    const QStringList expected = queryFrames(names) + defaultRestoreFrames;
    QTRY_COMPARE(m_log->invoker().frames().size(), expected.size());
    QCOMPARE(m_log->invoker().frames(), expected);
}

void TestSensorsEmulationManager::firstConnectionRestoresStoredValues()
{
    m_ide->writeFile("[emulationmanagement]\n"
                     "accelerometer_x=1\n"
                     "accelerometer_y=-2\n"
                     "accelerometer_z=3\n"
                     "als=2500\n"
                     "gyroscope_x=0.125\n"
                     "gyroscope_y=nan\n"
                     "gyroscope_z=100000.5\n"
                     "magnetic_field_x=1.5\n"
                     "magnetic_field_y=2.5\n"
                     "magnetic_field_z=3.5\n"
                     "magnetometer_x=1e-07\n"
                     "magnetometer_y=text\n"
                     "magnetometer_z=6.5e-05\n"
                     "magnetometer_calib_level=3\n"
                     "proximity_reflectance=10\n"
                     "tap=8\n");
    QCOMPARE(m_manager->als()->lux(), 100);
    bind();
    connectChannel();
    const QStringList expected = queryFrames()
        + QStringList{
            address + u"setAccelerometerValues int32:1 int32:-2 int32:3"_s,
            address + u"setMagnetometerValues double:1e-07 double:0 double:6.5e-05"_s,
            address + u"setMagnetometerCalibrationLevel int32:3"_s,
            address + u"setGyroscopeValues double:0.125 double:0 double:100001"_s,
            address + u"setAlsValue int32:2500"_s,
            address + u"setProximitySensorValue int32:10"_s,
            address + u"setTapSensorValue int32:8"_s,
        };
    QTRY_COMPARE(m_log->invoker().frames().size(), expected.size());
    QCOMPARE(m_log->invoker().frames(), expected);
    QCOMPARE(m_manager->magneticField()->x(), 1.5);
    QCOMPARE(m_manager->magneticField()->y(), 2.5);
    QCOMPARE(m_manager->magneticField()->z(), 3.5);
    QCOMPARE(m_manager->gyroscope()->z(), 100000.5);
    QCOMPARE(m_manager->tap()->tapDirection(), TapModel::TapDirection::Y_Neg);
}

void TestSensorsEmulationManager::laterConnectionSwitchesSensorsAsTheyWere()
{
    bind();
    connectChannel();
    m_manager->setSensorAvailable(u"gyroscope"_s, false);
    m_manager->setAlsLuxValue(7);
    Q_EMIT m_log->channel()->replyReceived(u"enabled:barometer:true::"_s);
    QTRY_VERIFY(m_log->invoker().frames().contains(address + u"disableSensor string:barometer"_s));
    m_log->invoker().takeFrames();

    m_log->invoker().dropClients();
    QStringList expected;
    QStringList names = sortedSensorNames;
    names.insert(2, u"barometer"_s);
    for (const QString &name : std::as_const(names)) {
        const bool off = name == "gyroscope"_L1 || name == "barometer"_L1;
        expected.append(address + (off ? u"disableSensor string:"_s : u"enableSensor string:"_s) + name);
    }
    expected += defaultRestoreFrames;
    expected[expected.indexOf(address + u"setAlsValue int32:100"_s)] = address + u"setAlsValue int32:7"_s;
    QTRY_COMPARE(m_log->invoker().frames().size(), expected.size());
    QCOMPARE(m_log->invoker().frames(), expected);
    QCOMPARE(m_manager->als()->lux(), 7);
    QVariantMap states = allSensors(true);
    states.insert(u"gyroscope"_s, false);
    states.insert(u"barometer"_s, false);
    QCOMPARE(m_manager->sensorsEnabledStates(), states);
    QCOMPARE(m_manager->sensorsAvailability(), states);
}

void TestSensorsEmulationManager::connectionEvents()
{
    connectChannel();
    bind();
    m_manager->setupSensors();
    const QStringList restore{
        u"setAccelerometerValues int32:0 int32:0 int32:1000"_s,
        u"accelerometer.x=0"_s,
        u"accelerometer.y=0"_s,
        u"accelerometer.z=1000"_s,
        u"compass.azimuth=270"_s,
        u"orientation.orientation=FaceUp"_s,
        u"setMagnetometerValues double:4.3e-05 double:0 double:0"_s,
        u"magnetometer.x=4.3e-05"_s,
        u"magnetometer.y=0"_s,
        u"magnetometer.z=0"_s,
        u"compass.azimuth=270"_s,
        u"magneticField.x=0"_s,
        u"magneticField.y=5.95"_s,
        u"magneticField.z=-48.76"_s,
        u"setMagnetometerCalibrationLevel int32:0"_s,
        u"magnetometer.calibrationLevel=0"_s,
        u"compass.calibrationLevel=0"_s,
        u"setGyroscopeValues double:0 double:0 double:1.14592"_s,
        u"gyroscope.x=0"_s,
        u"gyroscope.y=0"_s,
        u"gyroscope.z=1.1459155902616465"_s,
        u"setAlsValue int32:100"_s,
        u"als.lux=100"_s,
        u"setProximitySensorValue int32:5"_s,
        u"proximity.reflectance=5"_s,
        u"setTapSensorValue int32:-1"_s,
        u"tap.tapDirection=Undefined"_s,
        u"sensorsInitialized"_s,
    };
    QStringList first;
    for (const QString &name : sortedSensorNames)
        first << u"enabled string:"_s + name;
    QCOMPARE(m_log->takeEvents(), first + restore);

    m_manager->setupSensors();
    QStringList later;
    for (const QString &name : sortedSensorNames)
        later << u"sensorsEnabledStatesChanged"_s << u"enableSensor string:"_s + name
              << u"sensorsAvailabilityChanged"_s;
    QCOMPARE(m_log->takeEvents(), later + restore);
}

void TestSensorsEmulationManager::boundTwiceSetsUpTwice()
{
    bind();
    bind();
    connectChannel();
    QStringList switches;
    for (const QString &name : sortedSensorNames)
        switches.append(address + u"enableSensor string:"_s + name);
    const QStringList expected = queryFrames() + defaultRestoreFrames + switches + defaultRestoreFrames;
    QTRY_COMPARE(m_log->invoker().frames().size(), expected.size());
    QCOMPARE(m_log->invoker().frames(), expected);
}

void TestSensorsEmulationManager::availabilityIsForgottenByNobodyButMakeAllAvailable()
{
    m_manager->setSensorAvailable(u"tap"_s, false);
    m_manager->setSensorAvailable(u"barometer"_s, true);
    m_manager->setSensorEnabled(u"tap"_s, true);
    QCOMPARE(m_manager->sensorsAvailability().value(u"tap"_s), QVariant(false));
    m_manager->makeAllSensorsAvailable();
    QCOMPARE(m_manager->sensorsAvailability(), allSensors(true));
    QVariantMap states = allSensors(true);
    states.insert(u"barometer"_s, true);
    QCOMPARE(m_manager->sensorsEnabledStates(), states);
}

void TestSensorsEmulationManager::savesValuesOnDestruction()
{
    bind();
    connectChannel();
    setOtherValues(*m_manager);
    m_manager.reset();
    QCOMPARE(stored(), otherValues);
}

void TestSensorsEmulationManager::storesEachValueSoon_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QVariantMap>("expected");

    using M = SensorsEmulationManager;
    const auto row = [](const char *name, const Action &action, const QVariantMap &expected) {
        QTest::newRow(name) << action << expected;
    };
    row("accelerometer, x", [](M &m) { m.setAccelerometerX(11); }, {{u"accelerometer_x"_s, 11}});
    row("accelerometer, y", [](M &m) { m.setAccelerometerY(12); }, {{u"accelerometer_y"_s, 12}});
    row("accelerometer, z", [](M &m) { m.setAccelerometerZ(13); }, {{u"accelerometer_z"_s, 13}});
    row("light", [](M &m) { m.setAlsLightLevel(AlsModel::LightLevel::Sunny); }, {{u"als"_s, 2500}});
    row("gyroscope, x", [](M &m) { m.setGyroscopeX(1.25); }, {{u"gyroscope_x"_s, 1.25}});
    row("gyroscope, y", [](M &m) { m.setGyroscopeY(1.25); }, {{u"gyroscope_y"_s, 1.25}});
    row("gyroscope, z", [](M &m) { m.setGyroscopeZ(1.25); }, {{u"gyroscope_z"_s, 1.25}});
    row("magnetic field, x", [](M &m) { m.setMagneticFieldX(1.25); }, {{u"magnetic_field_x"_s, 1.25}});
    row("magnetic field, y", [](M &m) { m.setMagneticFieldY(1.25); }, {{u"magnetic_field_y"_s, 1.25}});
    row("magnetic field, z", [](M &m) { m.setMagneticFieldZ(1.25); }, {{u"magnetic_field_z"_s, 1.25}});
    row("magnetometer, x", [](M &m) { m.setMagnetometerX(1.25e-6); }, {{u"magnetometer_x"_s, 1.25e-6}});
    row("magnetometer, y", [](M &m) { m.setMagnetometerY(1.25e-6); }, {{u"magnetometer_y"_s, 1.25e-6}});
    row("magnetometer, z", [](M &m) { m.setMagnetometerZ(1.25e-6); }, {{u"magnetometer_z"_s, 1.25e-6}});
    row("calibration level of the compass",
        [](M &m) { m.setCompassCalibrationLevel(3); },
        {{u"magnetometer_calib_level"_s, 3}});
    row("orientation, which is the accelerometer's",
        [](M &m) { m.setOrientation(QOrientationReading::LeftUp); },
        {{u"accelerometer_x"_s, -100}, {u"accelerometer_y"_s, 0}, {u"accelerometer_z"_s, 0}});
    row("proximity", [](M &m) { m.setProximitySensorNearValue(true); }, {{u"proximity_reflectance"_s, 0}});
    row("tap", [](M &m) { m.setTapSensorValue(TapModel::TapDirection::Y_Neg); }, {{u"tap"_s, 8}});
    row("model changed by a document", [](M &m) { m.als()->setLux(77); }, {{u"als"_s, 77}});
    row("all",
        [](M &m) { m.setDefaultValues(); },
        {{u"accelerometer_x"_s, 0},
         {u"accelerometer_y"_s, 0},
         {u"accelerometer_z"_s, 1000},
         {u"als"_s, 100},
         {u"gyroscope_x"_s, 0.0},
         {u"gyroscope_y"_s, 0.0},
         {u"gyroscope_z"_s, 1.1459155902616465},
         {u"magnetometer_calib_level"_s, 0},
         {u"magnetometer_x"_s, 4.3e-05},
         {u"magnetometer_y"_s, 0.0},
         {u"magnetometer_z"_s, 0.0},
         {u"proximity_reflectance"_s, 5},
         {u"tap"_s, -1}});
}

void TestSensorsEmulationManager::storesEachValueSoon()
{
    QFETCH(Action, action);
    QFETCH(QVariantMap, expected);

    storeOtherValues();
    bind();
    connectChannel();
    action(*m_manager);
    QVariantMap all = otherValues;
    for (const auto &[key, value] : expected.asKeyValueRange())
        all.insert(u"emulationmanagement/"_s + key, value);
    const auto isOnDisk = [&] {
        const auto isWritten = [&](const QString &key) {
            return m_ide->valueOnDisk(key).toString() == all.value(key).toString();
        };
        return std::ranges::all_of(all.keys(), isWritten);
    };
    QTRY_VERIFY_WITH_TIMEOUT(isOnDisk(), 10'000);
}

// Whoever turns the phone for minutes loses no more than what came last.
void TestSensorsEmulationManager::storesWhileChangesFollowEachOther()
{
    bind();
    connectChannel();
    int x = 0;
    QTimer drag;
    connect(&drag, &QTimer::timeout, this, [&] { m_manager->setAccelerometerX(++x); });
    drag.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(m_ide->valueOnDisk(u"emulationmanagement/accelerometer_x"_s).toInt() > 0, 30'000);
}

void TestSensorsEmulationManager::storesManyStepsAtOnce()
{
    storeOtherValues();
    bind();
    connectChannel();
    QElapsedTimer timer;
    timer.start();
    quint64 version = m_ide->fileVersion();
    int writes = 0;
    const auto look = [&] {
        if (const quint64 now = m_ide->fileVersion(); std::exchange(version, now) != now)
            ++writes;
    };
    constexpr int steps = 100;
    for (int x = 1; x <= steps; ++x) {
        m_manager->setAccelerometerX(x);
        QTest::qWait(1);
        look();
    }
    const auto lastIsStored = [&] {
        look();
        return m_ide->valueOnDisk(u"emulationmanagement/accelerometer_x"_s).toInt() == steps;
    };
    QTRY_VERIFY_WITH_TIMEOUT(lastIsStored(), 10'000);
    QCOMPARE_LE(writes, 1 + timer.elapsed() / 500);
}

void TestSensorsEmulationManager::laterConnectionKeepsTheValuesInForce()
{
    bind();
    connectChannel();
    const qsizetype frames = queryFrames().size() + defaultRestoreFrames.size();
    QTRY_COMPARE(m_log->invoker().frames().size(), frames);
    setOtherValues(*m_manager);
    QTRY_COMPARE(m_log->invoker().frames().size(), frames + 7);
    m_log->invoker().takeFrames();
    connect(
        m_log->channel(),
        &RemoteDBusInvokerService::webSocketDisconnected,
        this,
        [this] { m_manager->setGyroscopeY(-6.5); }, // which does not reach the emulator
        Qt::SingleShotConnection);
    m_log->invoker().dropClients();

    const QStringList expected{
        address + u"setAccelerometerValues int32:1 int32:2 int32:3"_s,
        address + u"setMagnetometerValues double:1.5e-05 double:2.5e-05 double:3.5e-05"_s,
        address + u"setMagnetometerCalibrationLevel int32:2"_s,
        address + u"setGyroscopeValues double:5.5 double:-6.5 double:7.5"_s,
        address + u"setAlsValue int32:4"_s,
        address + u"setProximitySensorValue int32:6"_s,
        address + u"setTapSensorValue int32:6"_s,
    };
    QTRY_COMPARE(m_log->invoker().frames().size(), 8 + expected.size());
    QCOMPARE(m_log->invoker().takeFrames().sliced(8), expected);
    QVariantMap values = otherValues;
    values.insert(u"emulationmanagement/gyroscope_y"_s, -6.5);
    QCOMPARE(stored(), values);
    QCOMPARE(m_manager->magneticField()->y(), 9.5);
}

void TestSensorsEmulationManager::firstConnectionOverwritesWhatWasSetBefore()
{
    storeOtherValues();
    m_manager->setDefaultValues();
    m_manager->setMagneticFieldValues(-1, -2, -3);
    bind();
    connectChannel();
    QCOMPARE(m_manager->accelerometer()->x(), 1);
    QCOMPARE(m_manager->magneticField()->z(), 10.5);
    QCOMPARE(m_manager->tap()->tapDirection(), TapModel::TapDirection::Z_Pos);
    QCOMPARE(stored(), otherValues);
}

void TestSensorsEmulationManager::withoutAConnectionNothingStoredIsLost_data()
{
    QTest::addColumn<QVariantMap>("values");
    QTest::newRow("all values are stored") << otherValues;
    for (const QString &key : otherValues.keys())
        QTest::newRow(qPrintable(u"only %1 is stored"_s.arg(key))) << QVariantMap{{key, otherValues.value(key)}};
    QTest::newRow("one value is stored, in words") << QVariantMap{{u"emulationmanagement/als"_s, u"bright"_s}};
}

// The IDE of somebody who does not use the emulator today.
void TestSensorsEmulationManager::withoutAConnectionNothingStoredIsLost()
{
    QFETCH(QVariantMap, values);
    for (const auto &[key, value] : values.asKeyValueRange())
        m_ide->setValue(key, value);
    bind();
    m_manager->setAlsLuxValue(1);
    m_manager.reset();
    QCOMPARE(stored(), values);
}

void TestSensorsEmulationManager::withoutAConnectionNothingIsStoredBeforeTheEnd()
{
    storeOtherValues();
    SensorsEmulationManager other;
    other.setAlsLuxValue(1);
    other.setTapSensorValue(TapModel::TapDirection::X_Neg);
    // One that is connected stores its value, which was set later.
    bind();
    connectChannel();
    m_manager->setProximitySensorReflectanceValue(9);
    QTRY_COMPARE_WITH_TIMEOUT(
        m_ide->valueOnDisk(u"emulationmanagement/proximity_reflectance"_s).toString(), u"9"_s, 10'000);
    QVariantMap expected = otherValues;
    expected.insert(u"emulationmanagement/proximity_reflectance"_s, 9);
    QCOMPARE(stored(), expected);
}

void TestSensorsEmulationManager::withoutAConnectionAnEmptyStoreGetsTheValues_data()
{
    QTest::addColumn<QVariantMap>("values");
    QTest::newRow("nothing is stored") << QVariantMap();
    QTest::newRow("nothing of the sensors is stored") << QVariantMap{
        {u"emulationmanagement/do_not_show_again_reset_sensors_dialog"_s, true},
        {u"emulationmanagement/gps_latitude"_s, 55.75},
        {u"emulationmanagement/model_rotation_x"_s, 1.5},
        {u"General/OverrideLanguage"_s, u"de"_s},
    };
}

void TestSensorsEmulationManager::withoutAConnectionAnEmptyStoreGetsTheValues()
{
    QFETCH(QVariantMap, values);
    for (const auto &[key, value] : values.asKeyValueRange())
        m_ide->setValue(key, value);
    setOtherValues(*m_manager);
    QCOMPARE(stored(), values);
    m_manager.reset();
    values.insert(otherValues);
    QCOMPARE(stored(), values);
}

QTEST_GUILESS_MAIN(TestSensorsEmulationManager)

#include "tst_sensorsemulationmanager.moc"
