// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/magnetometermodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

MagnetometerModel::MagnetometerModel(QObject *parent)
    : DoubleXYZModel(defaultXValue, 0.0, 0.0, parent)
{
}

void MagnetometerModel::setDefaultValues()
{
    setValues(defaultXValue, 0.0, 0.0);
    setCalibrationLevel(defaultCalibLevel);
}

QString MagnetometerModel::name() const
{
    return u"magnetometer"_s;
}

int MagnetometerModel::calibrationLevel() const
{
    return m_calibrationLevel;
}

void MagnetometerModel::setCalibrationLevel(int calibrationLevel)
{
    m_calibrationLevel = calibrationLevel;
    Q_EMIT calibrationLevelChanged();
}

} // namespace EmulationManagement::Internal
