// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/sensormodel.h"

namespace EmulationManagement::Internal {

// Ambient light.
class AlsModel : public SensorModel
{
    Q_OBJECT
    Q_PROPERTY(int lux READ lux WRITE setLux NOTIFY luxChanged)

public:
    // Each level is the number of lux that it stands for.
    enum class LightLevel {
        Undefined = -1,
        Dark = 0,
        Twilight = 10,
        Light = 80,
        Bright = 400,
        Sunny = 2500,
    };
    Q_ENUM(LightLevel)

    static constexpr int defaultLux = 100;

    explicit AlsModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;

    int lux() const;
    void setLux(int lux);

Q_SIGNALS:
    void luxChanged();

private:
    int m_lux = defaultLux;
};

} // namespace EmulationManagement::Internal
