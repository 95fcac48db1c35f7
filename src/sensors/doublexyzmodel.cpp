// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/doublexyzmodel.h"

namespace EmulationManagement::Internal {

void DoubleXYZModel::setX(double x)
{
    XYZModel::setX(x);
    Q_EMIT xChanged();
}

void DoubleXYZModel::setY(double y)
{
    XYZModel::setY(y);
    Q_EMIT yChanged();
}

void DoubleXYZModel::setZ(double z)
{
    XYZModel::setZ(z);
    Q_EMIT zChanged();
}

} // namespace EmulationManagement::Internal
