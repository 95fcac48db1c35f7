// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/doublexyzmodel.h"

namespace EmulationManagement::Internal {

// Components in degrees per second.
class GyroscopeModel : public DoubleXYZModel
{
    Q_OBJECT

public:
    // 0.02 rad/s.
    static constexpr double defaultZValue = 1.1459155902616465;

    explicit GyroscopeModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;
};

} // namespace EmulationManagement::Internal
