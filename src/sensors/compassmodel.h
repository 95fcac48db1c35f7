// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/sensormodel.h"

namespace EmulationManagement::Internal {

// The azimuth (whole degrees, 0 to 359) follows from accelerometer and magnetometer; the manager keeps it up to date.
class CompassModel : public SensorModel
{
    Q_OBJECT
    Q_PROPERTY(int azimuth READ azimuth WRITE setAzimuth NOTIFY azimuthChanged)
    Q_PROPERTY(int calibrationLevel READ calibrationLevel WRITE setCalibrationLevel NOTIFY calibrationLevelChanged)

public:
    explicit CompassModel(QObject *parent);

    // Tilt-compensated heading in degrees. Accelerometer in thousandths of standard gravity, magnetometer in any unit;
    // 0 where there is no heading (accelerometer all zero).
    static int calculateAzimuth(int ax, int ay, int az, double mx, double my, double mz);

    void setDefaultValues() override;
    QString name() const override;

    int azimuth() const;
    void setAzimuth(int azimuth);

    int calibrationLevel() const;
    void setCalibrationLevel(int calibrationLevel);

Q_SIGNALS:
    void azimuthChanged();
    void calibrationLevelChanged();

private:
    int m_azimuth = 0;
    int m_calibrationLevel = 0;
};

} // namespace EmulationManagement::Internal
