// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/tapmodel.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

TapModel::TapModel(QObject *parent)
    : SensorModel(parent)
{
}

void TapModel::setDefaultValues()
{
    setTapDirection(TapDirection::Undefined);
}

QString TapModel::name() const
{
    return u"tap"_s;
}

TapModel::TapDirection TapModel::tapDirection() const
{
    return m_tapDirection;
}

void TapModel::setTapDirection(TapDirection tapDirection)
{
    m_tapDirection = tapDirection;
    Q_EMIT tapDirectionChanged();
}

} // namespace EmulationManagement::Internal
