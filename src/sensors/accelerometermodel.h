// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/intxyzmodel.h"

namespace EmulationManagement::Internal {

// Components in thousandths of standard gravity.
class AccelerometerModel : public IntXYZModel
{
    Q_OBJECT

public:
    // The device lies flat, face up.
    static constexpr int defaultZValue = 1000;
    // m/s² in one standard gravity.
    static constexpr double gravityAccelEarth = 9.80665;

    explicit AccelerometerModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;
};

} // namespace EmulationManagement::Internal
