// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"

#include <coreplugin/icore.h>
#include <utils/qtcsettings.h>

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace IdeTests;

/// The sensors' values and the position outlive the IDE. Each function runs in an IDE of its own, after those that the
/// list of tests names before it.
class tst_Persistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOfAnEmptyStoreAreChangedWithoutAConnection();
    void valuesWereStored();

    void valuesAreSetAndTheIdeIsKilled();
    void nothingIsConnected();
    void emulatorGetsTheValuesOfBefore();
};

namespace {

const RegisterTest<tst_Persistence> registration;

constexpr int deadline = 30'000;

QVariant stored(const QByteArray &key)
{
    return Core::ICore::settings()->value(Utils::Key("emulationmanagement/" + key));
}

template<typename... Arguments>
void set(QObject *manager, const char *method, Arguments... arguments)
{
    QVERIFY2(QMetaObject::invokeMethod(manager, method, arguments...), method);
}

/// One of every sensor, none of them a default or one of those stored before.
void setAllValues()
{
    QObject *sensors = sensorsManager();
    set(sensors, "setAccelerometerValues", -7, 8, 9);
    set(sensors, "setMagnetometerValues", 1.5e-05, -2.5e-05, 3.5e-05);
    set(sensors, "setMagneticFieldValues", 1.5, 2.5, 3.5);
    set(sensors, "setCompassCalibrationLevel", 2);
    set(sensors, "setGyroscopeValues", 0.125, -0.25, 0.5);
    set(sensors, "setAlsLuxValue", 17);
    set(sensors, "setProximitySensorReflectanceValue", 9);
    const int negativeX = 4;
    QVERIFY(QMetaObject::invokeMethod(
        sensors, "setTapSensorValue", QGenericArgument("TapModel::TapDirection", &negativeX)));
    set(contextProperty(u"gpsEmulationManager"_s).value<QObject *>(), "setPosition", 55.75, -37.5, 120.5);
}

// With the one that was set last of all, while there was no emulator.
QStringList framesOfAllValues(const QString &sensorsMethod)
{
    const QStringList sensors{
        sensorFrame(u"setAccelerometerValues"_s, u"int32:-7 int32:8 int32:9"_s),
        sensorFrame(u"setMagnetometerValues"_s, u"double:1.5e-05 double:-2.5e-05 double:3.5e-05"_s),
        sensorFrame(u"setMagnetometerCalibrationLevel"_s, u"int32:2"_s),
        sensorFrame(u"setGyroscopeValues"_s, u"double:0.125 double:-0.25 double:0.5"_s),
        sensorFrame(u"setAlsValue"_s, u"int32:1234"_s),
        sensorFrame(u"setProximitySensorValue"_s, u"int32:9"_s),
        sensorFrame(u"setTapSensorValue"_s, u"int32:4"_s),
    };
    return framesOfConnection(
        framesForAllSensors(sensorsMethod) + sensors,
        framesOfGpsSetup(u"double:55.7500000 double:-37.5000000 double:120.50"_s));
}

} // namespace

void tst_Persistence::valuesOfAnEmptyStoreAreChangedWithoutAConnection()
{
    QVERIFY(!stored("accelerometer_x").isValid());
    set(sensorsManager(), "setAccelerometerValues", -7, 8, 9);
    set(sensorsManager(), "setGyroscopeX", 0.125);
    QVERIFY(!stored("accelerometer_x").isValid()); // only the end stores them
}

void tst_Persistence::valuesWereStored()
{
    QCOMPARE(stored("accelerometer_x").toInt(), -7);
    QCOMPARE(stored("accelerometer_y").toInt(), 8);
    QCOMPARE(stored("accelerometer_z").toInt(), 9);
    QCOMPARE(stored("gyroscope_x").toDouble(), 0.125);
    QCOMPARE(stored("als").toInt(), 100);
}

// The settings of this run hold values, so that these are not those of an empty store.
void tst_Persistence::valuesAreSetAndTheIdeIsKilled()
{
    QCOMPARE(stored("accelerometer_x").toInt(), -12);
    EmulatorFixture fixture;
    QVERIFY(fixture.startServices());
    QVERIFY(fixture.startSsh());
    QVERIFY(fixture.emulator());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(fixture.frames().size(), connectionFrameCount, deadline);
    setAllValues();
    fixture.stopServices(); // what was set last is kept without an emulator, too; and who is killed ends no processes
    fixture.ssh().stop();
    set(sensorsManager(), "setAlsLuxValue", 1234);
    if (QTest::currentTestFailed())
        return;

    QEventLoop loop;
    QTimer::singleShot(2s, &loop, &QEventLoop::quit); // so much a kill may come later and lose nothing
    loop.exec();
    std::raise(SIGKILL);
}

void tst_Persistence::nothingIsConnected()
{
    QCOMPARE(stored("als").toInt(), 1234);
    QCOMPARE(
        sensorsManager()->property("als").value<QObject *>()->property("lux").toInt(), 100); // never sent, nor kept
}

void tst_Persistence::emulatorGetsTheValuesOfBefore()
{
    EmulatorFixture fixture;
    QVERIFY(fixture.startServices());
    QVERIFY(fixture.startSsh());
    QVERIFY(fixture.emulator());
    openView();
    QTRY_COMPARE_WITH_TIMEOUT(fixture.frames().size(), connectionFrameCount, deadline);
    QCOMPARE(fixture.frames(), framesOfAllValues(u"enabled"_s));
    QObject *field = sensorsManager()->property("magneticField").value<QObject *>();
    QCOMPARE(field->property("y").toDouble(), 2.5);

    // The same when it comes back.
    QVERIFY(fixture.startServices());
    QTRY_COMPARE_WITH_TIMEOUT(fixture.frames().size(), connectionFrameCount, deadline);
    QCOMPARE(fixture.frames(), framesOfAllValues(u"enableSensor"_s));
}

#include "tst_persistence.moc"
