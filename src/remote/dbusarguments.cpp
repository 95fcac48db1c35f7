// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/dbusarguments.h"

#include "remote/finitenumber.h"

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal::DBusArguments {

namespace {

// A number of at most 15 digits, with a point before the last so many of them and at least one digit before the point.
void appendDigits(QString &text, bool negative, quint64 digits, int decimals)
{
    std::array<char16_t, 24> buffer;
    char16_t *const end = buffer.data() + buffer.size();
    char16_t *begin = end;
    for (int count = 0; digits != 0 || count <= decimals; ++count) {
        if (count == decimals && decimals != 0)
            *--begin = u'.';
        *--begin = char16_t(u'0' + digits % 10);
        digits /= 10;
    }
    if (negative)
        *--begin = u'-';
    text.append(QStringView(begin, end));
}

} // namespace

// The texts are those of QString::arg, not of QString::number: their last digits differ in some ties. It takes its
// time, which counts for the hundred thousands of numbers of a track, so the usual ones are written without it.

void appendGeneralNumber(QString &text, double value)
{
    constexpr double firstWithExponent = 1e6;
    if (value > 0 && value < firstWithExponent && value == std::floor(value))
        appendDigits(text, false, quint64(value), 0);
    else
        text.append(u"%1"_s.arg(finiteOrZero(value)));
}

void appendFixedNumber(QString &text, double value, int decimals)
{
    constexpr std::array<double, 8> powersOfTen{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
    constexpr double largest = 1e12; // up to here the product is exact to a few ten thousandths
    constexpr double tieMargin = 1e-3;
    if (decimals > 0 && decimals < int(powersOfTen.size())) {
        const double scaled = std::abs(value) * powersOfTen.at(size_t(decimals));
        const double whole = std::floor(scaled);
        const double rest = scaled - whole;
        if (scaled >= 1 && scaled < largest && std::abs(rest - 0.5) > tieMargin) {
            appendDigits(text, value < 0, quint64(whole) + (rest > 0.5 ? 1 : 0), decimals);
            return;
        }
    }
    text.append(u"%1"_s.arg(finiteOrZero(value), 0, 'f', decimals));
}

QString int32(int value)
{
    return u"int32:"_s + QString::number(value);
}

QString boolean(bool value)
{
    return value ? u"boolean:1"_s : u"boolean:0"_s;
}

QString string(const QString &value)
{
    return u"string:"_s + value;
}

QString real(double value)
{
    QString text = u"double:"_s;
    appendGeneralNumber(text, value);
    return text;
}

QString real(double value, int decimals)
{
    QString text = u"double:"_s;
    appendFixedNumber(text, value, decimals);
    return text;
}

QString joined(const QStringList &arguments)
{
    return arguments.join(u' ');
}

} // namespace EmulationManagement::Internal::DBusArguments
