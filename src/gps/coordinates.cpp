// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/coordinates.h"

#include <QLocale>

namespace EmulationManagement::Internal {

namespace {

const QLocale &textLocale()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}

} // namespace

QString degreesText(double degrees)
{
    return textLocale().toString(degrees, 'f', degreesDecimals);
}

QString metresText(double metres)
{
    return textLocale().toString(metres, 'f', metresDecimals);
}

} // namespace EmulationManagement::Internal
