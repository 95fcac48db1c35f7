// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/settingsmanager.h"

#include "utils/idesettings.h"

#include <QMetaMethod>
#include <QTest>

#include <functional>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;

namespace {

// One remembered value: its constant and key, its default, and the two operations.
struct Value
{
    QString constant;
    QString key;
    QVariant defaultValue;
    std::function<void(SettingsManager &, const QVariant &)> save;
    std::function<QVariant(const SettingsManager &)> read;
};

template<typename T>
Value value(
    const QString &constant,
    const QString &key,
    T defaultValue,
    void (SettingsManager::*save)(T),
    T (SettingsManager::*read)() const)
{
    return {
        constant,
        key,
        defaultValue,
        [save](SettingsManager &settings, const QVariant &value) { (settings.*save)(value.value<T>()); },
        [read](const SettingsManager &settings) { return QVariant((settings.*read)()); },
    };
}

Value tapDirection()
{
    return {
        SettingsManager::tapSensorValueKey,
        u"tap"_s,
        -1,
        [](SettingsManager &settings, const QVariant &value) {
            settings.saveTapSensorValue(static_cast<TapModel::TapDirection>(value.toInt()));
        },
        [](const SettingsManager &settings) { return QVariant(settings.readTapSensorValue()); },
    };
}

QList<Value> allValues()
{
    using S = SettingsManager;
    return {
        value<int>(S::accelerometerXKey, u"accelerometer_x"_s, 0, &S::saveAccelerometerX, &S::readAccelerometerX),
        value<int>(S::accelerometerYKey, u"accelerometer_y"_s, 0, &S::saveAccelerometerY, &S::readAccelerometerY),
        value<int>(S::accelerometerZKey, u"accelerometer_z"_s, 1000, &S::saveAccelerometerZ, &S::readAccelerometerZ),
        value<int>(S::alsLuxValueKey, u"als"_s, 100, &S::saveAlsLuxValue, &S::readAlsLuxValue),
        value<double>(S::gyroscopeXKey, u"gyroscope_x"_s, 0.0, &S::saveGyroscopeX, &S::readGyroscopeX),
        value<double>(S::gyroscopeYKey, u"gyroscope_y"_s, 0.0, &S::saveGyroscopeY, &S::readGyroscopeY),
        value<double>(S::gyroscopeZKey, u"gyroscope_z"_s, 1.1459155902616465, &S::saveGyroscopeZ, &S::readGyroscopeZ),
        value<double>(S::magneticFieldXKey, u"magnetic_field_x"_s, 0.0, &S::saveMagneticFieldX, &S::readMagneticFieldX),
        value<double>(
            S::magneticFieldYKey, u"magnetic_field_y"_s, 5.95, &S::saveMagneticFieldY, &S::readMagneticFieldY),
        value<double>(
            S::magneticFieldZKey, u"magnetic_field_z"_s, -48.76, &S::saveMagneticFieldZ, &S::readMagneticFieldZ),
        value<double>(S::magnetometerXKey, u"magnetometer_x"_s, 4.3e-05, &S::saveMagnetometerX, &S::readMagnetometerX),
        value<double>(S::magnetometerYKey, u"magnetometer_y"_s, 0.0, &S::saveMagnetometerY, &S::readMagnetometerY),
        value<double>(S::magnetometerZKey, u"magnetometer_z"_s, 0.0, &S::saveMagnetometerZ, &S::readMagnetometerZ),
        value<int>(
            S::magnetometerCalibLevelKey,
            u"magnetometer_calib_level"_s,
            0,
            &S::saveMagnetometerCalibLevel,
            &S::readMagnetometerCalibLevel),
        value<int>(
            S::proximitySensorReflectanceValueKey,
            u"proximity_reflectance"_s,
            5,
            &S::saveProximitySensorReflectanceValue,
            &S::readProximitySensorReflectanceValue),
        tapDirection(),
        value<double>(S::gpsLatitudeKey, u"gps_latitude"_s, 0.0, &S::saveGpsLatitude, &S::readGpsLatitude),
        value<double>(S::gpsLongitudeKey, u"gps_longitude"_s, 0.0, &S::saveGpsLongitude, &S::readGpsLongitude),
        value<double>(S::gpsAltitudeKey, u"gps_altitude"_s, 0.0, &S::saveGpsAltitude, &S::readGpsAltitude),
        value<double>(
            S::modelRotationX, u"model_rotation_x"_s, 0.0, &S::save3DModelRotationX, &S::read3DModelRotationX),
        value<double>(
            S::modelRotationY, u"model_rotation_y"_s, 0.0, &S::save3DModelRotationY, &S::read3DModelRotationY),
        value<double>(
            S::modelRotationZ, u"model_rotation_z"_s, 0.0, &S::save3DModelRotationZ, &S::read3DModelRotationZ),
        value<double>(
            S::modelPositionX, u"model_position_x"_s, 0.0, &S::save3DModelPositionX, &S::read3DModelPositionX),
        value<double>(
            S::modelPositionY, u"model_position_y"_s, 0.0, &S::save3DModelPositionY, &S::read3DModelPositionY),
        value<double>(
            S::modelPositionZ, u"model_position_z"_s, 0.0, &S::save3DModelPositionZ, &S::read3DModelPositionZ),
        value<bool>(
            S::doNotShowAgainResetSensorsDialogKey,
            u"do_not_show_again_reset_sensors_dialog"_s,
            false,
            &S::saveDoNotShowAgainResetSensorsDialog,
            &S::readDoNotShowAgainResetSensorsDialog),
    };
}

// A value of the type that is not the default.
QVariant anotherValue(const Value &value)
{
    switch (value.defaultValue.typeId()) {
    case QMetaType::Bool:
        return true;
    case QMetaType::Int:
        return 7;
    default:
        return -12.345678901234567;
    }
}

QString fullKey(const QString &key)
{
    return u"emulationmanagement/"_s + key;
}

} // namespace

