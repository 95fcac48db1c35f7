// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

// Numbers as scripts read and round them. Logs are full of fields that are no numbers, and what becomes of those is a
// script's decision too.

namespace EmulationManagement::Internal {

/// What the script's Number() makes of a text: 0 of an empty one, not a number of one that is none.
double scriptNumber(QStringView text);

/// scriptNumber() of "0." and these digits.
double scriptFraction(QStringView digits);

/// The script's Math.round(): halves go up, also below zero.
double scriptRound(double value);

/// Rounds to a number of decimals.
double roundValue(double value, double precision);

/// The script's substring(), for texts that may be shorter.
constexpr QStringView substring(QStringView text, qsizetype begin, qsizetype end)
{
    const qsizetype from = qMin(begin, text.size());
    return text.sliced(from, qMin(end, text.size()) - from);
}

} // namespace EmulationManagement::Internal
