// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayView>
#include <QStringList>
#include <QVariantList>

namespace Emulator {

/*! Registers the types that calls carry beyond Qt's own; needed before a call. */
void registerArgumentTypes();

/*! The arguments of a call, or why a text is none. */
struct Arguments
{
    QVariantList values; // int, double, bool, QString or QList<QList<double>>: D-Bus i, d, b, s and aad
    QStringList texts;   // the same as they were written, without their types; long ones are shortened
    QString error;       // empty when all is well
};

/*!
    Reads typed values joined by single blanks. \a text is UTF-8; empty means no arguments.

    A value is its type, a colon and its text: int32: a signed decimal, double: a decimal with "." or in exponent form,
    boolean: 0 or 1, string: anything without blanks, array:array:double: the inner arrays joined by ";" with their
    numbers joined by "," (nothing at all is an empty array). Nothing else is accepted: no signs "+", blanks, nan, inf.
*/
Arguments parseArguments(QByteArrayView text);

/*! \a text, cut to what fits in a message for a person. */
QString shortened(QByteArrayView text);

} // namespace Emulator