Q_DECLARE_METATYPE(Value)

class TestSettingsManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void returnsTheDefaultOfAnAbsentKey_data();
    void returnsTheDefaultOfAnAbsentKey();
    void keepsAValueUnderItsKey_data();
    void keepsAValueUnderItsKey();
    void convertsValuesOfOtherTypes_data();
    void convertsValuesOfOtherTypes();
    void takesNumbersThatAreNoneAsZero_data();
    void takesNumbersThatAreNoneAsZero();
    void savesThreeAtOnce();
    void readsWhatAUserWrote();
    void sharesOneStore();
    void qualifiesKeysWithTheGroup();
    void writesNothingWhenReading();
    void writesOnlyChanges();
    void knowsWhetherSensorsHaveValues_data();
    void knowsWhetherSensorsHaveValues();
    void showsQmlWhatPagesNeed();

private:
    void addRowForEachValue();

    std::unique_ptr<IdeSettings> m_ide;
};

void TestSettingsManager::initTestCase()
{
    m_ide = std::make_unique<IdeSettings>();
}

void TestSettingsManager::init()
{
    m_ide->clear();
}

void TestSettingsManager::addRowForEachValue()
{
    QTest::addColumn<Value>("value");
    const QList<Value> values = allValues();
    for (const Value &value : values)
        QTest::newRow(qPrintable(value.key)) << value;
    QCOMPARE(values.size(), 26);
}

void TestSettingsManager::returnsTheDefaultOfAnAbsentKey_data()
{
    addRowForEachValue();
}

void TestSettingsManager::returnsTheDefaultOfAnAbsentKey()
{
    QFETCH(Value, value);
    QCOMPARE(value.constant, value.key);
    QCOMPARE(value.read(SettingsManager()), value.defaultValue);
}

void TestSettingsManager::keepsAValueUnderItsKey_data()
{
    addRowForEachValue();
}

void TestSettingsManager::keepsAValueUnderItsKey()
{
    QFETCH(Value, value);
    SettingsManager settings;
    const QVariant saved = anotherValue(value);
    value.save(settings, saved);
    QCOMPARE(m_ide->keys(), QStringList(fullKey(value.key)));
    QCOMPARE(m_ide->value(fullKey(value.key)), saved);
    QCOMPARE(m_ide->value(fullKey(value.key)).typeId(), value.defaultValue.typeId());
    QCOMPARE(value.read(settings), saved);
    // A file knows texts only; no binary blob of a type of ours may stand there.
    QCOMPARE(m_ide->valueInFile(fullKey(value.key)).toString(), saved.toString());
}

