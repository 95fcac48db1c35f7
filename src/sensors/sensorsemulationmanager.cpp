// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/sensorsemulationmanager.h"

#include "remote/dbusarguments.h"
#include "remote/finitenumber.h"
#include "sensors/degrees.h"

#include <QLoggingCategory>

#include <chrono>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace EmulationManagement::Internal {

namespace {

Q_LOGGING_CATEGORY(sensorsLog, "emulationmanagement.sensors", QtWarningMsg)

// The steps of a slider in this time are stored together. A second after the last one they are in the file.
constexpr auto storePause = 800ms;

constexpr int nearReflectance = 0;
constexpr int farReflectance = 10;

QString int32Values(int x, int y, int z)
{
    return DBusArguments::joined({DBusArguments::int32(x), DBusArguments::int32(y), DBusArguments::int32(z)});
}

QString realValues(double x, double y, double z)
{
    return DBusArguments::joined({DBusArguments::real(x), DBusArguments::real(y), DBusArguments::real(z)});
}

} // namespace

SensorsEmulationManager::SensorsEmulationManager(QObject *parent)
    : EmulationManager(parent)
    , m_accelerometer(new AccelerometerModel(this))
    , m_magnetometer(new MagnetometerModel(this))
    , m_magneticField(new MagneticFieldModel(this))
    , m_compass(new CompassModel(this))
    , m_orientation(new OrientationModel(this))
    , m_gyroscope(new GyroscopeModel(this))
    , m_als(new AlsModel(this))
    , m_proximity(new ProximityModel(this))
    , m_tap(new TapModel(this))
{
    const std::initializer_list<SensorModel *> sensors = {
        m_accelerometer, m_compass, m_orientation, m_magnetometer, m_als, m_gyroscope, m_proximity, m_tap};
    for (SensorModel *sensor : sensors) {
        m_sensorsEnabledStates.insert(sensor->name(), false);
        m_sensors.insert(sensor->name(), sensor);
    }
    initSensorsAvailability();
    storeOnChanges();
    connect(this, &EmulationManager::emulatorConnected, this, &SensorsEmulationManager::setupSensors);
}

SensorsEmulationManager::~SensorsEmulationManager()
{
    if (m_wasConnected || !m_settings.hasSensorsValues())
        saveCurrentSensorsValues();
}

QString SensorsEmulationManager::bus() const
{
    return u"system"_s;
}

QString SensorsEmulationManager::dbusService() const
{
    return u"ru.kelo.SensorfwEmulationManagement"_s;
}

QString SensorsEmulationManager::dbusObject() const
{
    return u"/ru/kelo/SensorfwEmulationManagement"_s;
}

QString SensorsEmulationManager::dbusInterface() const
{
    return u"ru.kelo.SensorfwEmulationManagement"_s;
}

void SensorsEmulationManager::processDBusMethodsReturnValues(const QList<QString> &fields)
{
    if (fields.at(0) != u"enabled")
        return;
    const QStringList arguments = fields.at(1).split(u'|', Qt::SkipEmptyParts);
    if (arguments.isEmpty()) {
        qCDebug(sensorsLog) << "A sensor's state without the sensor's name:" << fields;
        return;
    }
    const QString &sensorName = arguments.constFirst();
    const bool enabled = QVariant(fields.at(2)).toBool();
    // An unknown name is entered here, as not available.
    if (m_sensorsAvailability[sensorName].toBool()) {
        setSensorEnabled(sensorName, enabled);
        return;
    }
    disableSensor(sensorName);
    setSensorEnabled(sensorName, false);
}

AccelerometerModel *SensorsEmulationManager::accelerometer() const
{
    return m_accelerometer;
}

MagnetometerModel *SensorsEmulationManager::magnetometer() const
{
    return m_magnetometer;
}

MagneticFieldModel *SensorsEmulationManager::magneticField() const
{
    return m_magneticField;
}

CompassModel *SensorsEmulationManager::compass() const
{
    return m_compass;
}

OrientationModel *SensorsEmulationManager::orientation() const
{
    return m_orientation;
}

GyroscopeModel *SensorsEmulationManager::gyroscope() const
{
    return m_gyroscope;
}

AlsModel *SensorsEmulationManager::als() const
{
    return m_als;
}

ProximityModel *SensorsEmulationManager::proximity() const
{
    return m_proximity;
}

TapModel *SensorsEmulationManager::tap() const
{
    return m_tap;
}

QVariantMap SensorsEmulationManager::sensorsEnabledStates() const
{
    return m_sensorsEnabledStates;
}

