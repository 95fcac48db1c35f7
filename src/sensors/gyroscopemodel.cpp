// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/gyroscopemodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

GyroscopeModel::GyroscopeModel(QObject *parent)
    : DoubleXYZModel(0.0, 0.0, defaultZValue, parent)
{
}

void GyroscopeModel::setDefaultValues()
{
    setValues(0.0, 0.0, defaultZValue);
}

QString GyroscopeModel::name() const
{
    return u"gyroscope"_s;
}

} // namespace EmulationManagement::Internal
