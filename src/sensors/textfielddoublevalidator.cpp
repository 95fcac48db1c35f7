// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/textfielddoublevalidator.h"

#include <QString>

TextFieldDoubleValidator::TextFieldDoubleValidator(QObject *parent)
    : QDoubleValidator(parent)
{
}

TextFieldDoubleValidator::TextFieldDoubleValidator(double bottom, double top, int decimals, QObject *parent)
    : QDoubleValidator(bottom, top, decimals, parent)
{
}

QValidator::State TextFieldDoubleValidator::validate(QString &input, int &pos) const
{
    Q_UNUSED(pos)
    if (input.isEmpty() || input == u'-')
        return Intermediate;

    const qsizetype point = input.indexOf(u'.');
    if (point >= 0) {
        const qsizetype charactersAfterPoint = input.size() - point - 1;
        if (decimals() == 0 || charactersAfterPoint > decimals())
            return Invalid;
    }

    bool isNumber = false;
    const double value = input.toDouble(&isNumber);
    if (!isNumber || value < bottom())
        return Invalid;
    return value <= top() ? Acceptable : Invalid;
}