QVariantMap SensorsEmulationManager::sensorsAvailability() const
{
    return m_sensorsAvailability;
}

void SensorsEmulationManager::enableSensor(const QString &sensorName)
{
    callDBusMethod(u"enableSensor"_s, DBusArguments::string(sensorName));
}

void SensorsEmulationManager::disableSensor(const QString &sensorName)
{
    callDBusMethod(u"disableSensor"_s, DBusArguments::string(sensorName));
}

void SensorsEmulationManager::checkSensorState(const QString &sensorName)
{
    callDBusMethod(u"enabled"_s, DBusArguments::string(sensorName));
}

void SensorsEmulationManager::setAccelerometerValues(int x, int y, int z)
{
    callDBusMethod(u"setAccelerometerValues"_s, int32Values(x, y, z));
    m_accelerometer->setValues(x, y, z);
    updateAzimuthAndOrientation();
}

void SensorsEmulationManager::setAccelerometerX(int x)
{
    callDBusMethod(u"setAccelerometerX"_s, DBusArguments::int32(x));
    m_accelerometer->setX(x);
    updateAzimuthAndOrientation();
}

void SensorsEmulationManager::setAccelerometerY(int y)
{
    callDBusMethod(u"setAccelerometerY"_s, DBusArguments::int32(y));
    m_accelerometer->setY(y);
    updateAzimuthAndOrientation();
}

void SensorsEmulationManager::setAccelerometerZ(int z)
{
    callDBusMethod(u"setAccelerometerZ"_s, DBusArguments::int32(z));
    m_accelerometer->setZ(z);
    updateAzimuthAndOrientation();
}

void SensorsEmulationManager::setAlsLuxValue(int lux)
{
    callDBusMethod(u"setAlsValue"_s, DBusArguments::int32(lux));
    m_als->setLux(lux);
}

void SensorsEmulationManager::setAlsLightLevel(AlsModel::LightLevel lightLevel)
{
    setAlsLuxValue(static_cast<int>(lightLevel));
}

void SensorsEmulationManager::setCompassAzimuth(int azimuth)
{
    // Shown for a moment only: the two calls that follow compute the azimuth anew.
    m_compass->setAzimuth(azimuth);
    setAccelerometerValues(0, 0, AccelerometerModel::defaultZValue);
    // Negated as an integer, so that an azimuth of 0 does not become a negative zero; wide enough for every int.
    const double angle = static_cast<double>(-static_cast<qint64>(azimuth)) * radiansPerDegree;
    setMagnetometerValues(
        magnetometerXYPolarRadius * std::sin(angle), magnetometerXYPolarRadius * std::cos(angle), 0.0);
}

void SensorsEmulationManager::setCompassCalibrationLevel(int calibrationLevel)
{
    m_compass->setCalibrationLevel(calibrationLevel);
    setMagnetometerCalibrationLevel(calibrationLevel);
}

void SensorsEmulationManager::setGyroscopeValues(double x, double y, double z)
{
    callDBusMethod(u"setGyroscopeValues"_s, realValues(x, y, z));
    m_gyroscope->setValues(finiteOrZero(x), finiteOrZero(y), finiteOrZero(z));
}

void SensorsEmulationManager::setGyroscopeX(double x)
{
    callDBusMethod(u"setGyroscopeX"_s, DBusArguments::real(x));
    m_gyroscope->setX(finiteOrZero(x));
}

void SensorsEmulationManager::setGyroscopeY(double y)
{
    callDBusMethod(u"setGyroscopeY"_s, DBusArguments::real(y));
    m_gyroscope->setY(finiteOrZero(y));
}

void SensorsEmulationManager::setGyroscopeZ(double z)
{
    callDBusMethod(u"setGyroscopeZ"_s, DBusArguments::real(z));
    m_gyroscope->setZ(finiteOrZero(z));
}

void SensorsEmulationManager::setMagneticFieldValues(double x, double y, double z)
{
    m_magneticField->setValues(finiteOrZero(x), finiteOrZero(y), finiteOrZero(z));
}

void SensorsEmulationManager::setMagneticFieldX(double x)
{
    m_magneticField->setX(finiteOrZero(x));
}

void SensorsEmulationManager::setMagneticFieldY(double y)
{
    m_magneticField->setY(finiteOrZero(y));
}

void SensorsEmulationManager::setMagneticFieldZ(double z)
{
    m_magneticField->setZ(finiteOrZero(z));
}

