// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/intxyzmodel.h"

namespace EmulationManagement::Internal {

void IntXYZModel::setX(int x)
{
    XYZModel::setX(x);
    Q_EMIT xChanged();
}

void IntXYZModel::setY(int y)
{
    XYZModel::setY(y);
    Q_EMIT yChanged();
}

void IntXYZModel::setZ(int z)
{
    XYZModel::setZ(z);
    Q_EMIT zChanged();
}

} // namespace EmulationManagement::Internal
