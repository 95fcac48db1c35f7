// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/dbusarguments.h"

#include "remote/finitenumber.h"

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal::DBusArguments {

// QString::arg and not QString::number: their last digits differ in some ties.
QString generalNumber(double value)
{
    return u"%1"_s.arg(finiteOrZero(value));
}

QString fixedNumber(double value, int decimals)
{
    return u"%1"_s.arg(finiteOrZero(value), 0, 'f', decimals);
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
    return u"double:"_s + generalNumber(value);
}

QString real(double value, int decimals)
{
    return u"double:"_s + fixedNumber(value, decimals);
}

QString joined(const QStringList &arguments)
{
    return arguments.join(u' ');
}

} // namespace EmulationManagement::Internal::DBusArguments
