// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensorservice.h"

using namespace Qt::StringLiterals;

namespace Emulator {

namespace {

// In ascending order, as the list of enabled ones is kept.
const QStringList &sensorNames()
{
    static const QStringList names{
        u"accelerometer"_s,
        u"als"_s,
        u"compass"_s,
        u"gyroscope"_s,
        u"magnetometer"_s,
        u"orientation"_s,
        u"proximity"_s,
        u"tap"_s,
    };
    return names;
}

} // namespace

SensorService::SensorService(const QDBusConnection &connection, QObject *parent)
    : EmulationService(connection, QLatin1StringView(objectPath), parent)
    , m_enabledSensors(sensorNames())
{
}

void SensorService::enableSensor(const QString &sensorName)
{
    if (!isKnown(sensorName))
        return;
    if (!m_enabledSensors.contains(sensorName)) {
        m_enabledSensors.append(sensorName);
        m_enabledSensors.sort();
    }
    done();
}

void SensorService::disableSensor(const QString &sensorName)
{
    if (!isKnown(sensorName))
        return;
    m_enabledSensors.removeAll(sensorName);
    done();
}

bool SensorService::enabled(const QString &sensorName)
{
    if (!isKnown(sensorName))
        return false;
    done();
    return m_enabledSensors.contains(sensorName);
}

void SensorService::setAccelerometerValues(int x, int y, int z)
{
    m_accelerometer = {x, y, z};
    done();
}

void SensorService::setAccelerometerX(int x)
{
    store(m_accelerometer.x, x);
}

void SensorService::setAccelerometerY(int y)
{
    store(m_accelerometer.y, y);
}

void SensorService::setAccelerometerZ(int z)
{
    store(m_accelerometer.z, z);
}

void SensorService::setAlsValue(int lux)
{
    store(m_als, lux);
}

void SensorService::setGyroscopeValues(double x, double y, double z)
{
    if (!areFinite({x, y, z}))
        return;
    m_gyroscope = {x, y, z};
    done();
}

void SensorService::setGyroscopeX(double x)
{
    store(m_gyroscope.x, x);
}

void SensorService::setGyroscopeY(double y)
{
    store(m_gyroscope.y, y);
}

void SensorService::setGyroscopeZ(double z)
{
    store(m_gyroscope.z, z);
}

void SensorService::setMagnetometerValues(double x, double y, double z)
{
    if (!areFinite({x, y, z}))
        return;
    m_magnetometer = {x, y, z};
    done();
}

void SensorService::setMagnetometerX(double x)
{
    store(m_magnetometer.x, x);
}

void SensorService::setMagnetometerY(double y)
{
    store(m_magnetometer.y, y);
}

void SensorService::setMagnetometerZ(double z)
{
    store(m_magnetometer.z, z);
}

void SensorService::setMagnetometerCalibrationLevel(int calibrationLevel)
{
    store(m_magnetometerCalibrationLevel, calibrationLevel);
}

void SensorService::setProximitySensorValue(int reflectance)
{
    store(m_proximity, reflectance);
}

void SensorService::setTapSensorValue(int direction)
{
    store(m_tap, direction);
}

bool SensorService::isKnown(const QString &sensorName)
{
    if (sensorNames().contains(sensorName))
        return true;
    fail(u"UnknownSensor"_s, u"There is no sensor \"%1\""_s.arg(sensorName.left(64)));
    return false;
}

void SensorService::store(int &target, int value)
{
    target = value;
    done();
}

void SensorService::store(double &target, double value)
{
    if (!areFinite({value}))
        return;
    target = value;
    done();
}

} // namespace Emulator
