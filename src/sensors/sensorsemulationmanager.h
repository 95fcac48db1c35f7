// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "remote/emulationmanager.h"
#include "sensors/accelerometermodel.h"
#include "sensors/alsmodel.h"
#include "sensors/compassmodel.h"
#include "sensors/gyroscopemodel.h"
#include "sensors/magneticfieldmodel.h"
#include "sensors/magnetometermodel.h"
#include "sensors/orientationmodel.h"
#include "sensors/proximitymodel.h"
#include "sensors/settingsmanager.h"
#include "sensors/tapmodel.h"

#include <QHash>
#include <QTimer>
#include <QVariantMap>

namespace EmulationManagement::Internal {

// Drives the emulated sensors: each setter sends the value to the service in the emulator, then shows it in the model,
// then updates what is derived from it. Nothing waits for a reply and nothing is clamped; the pages keep to the ranges.
//
// The values are restored from the settings on each connection. From the first one on they are stored whenever they
// have changed, so that a later one brings back those in force. A manager that was never connected has no values of the
// user's: it leaves what is stored as it is.
class SensorsEmulationManager : public EmulationManager
{
    Q_OBJECT
    Q_PROPERTY(AccelerometerModel *accelerometer READ accelerometer CONSTANT)
    Q_PROPERTY(MagnetometerModel *magnetometer READ magnetometer CONSTANT)
    Q_PROPERTY(MagneticFieldModel *magneticField READ magneticField CONSTANT)
    Q_PROPERTY(CompassModel *compass READ compass CONSTANT)
    Q_PROPERTY(OrientationModel *orientation READ orientation CONSTANT)
    Q_PROPERTY(GyroscopeModel *gyroscope READ gyroscope CONSTANT)
    Q_PROPERTY(AlsModel *als READ als CONSTANT)
    Q_PROPERTY(ProximityModel *proximity READ proximity CONSTANT)
    Q_PROPERTY(TapModel *tap READ tap CONSTANT)
    Q_PROPERTY(QVariantMap sensorsEnabledStates READ sensorsEnabledStates NOTIFY sensorsEnabledStatesChanged)
    Q_PROPERTY(QVariantMap sensorsAvailability READ sensorsAvailability NOTIFY sensorsAvailabilityChanged)

public:
    // Length (tesla) of the horizontal field that setCompassAzimuth makes.
    static constexpr double magnetometerXYPolarRadius = 4.358898943540674e-05;

    explicit SensorsEmulationManager(QObject *parent = nullptr);
    ~SensorsEmulationManager() override;

    QString bus() const override;
    QString dbusService() const override;
    QString dbusObject() const override;
    QString dbusInterface() const override;
    // Records the answer to a query of a sensor's state, and switches off a sensor that is not available.
    void processDBusMethodsReturnValues(const QList<QString> &fields) override;

    // Owned by the manager.
    AccelerometerModel *accelerometer() const;
    MagnetometerModel *magnetometer() const;
    MagneticFieldModel *magneticField() const;
    CompassModel *compass() const;
    OrientationModel *orientation() const;
    GyroscopeModel *gyroscope() const;
    AlsModel *als() const;
    ProximityModel *proximity() const;
    TapModel *tap() const;

    // Sensor name to bool: what the service reports, or was last told.
    QVariantMap sensorsEnabledStates() const;
    // Sensor name to bool: what the emulated device has.
    QVariantMap sensorsAvailability() const;

    Q_INVOKABLE void enableSensor(const QString &sensorName);
    Q_INVOKABLE void disableSensor(const QString &sensorName);
    // Thousandths of standard gravity.
    Q_INVOKABLE void setAccelerometerValues(int x, int y, int z);
    Q_INVOKABLE void setAccelerometerX(int x);
    Q_INVOKABLE void setAccelerometerY(int y);
    Q_INVOKABLE void setAccelerometerZ(int z);
    Q_INVOKABLE void setAlsLuxValue(int lux);
    Q_INVOKABLE void setAlsLightLevel(AlsModel::LightLevel lightLevel);
    // Whole degrees. Lays the device flat and turns the field.
    Q_INVOKABLE void setCompassAzimuth(int azimuth);
    Q_INVOKABLE void setCompassCalibrationLevel(int calibrationLevel);
    // Degrees per second.
    Q_INVOKABLE void setGyroscopeValues(double x, double y, double z);
    Q_INVOKABLE void setGyroscopeX(double x);
    Q_INVOKABLE void setGyroscopeY(double y);
    Q_INVOKABLE void setGyroscopeZ(double z);
    // Microtesla; stays on the host.
    Q_INVOKABLE void setMagneticFieldValues(double x, double y, double z);
    Q_INVOKABLE void setMagneticFieldX(double x);
    Q_INVOKABLE void setMagneticFieldY(double y);
    Q_INVOKABLE void setMagneticFieldZ(double z);
    // Tesla.
    Q_INVOKABLE void setMagnetometerValues(double x, double y, double z);
    Q_INVOKABLE void setMagnetometerX(double x);
    Q_INVOKABLE void setMagnetometerY(double y);
    Q_INVOKABLE void setMagnetometerZ(double z);
    Q_INVOKABLE void setMagnetometerCalibrationLevel(int calibrationLevel);
    // A QOrientationReading::Orientation from TopUp to FaceDown; others do nothing.
    Q_INVOKABLE void setOrientation(int orientation);
    Q_INVOKABLE void setProximitySensorReflectanceValue(int reflectance);
    Q_INVOKABLE void setProximitySensorNearValue(bool near);
    Q_INVOKABLE void setTapSensorValue(TapModel::TapDirection tapDirection);
    // Only records the state, whatever the parameter's name says.
    Q_INVOKABLE void setSensorEnabled(const QString &sensorName, bool checkSensorState);
    // All sensors but the magnetic field.
    Q_INVOKABLE void setDefaultValues();

    void setSensorAvailable(const QString &sensorName, bool available);
    void makeAllSensorsAvailable();

    // Runs on each connection: the first one asks for the sensors' states, later ones switch those on that the emulated
    // device has.
    void setupSensors();

Q_SIGNALS:
    void sensorsEnabledStatesChanged();
    void sensorsInitialized();
    void sensorsAvailabilityChanged();

private:
    void storeOnChanges();
    void saveCurrentSensorsValues();
    void restoreSensorsValues();
    void initSensorsAvailability();
    void checkSensorState(const QString &sensorName);

    void updateAzimuth();
    void updateAzimuthAndOrientation();

    AccelerometerModel *m_accelerometer;
    MagnetometerModel *m_magnetometer;
    MagneticFieldModel *m_magneticField;
    CompassModel *m_compass;
    OrientationModel *m_orientation;
    GyroscopeModel *m_gyroscope;
    AlsModel *m_als;
    ProximityModel *m_proximity;
    TapModel *m_tap;
    QVariantMap m_sensorsEnabledStates;
    QHash<QString, SensorModel *> m_sensors; // those that the service knows
    SettingsManager m_settings;
    QVariantMap m_sensorsAvailability;
    bool m_wasConnected = false;
    QTimer m_storeTimer; // runs while a change is not stored yet
};

} // namespace EmulationManagement::Internal