void SensorsEmulationManager::setMagnetometerValues(double x, double y, double z)
{
    callDBusMethod(u"setMagnetometerValues"_s, realValues(x, y, z));
    m_magnetometer->setValues(finiteOrZero(x), finiteOrZero(y), finiteOrZero(z));
    updateAzimuth();
}

void SensorsEmulationManager::setMagnetometerX(double x)
{
    callDBusMethod(u"setMagnetometerX"_s, DBusArguments::real(x));
    m_magnetometer->setX(finiteOrZero(x));
    updateAzimuth();
}

void SensorsEmulationManager::setMagnetometerY(double y)
{
    callDBusMethod(u"setMagnetometerY"_s, DBusArguments::real(y));
    m_magnetometer->setY(finiteOrZero(y));
    updateAzimuth();
}

void SensorsEmulationManager::setMagnetometerZ(double z)
{
    callDBusMethod(u"setMagnetometerZ"_s, DBusArguments::real(z));
    m_magnetometer->setZ(finiteOrZero(z));
    updateAzimuth();
}

void SensorsEmulationManager::setMagnetometerCalibrationLevel(int calibrationLevel)
{
    callDBusMethod(u"setMagnetometerCalibrationLevel"_s, DBusArguments::int32(calibrationLevel));
    m_magnetometer->setCalibrationLevel(calibrationLevel);
    m_compass->setCalibrationLevel(calibrationLevel);
}

void SensorsEmulationManager::setOrientation(int orientation)
{
    switch (orientation) {
    case QOrientationReading::TopUp:
        setAccelerometerValues(0, 100, 0);
        break;
    case QOrientationReading::TopDown:
        setAccelerometerValues(0, -100, 0);
        break;
    case QOrientationReading::LeftUp:
        setAccelerometerValues(-100, 0, 0);
        break;
    case QOrientationReading::RightUp:
        setAccelerometerValues(100, 0, 0);
        break;
    case QOrientationReading::FaceUp:
        setAccelerometerValues(0, 0, 300);
        break;
    case QOrientationReading::FaceDown:
        setAccelerometerValues(0, 0, -300);
        break;
    default:
        break;
    }
}

void SensorsEmulationManager::setProximitySensorReflectanceValue(int reflectance)
{
    callDBusMethod(u"setProximitySensorValue"_s, DBusArguments::int32(reflectance));
    m_proximity->setReflectance(reflectance);
}

void SensorsEmulationManager::setProximitySensorNearValue(bool near)
{
    setProximitySensorReflectanceValue(near ? nearReflectance : farReflectance);
}

void SensorsEmulationManager::setTapSensorValue(TapModel::TapDirection tapDirection)
{
    callDBusMethod(u"setTapSensorValue"_s, DBusArguments::int32(static_cast<int>(tapDirection)));
    m_tap->setTapDirection(tapDirection);
}

void SensorsEmulationManager::setSensorEnabled(const QString &sensorName, bool checkSensorState)
{
    m_sensorsEnabledStates.insert(sensorName, checkSensorState);
    Q_EMIT sensorsEnabledStatesChanged();
}

void SensorsEmulationManager::setDefaultValues()
{
    setAccelerometerValues(0, 0, AccelerometerModel::defaultZValue);
    setAlsLuxValue(AlsModel::defaultLux);
    setGyroscopeValues(0.0, 0.0, GyroscopeModel::defaultZValue);
    setMagnetometerValues(MagnetometerModel::defaultXValue, 0.0, 0.0);
    setMagnetometerCalibrationLevel(MagnetometerModel::defaultCalibLevel);
    setProximitySensorReflectanceValue(ProximityModel::defaultReflectance);
    setTapSensorValue(TapModel::TapDirection::Undefined);
}

void SensorsEmulationManager::setSensorAvailable(const QString &sensorName, bool available)
{
    m_sensorsAvailability.insert(sensorName, available);
    setSensorEnabled(sensorName, available);
    if (available)
        enableSensor(sensorName);
    else
        disableSensor(sensorName);
    Q_EMIT sensorsAvailabilityChanged();
}

void SensorsEmulationManager::makeAllSensorsAvailable()
{
    initSensorsAvailability();
    const QStringList sensorNames = m_sensorsAvailability.keys();
    for (const QString &sensorName : sensorNames) {
        enableSensor(sensorName);
        setSensorEnabled(sensorName, true);
    }
}

