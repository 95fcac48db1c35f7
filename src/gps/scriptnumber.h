// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <cmath>

// Numbers as scripts read and round them. Logs are full of fields that are no numbers, and what becomes of those is a
// script's decision too.

namespace EmulationManagement::Internal {

/// What the script's Number() makes of a text: 0 of an empty one, not a number of one that is none.
double scriptNumber(QStringView text);

/// scriptNumber() of "0." and these digits.
double scriptFraction(QStringView digits);

/// The script's Math.round(): halves go up, also below zero.
inline double scriptRound(double value)
{
    if (!std::isfinite(value))
        return value;
    // Adding a half to the largest number below it would give 1.
    if (value < 0.5 && value >= -0.5)
        return std::copysign(0.0, value);
    return std::floor(value + 0.5);
}

/// Rounds to the decimals of a factor, such as 2 of the factor 100.
inline double roundByFactor(double value, double factor)
{
    return scriptRound(value * factor) / factor;
}

/// Rounds to a number of decimals.
double roundValue(double value, double precision);

/// The script's substring(), for texts that may be shorter.
constexpr QStringView substring(QStringView text, qsizetype begin, qsizetype end)
{
    const qsizetype from = qMin(begin, text.size());
    return text.sliced(from, qMin(end, text.size()) - from);
}

} // namespace EmulationManagement::Internal
