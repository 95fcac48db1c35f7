// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "sensors/sensormodel.h"

namespace EmulationManagement::Internal {

// Three components. A template has no meta-object: properties and signals are declared by the classes derived from it.
template<typename T>
class XYZModel : public SensorModel
{
public:
    XYZModel(T x, T y, T z, QObject *parent)
        : SensorModel(parent)
        , m_x(x)
        , m_y(y)
        , m_z(z)
    {
    }

    T x() const { return m_x; }
    T y() const { return m_y; }
    T z() const { return m_z; }

    virtual void setX(T x) { m_x = x; }
    virtual void setY(T y) { m_y = y; }
    virtual void setZ(T z) { m_z = z; }

    void setValues(T x, T y, T z)
    {
        setX(x);
        setY(y);
        setZ(z);
    }

private:
    T m_x;
    T m_y;
    T m_z;
};

} // namespace EmulationManagement::Internal
