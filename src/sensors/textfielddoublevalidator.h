// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDoubleValidator>

// Checks a number while it is typed: what would leave the range is refused at once, there is no "too large as yet".
// Independent of the locale: "." is the only decimal separator.
class TextFieldDoubleValidator : public QDoubleValidator
{
    Q_OBJECT

public:
    explicit TextFieldDoubleValidator(QObject *parent = nullptr);
    TextFieldDoubleValidator(double bottom, double top, int decimals, QObject *parent = nullptr);

    State validate(QString &input, int &pos) const override;
};
