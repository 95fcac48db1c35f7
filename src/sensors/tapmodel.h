// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/sensormodel.h"

namespace EmulationManagement::Internal {

class TapModel : public SensorModel
{
    Q_OBJECT
    Q_PROPERTY(TapDirection tapDirection READ tapDirection WRITE setTapDirection NOTIFY tapDirectionChanged)

public:
    // The numbers are the emulator's; their order is not pairwise.
    enum class TapDirection {
        Undefined = -1,
        X_Both = 0,
        Y_Both = 1,
        Z_Both = 2,
        X_Pos = 3,
        X_Neg = 4,
        Z_Neg = 5,
        Z_Pos = 6,
        Y_Pos = 7,
        Y_Neg = 8,
    };
    Q_ENUM(TapDirection)

    explicit TapModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;

    TapDirection tapDirection() const;
    void setTapDirection(TapDirection tapDirection);

Q_SIGNALS:
    void tapDirectionChanged();

private:
    TapDirection m_tapDirection = TapDirection::Undefined;
};

} // namespace EmulationManagement::Internal
