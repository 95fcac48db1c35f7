// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/proximitymodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

ProximityModel::ProximityModel(QObject *parent)
    : SensorModel(parent)
{
}

void ProximityModel::setDefaultValues()
{
    setReflectance(defaultReflectance);
}

QString ProximityModel::name() const
{
    return u"proximity"_s;
}

int ProximityModel::reflectance() const
{
    return m_reflectance;
}

void ProximityModel::setReflectance(int reflectance)
{
    m_reflectance = reflectance;
    Q_EMIT reflectanceChanged();
}

} // namespace EmulationManagement::Internal
