// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/scriptnumber.h"

#include <QJSValue>

#include <array>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

// Up to here both a decimal's digits and its power of ten are exact, so that one division gives the nearest number.
constexpr int exactDigits = 15;
constexpr std::array powersOfTen{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
static_assert(powersOfTen.size() == exactDigits + 1);

// The engine takes nothing longer for a number.
constexpr qsizetype longestNumber = 16 * 1024;

// Texts such as 12 and 4807.038, which nearly all fields are.
std::optional<double> plainDecimal(QStringView text)
{
    qint64 digits = 0;
    qsizetype count = 0;
    qsizetype decimals = -1; // none as yet
    for (const QChar character : text) {
        const char16_t c = character.unicode();
        if (c >= u'0' && c <= u'9') {
            if (++count > exactDigits)
                return {};
            digits = digits * 10 + (c - u'0');
            if (decimals >= 0)
                ++decimals;
        } else if (c == u'.' && count > 0 && decimals < 0) {
            decimals = 0;
        } else {
            return {};
        }
    }
    if (count == 0 || decimals == 0)
        return {};
    return decimals < 0 ? double(digits) : double(digits) / powersOfTen.at(size_t(decimals));
}

// The engine itself knows best about blanks, signs, exponents and other bases.
double engineNumber(const QString &text)
{
    return QJSValue(text).toNumber();
}

} // namespace

double scriptNumber(QStringView text)
{
    if (const std::optional<double> number = plainDecimal(text))
        return *number;
    return text.size() > longestNumber ? std::numeric_limits<double>::quiet_NaN() : engineNumber(text.toString());
}

double scriptFraction(QStringView digits)
{
    if (digits.isEmpty())
        return 0;
    if (digits.size() <= exactDigits && !digits.contains(u'.')) {
        if (const std::optional<double> number = plainDecimal(digits))
            return *number / powersOfTen.at(size_t(digits.size()));
    }
    return digits.size() > longestNumber ? std::numeric_limits<double>::quiet_NaN()
                                         : engineNumber(u"0."_s.append(digits));
}

double scriptRound(double value)
{
    if (!std::isfinite(value))
        return value;
    // Adding a half to the largest number below it would give 1.
    if (value < 0.5 && value >= -0.5)
        return std::copysign(0.0, value);
    return std::floor(value + 0.5);
}

double roundValue(double value, double precision)
{
    const double factor = std::pow(10, precision);
    return scriptRound(value * factor) / factor;
}

} // namespace EmulationManagement::Internal