void TestSettingsManager::convertsValuesOfOtherTypes_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("asInt");
    QTest::addColumn<double>("asDouble");
    QTest::addColumn<bool>("asBool");
    QTest::newRow("a number as text") << QVariant(u"12"_s) << 12 << 12.0 << true;
    QTest::newRow("a fraction as text is no int") << QVariant(u"2.5"_s) << 0 << 2.5 << true;
    QTest::newRow("a text that is no number") << QVariant(u"abc"_s) << 0 << 0.0 << true;
    QTest::newRow("a number with a comma") << QVariant(u"1,5"_s) << 0 << 0.0 << true;
    QTest::newRow("an empty text") << QVariant(u""_s) << 0 << 0.0 << false;
    QTest::newRow("the text false") << QVariant(u"FALSE"_s) << 0 << 0.0 << false;
    QTest::newRow("a double") << QVariant(2.5) << 3 << 2.5 << true;
    QTest::newRow("a bool") << QVariant(true) << 1 << 1.0 << true;
    QTest::newRow("a list") << QVariant(QVariantList{1, 2}) << 0 << 0.0 << false;
    QTest::newRow("bytes") << QVariant(QByteArray("3")) << 3 << 3.0 << true;
}

void TestSettingsManager::convertsValuesOfOtherTypes()
{
    QFETCH(QVariant, stored);
    QFETCH(int, asInt);
    QFETCH(double, asDouble);
    QFETCH(bool, asBool);
    const SettingsManager settings;
    const QList<Value> values = allValues();
    for (const Value &value : values) {
        m_ide->setValue(fullKey(value.key), stored);
        QVariant expected = asDouble;
        if (value.defaultValue.typeId() == QMetaType::Int)
            expected = asInt;
        else if (value.defaultValue.typeId() == QMetaType::Bool)
            expected = asBool;
        QCOMPARE(value.read(settings), expected);
    }
}

void TestSettingsManager::takesNumbersThatAreNoneAsZero_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << u"nan"_s;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << u"inf"_s;
    QTest::newRow("negative infinity") << -std::numeric_limits<double>::infinity() << u"-inf"_s;
}

void TestSettingsManager::takesNumbersThatAreNoneAsZero()
{
    QFETCH(double, number);
    QFETCH(QString, text);
    SettingsManager settings;
    const QList<Value> values = allValues();
    for (const Value &value : values) {
        if (value.defaultValue.typeId() != QMetaType::Double)
            continue;
        value.save(settings, number);
        QCOMPARE(m_ide->value(fullKey(value.key)), QVariant(0.0));
        m_ide->setValue(fullKey(value.key), text);
        QCOMPARE(value.read(settings), QVariant(0.0));
    }
}

void TestSettingsManager::savesThreeAtOnce()
{
    SettingsManager settings;
    settings.saveAccelerometerValues(1, 2, 3);
    settings.saveGyroscopeValues(1.5, 2.5, 3.5);
    settings.saveMagneticFieldValues(4.5, 5.5, 6.5);
    settings.saveMagnetometerValues(7.5, 8.5, 9.5);
    settings.saveGpsValues(10.5, 11.5, 12.5);
    settings.save3DModelRotationValues(13.5, 14.5, 15.5);
    settings.save3DModelPositionValues(16.5, 17.5, 18.5);

    const QList<std::pair<QString, QVariant>> expected{
        {u"accelerometer_x"_s, 1},     {u"accelerometer_y"_s, 2},     {u"accelerometer_z"_s, 3},
        {u"gyroscope_x"_s, 1.5},       {u"gyroscope_y"_s, 2.5},       {u"gyroscope_z"_s, 3.5},
        {u"magnetic_field_x"_s, 4.5},  {u"magnetic_field_y"_s, 5.5},  {u"magnetic_field_z"_s, 6.5},
        {u"magnetometer_x"_s, 7.5},    {u"magnetometer_y"_s, 8.5},    {u"magnetometer_z"_s, 9.5},
        {u"gps_latitude"_s, 10.5},     {u"gps_longitude"_s, 11.5},    {u"gps_altitude"_s, 12.5},
        {u"model_rotation_x"_s, 13.5}, {u"model_rotation_y"_s, 14.5}, {u"model_rotation_z"_s, 15.5},
        {u"model_position_x"_s, 16.5}, {u"model_position_y"_s, 17.5}, {u"model_position_z"_s, 18.5},
    };
    QCOMPARE(m_ide->keys().size(), expected.size());
    for (const auto &[key, value] : expected)
        QCOMPARE(m_ide->value(fullKey(key)), value);
}

