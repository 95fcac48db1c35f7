// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

// The text form of D-Bus arguments in a request to the invoker: "type:value", several of them joined by one blank.
// Numbers are independent of the locale: "." as decimal point, no group separators.
namespace EmulationManagement::Internal::DBusArguments {

// Numbers that are not finite are written as 0.

// At most 6 significant digits, trailing zeros dropped; very large and very small values with an exponent.
void appendGeneralNumber(QString &text, double value);
// Exactly so many decimals.
void appendFixedNumber(QString &text, double value, int decimals);

QString int32(int value);
QString boolean(bool value);
// The text goes as it is: it must not contain blanks.
QString string(const QString &value);
QString real(double value);
QString real(double value, int decimals);

QString joined(const QStringList &arguments);

} // namespace EmulationManagement::Internal::DBusArguments
