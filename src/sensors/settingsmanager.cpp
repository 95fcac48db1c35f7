// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/settingsmanager.h"

#include "remote/finitenumber.h"
#include "sensors/accelerometermodel.h"
#include "sensors/alsmodel.h"
#include "sensors/gyroscopemodel.h"
#include "sensors/magneticfieldmodel.h"
#include "sensors/magnetometermodel.h"
#include "sensors/proximitymodel.h"

#include <coreplugin/icore.h>
#include <utils/qtcsettings.h>
#include <utils/storekey.h>

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

Utils::Key fullKey(const QString &key)
{
    return Utils::keyFromString(u"%1/%2"_s.arg(SettingsManager::groupName, key));
}

} // namespace

SettingsManager::SettingsManager(QObject *parent)
    : QObject(parent)
    , m_settings(Core::ICore::settings())
{
}

void SettingsManager::setValue(const QString &key, const QVariant &value)
{
    // The file is the whole IDE's and is written anew for any change, so not for what is no change.
    if (m_settings->value(fullKey(key)) != value)
        m_settings->setValue(fullKey(key), value);
}

QVariant SettingsManager::value(const QString &key, const QVariant &defaultValue) const
{
    return m_settings->value(fullKey(key), defaultValue);
}

bool SettingsManager::hasSensorsValues() const
{
    const QStringList sensorsKeys{
        accelerometerXKey,
        accelerometerYKey,
        accelerometerZKey,
        alsLuxValueKey,
        gyroscopeXKey,
        gyroscopeYKey,
        gyroscopeZKey,
        magneticFieldXKey,
        magneticFieldYKey,
        magneticFieldZKey,
        magnetometerXKey,
        magnetometerYKey,
        magnetometerZKey,
        magnetometerCalibLevelKey,
        proximitySensorReflectanceValueKey,
        tapSensorValueKey,
    };
    return std::ranges::any_of(sensorsKeys, [this](const QString &key) { return m_settings->contains(fullKey(key)); });
}

void SettingsManager::sync()
{
    m_settings->sync();
}

void SettingsManager::saveDouble(const QString &key, double value)
{
    setValue(key, finiteOrZero(value));
}

double SettingsManager::readDouble(const QString &key, const QVariant &defaultValue) const
{
    return finiteOrZero(value(key, defaultValue).toDouble());
}

void SettingsManager::saveAccelerometerValues(int x, int y, int z)
{
    saveAccelerometerX(x);
    saveAccelerometerY(y);
    saveAccelerometerZ(z);
}

void SettingsManager::saveGyroscopeValues(double x, double y, double z)
{
    saveGyroscopeX(x);
    saveGyroscopeY(y);
    saveGyroscopeZ(z);
}

void SettingsManager::saveMagneticFieldValues(double x, double y, double z)
{
    saveMagneticFieldX(x);
    saveMagneticFieldY(y);
    saveMagneticFieldZ(z);
}

void SettingsManager::saveMagnetometerValues(double x, double y, double z)
{
    saveMagnetometerX(x);
    saveMagnetometerY(y);
    saveMagnetometerZ(z);
}

void SettingsManager::saveGpsValues(double latitude, double longitude, double altitude)
{
    saveGpsLatitude(latitude);
    saveGpsLongitude(longitude);
    saveGpsAltitude(altitude);
}

void SettingsManager::save3DModelRotationValues(double x, double y, double z)
{
    save3DModelRotationX(x);
    save3DModelRotationY(y);
    save3DModelRotationZ(z);
}

void SettingsManager::save3DModelPositionValues(double x, double y, double z)
{
    save3DModelPositionX(x);
    save3DModelPositionY(y);
    save3DModelPositionZ(z);
}

void SettingsManager::saveAccelerometerX(int x)
{
    setValue(accelerometerXKey, x);
}

int SettingsManager::readAccelerometerX() const
{
    return value(accelerometerXKey, 0).toInt();
}

void SettingsManager::saveAccelerometerY(int y)
{
    setValue(accelerometerYKey, y);
}

int SettingsManager::readAccelerometerY() const
{
    return value(accelerometerYKey, 0).toInt();
}

void SettingsManager::saveAccelerometerZ(int z)
{
    setValue(accelerometerZKey, z);
}

int SettingsManager::readAccelerometerZ() const
{
    return value(accelerometerZKey, AccelerometerModel::defaultZValue).toInt();
}

void SettingsManager::saveAlsLuxValue(int lux)
{
    setValue(alsLuxValueKey, lux);
}

int SettingsManager::readAlsLuxValue() const
{
    return value(alsLuxValueKey, AlsModel::defaultLux).toInt();
}

void SettingsManager::saveGyroscopeX(double x)
{
    saveDouble(gyroscopeXKey, x);
}

double SettingsManager::readGyroscopeX() const
{
    return readDouble(gyroscopeXKey, 0);
}

void SettingsManager::saveGyroscopeY(double y)
{
    saveDouble(gyroscopeYKey, y);
}

double SettingsManager::readGyroscopeY() const
{
    return readDouble(gyroscopeYKey, 0);
}

void SettingsManager::saveGyroscopeZ(double z)
{
    saveDouble(gyroscopeZKey, z);
}

