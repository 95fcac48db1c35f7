// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/xyzmodel.h"

namespace EmulationManagement::Internal {

class IntXYZModel : public XYZModel<int>
{
    Q_OBJECT
    Q_PROPERTY(int x READ x WRITE setX NOTIFY xChanged)
    Q_PROPERTY(int y READ y WRITE setY NOTIFY yChanged)
    Q_PROPERTY(int z READ z WRITE setZ NOTIFY zChanged)

public:
    using XYZModel<int>::XYZModel;

    void setX(int x) override;
    void setY(int y) override;
    void setZ(int z) override;

Q_SIGNALS:
    void xChanged();
    void yChanged();
    void zChanged();
};

} // namespace EmulationManagement::Internal
