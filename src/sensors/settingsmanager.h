// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/tapmodel.h"

#include <QObject>
#include <QString>
#include <QVariant>

namespace Utils {
class QtcSettings;
}

namespace EmulationManagement::Internal {

// What the plugin remembers between sessions, in the IDE's settings. Instances are cheap and share that one store.
//
// An absent key reads as the default of the sensor's model; a value of another type is converted as QVariant does.
// Numbers that are not finite are written and read as 0.
class SettingsManager : public QObject
{
    Q_OBJECT

public:
    static inline const QString groupName = QStringLiteral("emulationmanagement");

    static inline const QString accelerometerXKey = QStringLiteral("accelerometer_x");
    static inline const QString accelerometerYKey = QStringLiteral("accelerometer_y");
    static inline const QString accelerometerZKey = QStringLiteral("accelerometer_z");
    static inline const QString alsLuxValueKey = QStringLiteral("als");
    static inline const QString gyroscopeXKey = QStringLiteral("gyroscope_x");
    static inline const QString gyroscopeYKey = QStringLiteral("gyroscope_y");
    static inline const QString gyroscopeZKey = QStringLiteral("gyroscope_z");
    static inline const QString magneticFieldXKey = QStringLiteral("magnetic_field_x");
    static inline const QString magneticFieldYKey = QStringLiteral("magnetic_field_y");
    static inline const QString magneticFieldZKey = QStringLiteral("magnetic_field_z");
    static inline const QString magnetometerXKey = QStringLiteral("magnetometer_x");
    static inline const QString magnetometerYKey = QStringLiteral("magnetometer_y");
    static inline const QString magnetometerZKey = QStringLiteral("magnetometer_z");
    static inline const QString magnetometerCalibLevelKey = QStringLiteral("magnetometer_calib_level");
    static inline const QString proximitySensorReflectanceValueKey = QStringLiteral("proximity_reflectance");
    static inline const QString tapSensorValueKey = QStringLiteral("tap");
    static inline const QString gpsLatitudeKey = QStringLiteral("gps_latitude");
    static inline const QString gpsLongitudeKey = QStringLiteral("gps_longitude");
    static inline const QString gpsAltitudeKey = QStringLiteral("gps_altitude");
    static inline const QString modelRotationX = QStringLiteral("model_rotation_x");
    static inline const QString modelRotationY = QStringLiteral("model_rotation_y");
    static inline const QString modelRotationZ = QStringLiteral("model_rotation_z");
    static inline const QString modelPositionX = QStringLiteral("model_position_x");
    static inline const QString modelPositionY = QStringLiteral("model_position_y");
    static inline const QString modelPositionZ = QStringLiteral("model_position_z");
    static inline const QString doNotShowAgainResetSensorsDialogKey =
        QStringLiteral("do_not_show_again_reset_sensors_dialog");

    explicit SettingsManager(QObject *parent = nullptr);

    // Keys are names within the group.
    void setValue(const QString &key, const QVariant &value);
    QVariant value(const QString &key, const QVariant &defaultValue) const;

    // Whether any value of a sensor was ever saved.
    bool hasSensorsValues() const;
    // Waits until everything saved is in the file, where it outlives an IDE that is killed.
    void sync();

    Q_INVOKABLE void save3DModelRotationValues(double x, double y, double z);
    Q_INVOKABLE void save3DModelPositionValues(double x, double y, double z);
    Q_INVOKABLE void saveDoNotShowAgainResetSensorsDialog(bool doNotShowAgain);

    Q_INVOKABLE double read3DModelRotationX() const;
    Q_INVOKABLE double read3DModelRotationY() const;
    Q_INVOKABLE double read3DModelRotationZ() const;
    Q_INVOKABLE double read3DModelPositionX() const;
    Q_INVOKABLE double read3DModelPositionY() const;
    Q_INVOKABLE double read3DModelPositionZ() const;
    Q_INVOKABLE bool readDoNotShowAgainResetSensorsDialog() const;

    void saveAccelerometerValues(int x, int y, int z);
    void saveGyroscopeValues(double x, double y, double z);
    void saveMagneticFieldValues(double x, double y, double z);
    void saveMagnetometerValues(double x, double y, double z);
    void saveGpsValues(double latitude, double longitude, double altitude);

    void saveAccelerometerX(int x);
    void saveAccelerometerY(int y);
    void saveAccelerometerZ(int z);
    void saveAlsLuxValue(int lux);
    void saveGyroscopeX(double x);
    void saveGyroscopeY(double y);
    void saveGyroscopeZ(double z);
    void saveMagneticFieldX(double x);
    void saveMagneticFieldY(double y);
    void saveMagneticFieldZ(double z);
    void saveMagnetometerX(double x);
    void saveMagnetometerY(double y);
    void saveMagnetometerZ(double z);
    void saveMagnetometerCalibLevel(int calibrationLevel);
    void saveProximitySensorReflectanceValue(int reflectance);
    void saveTapSensorValue(TapModel::TapDirection tapDirection);
    void saveGpsLatitude(double latitude);
    void saveGpsLongitude(double longitude);
    void saveGpsAltitude(double altitude);
    void save3DModelRotationX(double x);
    void save3DModelRotationY(double y);
    void save3DModelRotationZ(double z);
    void save3DModelPositionX(double x);
    void save3DModelPositionY(double y);
    void save3DModelPositionZ(double z);

    int readAccelerometerX() const;
    int readAccelerometerY() const;
    int readAccelerometerZ() const;
    int readAlsLuxValue() const;
    double readGyroscopeX() const;
    double readGyroscopeY() const;
    double readGyroscopeZ() const;
    double readMagneticFieldX() const;
    double readMagneticFieldY() const;
    double readMagneticFieldZ() const;
    double readMagnetometerX() const;
    double readMagnetometerY() const;
    double readMagnetometerZ() const;
    int readMagnetometerCalibLevel() const;
    int readProximitySensorReflectanceValue() const;
    // The number of a TapModel::TapDirection, or whatever number the store holds.
    int readTapSensorValue() const;
    double readGpsLatitude() const;
    double readGpsLongitude() const;
    double readGpsAltitude() const;

private:
    void saveDouble(const QString &key, double value);
    double readDouble(const QString &key, const QVariant &defaultValue) const;

    Utils::QtcSettings *m_settings; // the IDE's
};

} // namespace EmulationManagement::Internal
