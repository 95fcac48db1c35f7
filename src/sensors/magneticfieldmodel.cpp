// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/magneticfieldmodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

MagneticFieldModel::MagneticFieldModel(QObject *parent)
    : DoubleXYZModel(0.0, defaultYValue, defaultZValue, parent)
{
}

void MagneticFieldModel::setDefaultValues()
{
    setValues(0.0, defaultYValue, defaultZValue);
}

QString MagneticFieldModel::name() const
{
    return u"magneticField"_s;
}

} // namespace EmulationManagement::Internal
