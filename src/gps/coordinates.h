// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace EmulationManagement::Internal {

// How exactly coordinates are read, shown and sent.
constexpr int degreesDecimals = 7;
constexpr int metresDecimals = 2;

// As the user sees them: "." before the decimals, "," between groups of digits.
QString degreesText(double degrees);
QString metresText(double metres);

} // namespace EmulationManagement::Internal