void TestSettingsManager::readsWhatAUserWrote()
{
    m_ide->writeFile("[emulationmanagement]\n"
                     "accelerometer_z=-7\n"
                     "tap=99\n"
                     "als=bright\n"
                     "gyroscope_x=1e400\n"
                     "magnetometer_x=nan\n"
                     "gps_latitude=55.75\n"
                     "do_not_show_again_reset_sensors_dialog=true\n");
    const SettingsManager settings;
    QCOMPARE(settings.readAccelerometerZ(), -7);
    QCOMPARE(settings.readTapSensorValue(), 99);
    QCOMPARE(settings.readAlsLuxValue(), 0);
    QCOMPARE(settings.readGyroscopeX(), 0.0);
    QCOMPARE(settings.readMagnetometerX(), 0.0);
    QCOMPARE(settings.readGpsLatitude(), 55.75);
    QCOMPARE(settings.readDoNotShowAgainResetSensorsDialog(), true);
    QCOMPARE(settings.readProximitySensorReflectanceValue(), 5);
}

void TestSettingsManager::sharesOneStore()
{
    SettingsManager first;
    SettingsManager second;
    first.saveAccelerometerX(1);
    QCOMPARE(second.readAccelerometerX(), 1);
    second.saveAccelerometerX(2);
    QCOMPARE(first.readAccelerometerX(), 2);
}

void TestSettingsManager::qualifiesKeysWithTheGroup()
{
    QCOMPARE(SettingsManager::groupName, u"emulationmanagement"_s);
    SettingsManager settings;
    settings.setValue(u"some_key"_s, u"text"_s);
    QCOMPARE(m_ide->value(u"emulationmanagement/some_key"_s), QVariant(u"text"_s));
    QCOMPARE(settings.value(u"some_key"_s, 1), QVariant(u"text"_s));
    QCOMPARE(settings.value(u"another_key"_s, 1), QVariant(1));
}

void TestSettingsManager::writesNothingWhenReading()
{
    const SettingsManager settings;
    const QList<Value> values = allValues();
    for (const Value &value : values)
        value.read(settings);
    QCOMPARE(m_ide->keys(), QStringList());
}

// The file is the whole IDE's.
void TestSettingsManager::writesOnlyChanges()
{
    SettingsManager settings;
    settings.saveGyroscopeX(0.1);
    settings.saveAccelerometerX(0);
    settings.sync();
    QCOMPARE(m_ide->valueOnDisk(fullKey(u"gyroscope_x"_s)).toDouble(), 0.1);
    QCOMPARE(m_ide->valueOnDisk(fullKey(u"accelerometer_x"_s)), QVariant(u"0"_s)); // the default, and yet saved
    const quint64 version = m_ide->fileVersion();
    settings.saveGyroscopeX(0.1);
    settings.saveAccelerometerX(0);
    settings.sync();
    QCOMPARE(m_ide->fileVersion(), version);
    settings.saveGyroscopeX(0.1 + 1e-16);
    settings.sync();
    QCOMPARE_NE(m_ide->fileVersion(), version);
    QCOMPARE(m_ide->valueOnDisk(fullKey(u"gyroscope_x"_s)).toDouble(), 0.1 + 1e-16);
}

void TestSettingsManager::knowsWhetherSensorsHaveValues_data()
{
    addRowForEachValue();
}

void TestSettingsManager::knowsWhetherSensorsHaveValues()
{
    QFETCH(Value, value);
    SettingsManager settings;
    QVERIFY(!settings.hasSensorsValues());
    value.save(settings, value.defaultValue);
    const bool isOfASensor =
        !value.key.startsWith("gps_"_L1) && !value.key.startsWith("model_"_L1) && !value.key.startsWith("do_not_"_L1);
    QCOMPARE(settings.hasSensorsValues(), isOfASensor);
}

void TestSettingsManager::showsQmlWhatPagesNeed()
{
    const QMetaObject &metaObject = SettingsManager::staticMetaObject;
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        methods.append(QString::fromLatin1(metaObject.method(i).methodSignature()));
    QCOMPARE(
        methods,
        QStringList(
            {u"save3DModelRotationValues(double,double,double)"_s,
             u"save3DModelPositionValues(double,double,double)"_s,
             u"saveDoNotShowAgainResetSensorsDialog(bool)"_s,
             u"read3DModelRotationX()"_s,
             u"read3DModelRotationY()"_s,
             u"read3DModelRotationZ()"_s,
             u"read3DModelPositionX()"_s,
             u"read3DModelPositionY()"_s,
             u"read3DModelPositionZ()"_s,
             u"readDoNotShowAgainResetSensorsDialog()"_s}));
}

QTEST_GUILESS_MAIN(TestSettingsManager)

#include "tst_settingsmanager.moc"
