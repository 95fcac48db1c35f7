// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/compassmodel.h"

#include "sensors/accelerometermodel.h"
#include "sensors/degrees.h"
#include "sensors/magnetometermodel.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

double toMetresPerSecondSquared(int thousandths)
{
    return thousandths * 0.001 * AccelerometerModel::gravityAccelEarth;
}

} // namespace

CompassModel::CompassModel(QObject *parent)
    : SensorModel(parent)
{
}

int CompassModel::calculateAzimuth(int ax, int ay, int az, double mx, double my, double mz)
{
    const double accelX = toMetresPerSecondSquared(ax);
    const double accelY = toMetresPerSecondSquared(ay);
    const double accelZ = toMetresPerSecondSquared(az);

    // With az = 0 the negated zero counts: it turns an upright device's roll by half a turn.
    const double roll = std::atan2(accelX, -accelZ);
    const double sinRoll = std::sin(roll);
    const double cosRoll = std::cos(roll);
    // atan of the quotient, not atan2: a pitch stays within a quarter turn.
    const double pitch = std::atan(-accelY / (accelX * sinRoll - accelZ * cosRoll));

    const double fieldX = (mx * sinRoll + mz * cosRoll) * std::sin(pitch) + my * std::cos(pitch);
    const double fieldY = mz * sinRoll - mx * cosRoll;

    return roundedDegrees(360.0 - std::atan2(fieldY, fieldX) * degreesPerRadian) % 360;
}

void CompassModel::setDefaultValues()
{
    setAzimuth(calculateAzimuth(0, 0, AccelerometerModel::defaultZValue, MagnetometerModel::defaultXValue, 0.0, 0.0));
    setCalibrationLevel(0);
}

QString CompassModel::name() const
{
    return u"compass"_s;
}

int CompassModel::azimuth() const
{
    return m_azimuth;
}

void CompassModel::setAzimuth(int azimuth)
{
    m_azimuth = azimuth;
    Q_EMIT azimuthChanged();
}

int CompassModel::calibrationLevel() const
{
    return m_calibrationLevel;
}

void CompassModel::setCalibrationLevel(int calibrationLevel)
{
    m_calibrationLevel = calibrationLevel;
    Q_EMIT calibrationLevelChanged();
}

} // namespace EmulationManagement::Internal
