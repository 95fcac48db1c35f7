// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/trackpoint.h"

#include <QDateTime>
#include <QJSValue>
#include <QList>
#include <QObject>
#include <QString>

namespace EmulationManagement::Internal {

/// What parseNmeaLog() and its parts are to QML: a singleton whose functions throw what a script would throw. For whole
/// files see NmeaLogLoader.
class NmeaParsing : public QObject
{
    Q_OBJECT

public:
    explicit NmeaParsing(QObject *parent = nullptr);

    /// Throws a SyntaxError with the field incorrectLine (see NmeaError), or a TypeError without it. The current time
    /// is only given by tests.
    Q_INVOKABLE QList<EmulationManagement::Internal::TrackPoint>
    loadNmeaLog(const QString &text, const QDateTime &now = {}) const;

    /// Whether any point after the first has a time of exactly 0. For any list of objects.
    Q_INVOKABLE bool trackHasPointsWithoutDateTime(const QJSValue &points) const;

    Q_INVOKABLE double roundValue(double value, double precision) const;

    Q_INVOKABLE double
    parseCoordinateFromNmea(const QString &coordinate, const QString &hemisphere, int degreesSize) const;
    Q_INVOKABLE double parseLatitudeFromNmea(const QString &coordinate, const QString &hemisphere) const;
    Q_INVOKABLE double parseLongitudeFromNmea(const QString &coordinate, const QString &hemisphere) const;

    /// The date may be null, and so may the previous point's.
    Q_INVOKABLE QDateTime parseDateFromNmea(
        const QJSValue &date, const QString &time, const QJSValue &previousDate, const QDateTime &now = {}) const;
    Q_INVOKABLE double millisBetween(const QDateTime &first, const QDateTime &second) const;
    Q_INVOKABLE QString millisToPointTime(double duration) const;

    /// Fills in the fields index, time, interval and timeString of the point. The times are dates or null.
    Q_INVOKABLE void setUpTrackPointTimeAndInterval(
        const QJSValue &points, QJSValue point, const QJSValue &startTime, const QJSValue &time) const;
    /// An object with the fields format, latitude, longitude and altitude.
    Q_INVOKABLE QJSValue createTrackPoint(
        const QString &format,
        const QString &latitude,
        const QString &latitudeHemisphere,
        const QString &longitude,
        const QString &longitudeHemisphere,
        const QJSValue &altitude) const;
};

} // namespace EmulationManagement::Internal