void SensorsEmulationManager::setupSensors()
{
    if (!m_wasConnected) {
        const QStringList sensorNames = m_sensorsEnabledStates.keys();
        for (const QString &sensorName : sensorNames)
            checkSensorState(sensorName);
        m_wasConnected = true;
    } else {
        saveCurrentSensorsValues();
        const QVariantMap availability = m_sensorsAvailability;
        for (const auto &[sensorName, available] : availability.asKeyValueRange())
            setSensorAvailable(sensorName, available.toBool());
    }
    restoreSensorsValues();
    Q_EMIT sensorsInitialized();
}

void SensorsEmulationManager::storeOnChanges()
{
    m_storeTimer.setSingleShot(true);
    m_storeTimer.setInterval(storePause);
    connect(&m_storeTimer, &QTimer::timeout, this, [this] {
        saveCurrentSensorsValues();
        m_settings.sync();
    });

    const auto storeSoon = [this] {
        if (m_wasConnected && !m_storeTimer.isActive()) // not started anew: changes may follow each other for long
            m_storeTimer.start();
    };
    const auto watch = [this, storeSoon](const auto *model, auto... changes) {
        (connect(model, changes, this, storeSoon), ...);
    };
    watch(m_accelerometer, &IntXYZModel::xChanged, &IntXYZModel::yChanged, &IntXYZModel::zChanged);
    for (const DoubleXYZModel *model :
         std::initializer_list<DoubleXYZModel *>{m_gyroscope, m_magneticField, m_magnetometer})
        watch(model, &DoubleXYZModel::xChanged, &DoubleXYZModel::yChanged, &DoubleXYZModel::zChanged);
    watch(m_magnetometer, &MagnetometerModel::calibrationLevelChanged);
    watch(m_als, &AlsModel::luxChanged);
    watch(m_proximity, &ProximityModel::reflectanceChanged);
    watch(m_tap, &TapModel::tapDirectionChanged);
}

void SensorsEmulationManager::saveCurrentSensorsValues()
{
    m_settings.saveAccelerometerValues(m_accelerometer->x(), m_accelerometer->y(), m_accelerometer->z());
    m_settings.saveAlsLuxValue(m_als->lux());
    m_settings.saveGyroscopeValues(m_gyroscope->x(), m_gyroscope->y(), m_gyroscope->z());
    m_settings.saveMagneticFieldValues(m_magneticField->x(), m_magneticField->y(), m_magneticField->z());
    m_settings.saveMagnetometerValues(m_magnetometer->x(), m_magnetometer->y(), m_magnetometer->z());
    m_settings.saveMagnetometerCalibLevel(m_magnetometer->calibrationLevel());
    m_settings.saveProximitySensorReflectanceValue(m_proximity->reflectance());
    m_settings.saveTapSensorValue(m_tap->tapDirection());
}

void SensorsEmulationManager::restoreSensorsValues()
{
    setAccelerometerValues(
        m_settings.readAccelerometerX(), m_settings.readAccelerometerY(), m_settings.readAccelerometerZ());
    setMagnetometerValues(
        m_settings.readMagnetometerX(), m_settings.readMagnetometerY(), m_settings.readMagnetometerZ());
    setMagneticFieldValues(
        m_settings.readMagneticFieldX(), m_settings.readMagneticFieldY(), m_settings.readMagneticFieldZ());
    setMagnetometerCalibrationLevel(m_settings.readMagnetometerCalibLevel());
    setGyroscopeValues(m_settings.readGyroscopeX(), m_settings.readGyroscopeY(), m_settings.readGyroscopeZ());
    setAlsLuxValue(m_settings.readAlsLuxValue());
    setProximitySensorReflectanceValue(m_settings.readProximitySensorReflectanceValue());
    setTapSensorValue(static_cast<TapModel::TapDirection>(m_settings.readTapSensorValue()));
}

void SensorsEmulationManager::initSensorsAvailability()
{
    QVariantMap availability;
    for (const SensorModel *sensor : std::as_const(m_sensors))
        availability.insert(sensor->name(), true);
    m_sensorsAvailability = availability;
    Q_EMIT sensorsAvailabilityChanged();
}

void SensorsEmulationManager::updateAzimuth()
{
    m_compass->setAzimuth(CompassModel::calculateAzimuth(
        m_accelerometer->x(),
        m_accelerometer->y(),
        m_accelerometer->z(),
        m_magnetometer->x(),
        m_magnetometer->y(),
        m_magnetometer->z()));
}

void SensorsEmulationManager::updateAzimuthAndOrientation()
{
    updateAzimuth();
    m_orientation->setOrientation(m_accelerometer->x(), m_accelerometer->y(), m_accelerometer->z());
}

} // namespace EmulationManagement::Internal
