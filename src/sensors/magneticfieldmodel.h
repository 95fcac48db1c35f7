// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/doublexyzmodel.h"

namespace EmulationManagement::Internal {

// The field around the emulated device, in microtesla. It stays on the host: the phone model page derives magnetometer
// readings from it.
class MagneticFieldModel : public DoubleXYZModel
{
    Q_OBJECT

public:
    static constexpr double defaultYValue = 5.95;
    static constexpr double defaultZValue = -48.76;

    explicit MagneticFieldModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;
};

} // namespace EmulationManagement::Internal
