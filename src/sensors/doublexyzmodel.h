// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/xyzmodel.h"

namespace EmulationManagement::Internal {

class DoubleXYZModel : public XYZModel<double>
{
    Q_OBJECT
    Q_PROPERTY(double x READ x WRITE setX NOTIFY xChanged)
    Q_PROPERTY(double y READ y WRITE setY NOTIFY yChanged)
    Q_PROPERTY(double z READ z WRITE setZ NOTIFY zChanged)

public:
    using XYZModel<double>::XYZModel;

    void setX(double x) override;
    void setY(double y) override;
    void setZ(double z) override;

Q_SIGNALS:
    void xChanged();
    void yChanged();
    void zChanged();
};

} // namespace EmulationManagement::Internal