double SettingsManager::readGyroscopeZ() const
{
    return readDouble(gyroscopeZKey, GyroscopeModel::defaultZValue);
}

void SettingsManager::saveMagneticFieldX(double x)
{
    saveDouble(magneticFieldXKey, x);
}

double SettingsManager::readMagneticFieldX() const
{
    return readDouble(magneticFieldXKey, 0);
}

void SettingsManager::saveMagneticFieldY(double y)
{
    saveDouble(magneticFieldYKey, y);
}

double SettingsManager::readMagneticFieldY() const
{
    return readDouble(magneticFieldYKey, MagneticFieldModel::defaultYValue);
}

void SettingsManager::saveMagneticFieldZ(double z)
{
    saveDouble(magneticFieldZKey, z);
}

double SettingsManager::readMagneticFieldZ() const
{
    return readDouble(magneticFieldZKey, MagneticFieldModel::defaultZValue);
}

void SettingsManager::saveMagnetometerX(double x)
{
    saveDouble(magnetometerXKey, x);
}

double SettingsManager::readMagnetometerX() const
{
    return readDouble(magnetometerXKey, MagnetometerModel::defaultXValue);
}

void SettingsManager::saveMagnetometerY(double y)
{
    saveDouble(magnetometerYKey, y);
}

double SettingsManager::readMagnetometerY() const
{
    return readDouble(magnetometerYKey, 0);
}

void SettingsManager::saveMagnetometerZ(double z)
{
    saveDouble(magnetometerZKey, z);
}

double SettingsManager::readMagnetometerZ() const
{
    return readDouble(magnetometerZKey, 0);
}

void SettingsManager::saveMagnetometerCalibLevel(int calibrationLevel)
{
    setValue(magnetometerCalibLevelKey, calibrationLevel);
}

int SettingsManager::readMagnetometerCalibLevel() const
{
    return value(magnetometerCalibLevelKey, MagnetometerModel::defaultCalibLevel).toInt();
}

void SettingsManager::saveProximitySensorReflectanceValue(int reflectance)
{
    setValue(proximitySensorReflectanceValueKey, reflectance);
}

int SettingsManager::readProximitySensorReflectanceValue() const
{
    return value(proximitySensorReflectanceValueKey, ProximityModel::defaultReflectance).toInt();
}

void SettingsManager::saveTapSensorValue(TapModel::TapDirection tapDirection)
{
    // As a number: the settings file stays readable, and free of our types.
    setValue(tapSensorValueKey, static_cast<int>(tapDirection));
}

int SettingsManager::readTapSensorValue() const
{
    return value(tapSensorValueKey, static_cast<int>(TapModel::TapDirection::Undefined)).toInt();
}

void SettingsManager::saveGpsLatitude(double latitude)
{
    saveDouble(gpsLatitudeKey, latitude);
}

double SettingsManager::readGpsLatitude() const
{
    return readDouble(gpsLatitudeKey, 0);
}

void SettingsManager::saveGpsLongitude(double longitude)
{
    saveDouble(gpsLongitudeKey, longitude);
}

double SettingsManager::readGpsLongitude() const
{
    return readDouble(gpsLongitudeKey, 0);
}

void SettingsManager::saveGpsAltitude(double altitude)
{
    saveDouble(gpsAltitudeKey, altitude);
}

double SettingsManager::readGpsAltitude() const
{
    return readDouble(gpsAltitudeKey, 0);
}

void SettingsManager::save3DModelRotationX(double x)
{
    saveDouble(modelRotationX, x);
}

double SettingsManager::read3DModelRotationX() const
{
    return readDouble(modelRotationX, 0);
}

void SettingsManager::save3DModelRotationY(double y)
{
    saveDouble(modelRotationY, y);
}

double SettingsManager::read3DModelRotationY() const
{
    return readDouble(modelRotationY, 0);
}

void SettingsManager::save3DModelRotationZ(double z)
{
    saveDouble(modelRotationZ, z);
}

double SettingsManager::read3DModelRotationZ() const
{
    return readDouble(modelRotationZ, 0);
}

void SettingsManager::save3DModelPositionX(double x)
{
    saveDouble(modelPositionX, x);
}

double SettingsManager::read3DModelPositionX() const
{
    return readDouble(modelPositionX, 0);
}

void SettingsManager::save3DModelPositionY(double y)
{
    saveDouble(modelPositionY, y);
}

double SettingsManager::read3DModelPositionY() const
{
    return readDouble(modelPositionY, 0);
}

void SettingsManager::save3DModelPositionZ(double z)
{
    saveDouble(modelPositionZ, z);
}

double SettingsManager::read3DModelPositionZ() const
{
    return readDouble(modelPositionZ, 0);
}

void SettingsManager::saveDoNotShowAgainResetSensorsDialog(bool doNotShowAgain)
{
    setValue(doNotShowAgainResetSensorsDialogKey, doNotShowAgain);
}

bool SettingsManager::readDoNotShowAgainResetSensorsDialog() const
{
    return value(doNotShowAgainResetSensorsDialogKey, false).toBool();
}

} // namespace EmulationManagement::Internal
