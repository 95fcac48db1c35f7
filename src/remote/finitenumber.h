// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>

namespace EmulationManagement::Internal {

// Not-a-number and the infinities have no place in a request or in the settings: they count as 0.
inline double finiteOrZero(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

} // namespace EmulationManagement::Internal
