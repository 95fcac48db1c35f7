// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/alsmodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

AlsModel::AlsModel(QObject *parent)
    : SensorModel(parent)
{
}

void AlsModel::setDefaultValues()
{
    setLux(defaultLux);
}

QString AlsModel::name() const
{
    return u"als"_s;
}

int AlsModel::lux() const
{
    return m_lux;
}

void AlsModel::setLux(int lux)
{
    m_lux = lux;
    Q_EMIT luxChanged();
}

} // namespace EmulationManagement::Internal
