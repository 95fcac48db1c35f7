// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/accelerometermodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

AccelerometerModel::AccelerometerModel(QObject *parent)
    : IntXYZModel(0, 0, defaultZValue, parent)
{
}

void AccelerometerModel::setDefaultValues()
{
    setValues(0, 0, defaultZValue);
}

QString AccelerometerModel::name() const
{
    return u"accelerometer"_s;
}

} // namespace EmulationManagement::Internal
