// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>

namespace EmulationManagement::Internal {

inline constexpr double degreesPerRadian = 57.29577951308232;
inline constexpr double radiansPerDegree = 0.017453292519943295;

// Half away from zero. An angle that does not exist (the direction of a zero vector) is 0.
inline int roundedDegrees(double degrees)
{
    if (!std::isfinite(degrees))
        return 0;
    return static_cast<int>(degrees + (degrees < 0.0 ? -0.5 : 0.5));
}

} // namespace EmulationManagement::Internal
