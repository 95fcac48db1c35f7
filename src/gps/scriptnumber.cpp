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
    if (text.isEmpty() || text.size() > exactDigits + 1)
        return {};
    const char16_t *position = text.utf16();
    const char16_t *const end = position + text.size();
    qint64 digits = 0;
    const auto readDigits = [&] {
        const char16_t *const begin = position;
        for (; position != end && *position >= u'0' && *position <= u'9'; ++position)
            digits = digits * 10 + (*position - u'0');
        return position - begin;
    };
    const qsizetype whole = readDigits();
    if (whole == 0 || whole > exactDigits)
        return {};
    if (position == end)
        return double(digits);
    if (*position++ != u'.')
        return {};
    const qsizetype decimals = readDigits();
    if (decimals == 0 || position != end)
        return {};
    return double(digits) / powersOfTen.at(size_t(decimals));
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

double roundValue(double value, double precision)
{
    return roundByFactor(value, std::pow(10, precision));
}

} // namespace EmulationManagement::Internal
