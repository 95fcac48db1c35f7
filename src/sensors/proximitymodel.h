// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/sensormodel.h"

namespace EmulationManagement::Internal {

class ProximityModel : public SensorModel
{
    Q_OBJECT
    Q_PROPERTY(int reflectance READ reflectance WRITE setReflectance NOTIFY reflectanceChanged)

public:
    static constexpr int defaultReflectance = 5;

    explicit ProximityModel(QObject *parent);

    void setDefaultValues() override;
    QString name() const override;

    int reflectance() const;
    void setReflectance(int reflectance);

Q_SIGNALS:
    void reflectanceChanged();

private:
    int m_reflectance = defaultReflectance;
};

} // namespace EmulationManagement::Internal
