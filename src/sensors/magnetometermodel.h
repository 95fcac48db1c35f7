// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/doublexyzmodel.h"

namespace EmulationManagement::Internal {

// Components in tesla; the calibration level is 0 (unreliable) to 3.
class MagnetometerModel : public DoubleXYZModel
{
    Q_OBJECT
    Q_PROPERTY(int calibrationLevel READ calibrationLevel WRITE setCalibrationLevel NOTIFY calibrationLevelChanged)

public:
    static constexpr double defaultXValue = 4.3e-05;
    static constexpr int defaultCalibLevel = 0;

    explicit MagnetometerModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;

    int calibrationLevel() const;
    void setCalibrationLevel(int calibrationLevel);

Q_SIGNALS:
    void calibrationLevelChanged();

private:
    int m_calibrationLevel = defaultCalibLevel;
};

} // namespace EmulationManagement::Internal
