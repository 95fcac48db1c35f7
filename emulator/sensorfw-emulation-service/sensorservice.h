// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "common/emulationservice.h"

#include <QStringList>

namespace Emulator {

template<typename T>
struct Vector
{
    T x{};
    T y{};
    T z{};
};

/*!
    The emulated sensors, as the system bus sees them. Values are kept as they arrive: the acceleration in milli-g, the
    rotation in degrees a second, the magnetic field in tesla, light in lux, the proximity reflectance without a unit,
    and the tap's direction as a number, -1 for none.
*/
class SensorService : public EmulationService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "ru.kelo.SensorfwEmulationManagement")

    Q_PROPERTY(int accelerometerX READ accelerometerX)
    Q_PROPERTY(int accelerometerY READ accelerometerY)
    Q_PROPERTY(int accelerometerZ READ accelerometerZ)
    Q_PROPERTY(int als READ als)
    Q_PROPERTY(double gyroscopeX READ gyroscopeX)
    Q_PROPERTY(double gyroscopeY READ gyroscopeY)
    Q_PROPERTY(double gyroscopeZ READ gyroscopeZ)
    Q_PROPERTY(double magnetometerX READ magnetometerX)
    Q_PROPERTY(double magnetometerY READ magnetometerY)
    Q_PROPERTY(double magnetometerZ READ magnetometerZ)
    Q_PROPERTY(int magnetometerCalibrationLevel READ magnetometerCalibrationLevel)
    Q_PROPERTY(int proximity READ proximity)
    Q_PROPERTY(int tap READ tap)
    Q_PROPERTY(QStringList enabledSensors READ enabledSensors)
    Q_PROPERTY(Emulator::CallCounts calls READ calls)

public:
    static constexpr auto serviceName = "ru.kelo.SensorfwEmulationManagement";
    static constexpr auto objectPath = "/ru/kelo/SensorfwEmulationManagement";

    explicit SensorService(const QDBusConnection &connection, QObject *parent = nullptr);

    int accelerometerX() const { return m_accelerometer.x; }
    int accelerometerY() const { return m_accelerometer.y; }
    int accelerometerZ() const { return m_accelerometer.z; }
    int als() const { return m_als; }
    double gyroscopeX() const { return m_gyroscope.x; }
    double gyroscopeY() const { return m_gyroscope.y; }
    double gyroscopeZ() const { return m_gyroscope.z; }
    double magnetometerX() const { return m_magnetometer.x; }
    double magnetometerY() const { return m_magnetometer.y; }
    double magnetometerZ() const { return m_magnetometer.z; }
    int magnetometerCalibrationLevel() const { return m_magnetometerCalibrationLevel; }
    int proximity() const { return m_proximity; }
    int tap() const { return m_tap; }
    QStringList enabledSensors() const { return m_enabledSensors; }

public Q_SLOTS:
    Q_SCRIPTABLE void enableSensor(const QString &sensorName);
    Q_SCRIPTABLE void disableSensor(const QString &sensorName);
    Q_SCRIPTABLE bool enabled(const QString &sensorName);
    Q_SCRIPTABLE void setAccelerometerValues(int x, int y, int z);
    Q_SCRIPTABLE void setAccelerometerX(int x);
    Q_SCRIPTABLE void setAccelerometerY(int y);
    Q_SCRIPTABLE void setAccelerometerZ(int z);
    Q_SCRIPTABLE void setAlsValue(int lux);
    Q_SCRIPTABLE void setGyroscopeValues(double x, double y, double z);
    Q_SCRIPTABLE void setGyroscopeX(double x);
    Q_SCRIPTABLE void setGyroscopeY(double y);
    Q_SCRIPTABLE void setGyroscopeZ(double z);
    Q_SCRIPTABLE void setMagnetometerValues(double x, double y, double z);
    Q_SCRIPTABLE void setMagnetometerX(double x);
    Q_SCRIPTABLE void setMagnetometerY(double y);
    Q_SCRIPTABLE void setMagnetometerZ(double z);
    Q_SCRIPTABLE void setMagnetometerCalibrationLevel(int calibrationLevel);
    Q_SCRIPTABLE void setProximitySensorValue(int reflectance);
    Q_SCRIPTABLE void setTapSensorValue(int direction);

private:
    bool isKnown(const QString &sensorName);
    void store(int &target, int value);
    void store(double &target, double value);

    Vector<int> m_accelerometer{0, 0, 1000};
    Vector<double> m_gyroscope;
    Vector<double> m_magnetometer;
    int m_als = 0;
    int m_magnetometerCalibrationLevel = 0;
    int m_proximity = 0;
    int m_tap = -1;
    QStringList m_enabledSensors;
};

} // namespace Emulator
