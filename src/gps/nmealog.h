// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/nmeatime.h"
#include "gps/trackpoint.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringView>

#include <stop_token>
#include <variant>

namespace EmulationManagement::Internal {

/// Why a log cannot be read.
struct NmeaError
{
    Q_DECLARE_TR_FUNCTIONS(EmulationManagement::Internal::NmeaError)

public:
    /// As which of the script engine's errors scripts are to see it.
    enum class Kind : quint8 { Syntax, Type };

    Kind kind = Kind::Syntax;
    /// For the user, translated.
    QString message;
    /// The number of the line, from 1; lines without a character do not count. 0 when no line is concerned, and always
    /// for Kind::Type.
    int incorrectLine = 0;
};

using NmeaLog = std::variant<QList<TrackPoint>, NmeaError>;

/// Reads the track points of a log: lines that are GGA, RMC, GLL or WPL sentences of the GPS talker. The first one
/// decides of which of these sentences the track is made; lines of the others must be correct too, and anything else is
/// skipped. All points or the first error. May be called in any thread; the work is linear in the size of the text.
/// Once stopped, it returns an empty list.
NmeaLog parseNmeaLog(QStringView text, double now = currentTime(), const std::stop_token &stop = {});

/// Degrees, negative for the hemispheres "W" and "S", of whole degrees in degreesSize digits with minutes behind them;
/// 7 decimals.
double parseCoordinateFromNmea(QStringView coordinate, QStringView hemisphere, qsizetype degreesSize);
double parseLatitudeFromNmea(QStringView coordinate, QStringView hemisphere);
double parseLongitudeFromNmea(QStringView coordinate, QStringView hemisphere);

} // namespace EmulationManagement::Internal
