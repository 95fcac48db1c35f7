// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmeaparsing.h"

#include "gps/nmealog.h"
#include "gps/nmeatime.h"
#include "gps/scriptnumber.h"

#include <QJSEngine>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

double toTime(const QDateTime &date)
{
    return date.isValid() ? double(date.toMSecsSinceEpoch()) : std::numeric_limits<double>::quiet_NaN();
}

QDateTime toDate(double time)
{
    return std::isnan(time) ? QDateTime() : QDateTime::fromMSecsSinceEpoch(qint64(time));
}

double timeOrNow(const QDateTime &now)
{
    return now.isValid() ? toTime(now) : currentTime();
}

quint32 lengthOf(const QJSValue &list)
{
    return list.property(u"length"_s).toUInt();
}

} // namespace

NmeaParsing::NmeaParsing(QObject *parent)
    : QObject(parent)
{
}

QList<TrackPoint> NmeaParsing::loadNmeaLog(const QString &text, const QDateTime &now) const
{
    NmeaLog log = parseNmeaLog(text, timeOrNow(now));
    if (const auto *error = std::get_if<NmeaError>(&log)) {
        QJSEngine *const engine = qjsEngine(this);
        if (error->kind == NmeaError::Kind::Type) {
            engine->throwError(QJSValue::TypeError, error->message);
        } else {
            QJSValue object = engine->newErrorObject(QJSValue::SyntaxError, error->message);
            object.setProperty(u"incorrectLine"_s, error->incorrectLine);
            engine->throwError(object);
        }
        return {};
    }
    return std::get<QList<TrackPoint>>(std::move(log));
}

bool NmeaParsing::trackHasPointsWithoutDateTime(const QJSValue &points) const
{
    const QVariant list = points.toVariant(QJSValue::RetainJSObjects);
    if (const auto *track = get_if<QList<TrackPoint>>(&list)) {
        return std::ranges::any_of(
            track->sliced(qMin(1, track->size())), [](const TrackPoint &point) { return point.time == 0; });
    }
    const quint32 length = lengthOf(points);
    for (quint32 i = 1; i < length; ++i) {
        if (points.property(i).property(u"time"_s).strictlyEquals(QJSValue(0)))
            return true;
    }
    return false;
}

double NmeaParsing::roundValue(double value, double precision) const
{
    return Internal::roundValue(value, precision);
}

double NmeaParsing::parseCoordinateFromNmea(const QString &coordinate, const QString &hemisphere, int degreesSize) const
{
    return Internal::parseCoordinateFromNmea(coordinate, hemisphere, qMax(0, degreesSize));
}

double NmeaParsing::parseLatitudeFromNmea(const QString &coordinate, const QString &hemisphere) const
{
    return Internal::parseLatitudeFromNmea(coordinate, hemisphere);
}

double NmeaParsing::parseLongitudeFromNmea(const QString &coordinate, const QString &hemisphere) const
{
    return Internal::parseLongitudeFromNmea(coordinate, hemisphere);
}

QDateTime NmeaParsing::parseDateFromNmea(
    const QJSValue &date, const QString &time, const QJSValue &previousDate, const QDateTime &now) const
{
    const QString dateText = date.isString() ? date.toString() : QString();
    std::optional<double> previous;
    if (previousDate.isDate())
        previous = toTime(previousDate.toDateTime());
    return toDate(NmeaClock(timeOrNow(now)).parseDateFromNmea(dateText, time, previous));
}

double NmeaParsing::millisBetween(const QDateTime &first, const QDateTime &second) const
{
    return toTime(second) - toTime(first);
}

QString NmeaParsing::millisToPointTime(double duration) const
{
    return Internal::millisToPointTime(duration);
}

void NmeaParsing::setUpTrackPointTimeAndInterval(
    const QJSValue &points, QJSValue point, const QJSValue &startTime, const QJSValue &time) const
{
    const quint32 count = lengthOf(points);
    double pointTime = 0;
    double interval = 0;
    if (count > 0) {
        if (startTime.isDate() && time.isDate())
            pointTime = millisBetween(startTime.toDateTime(), time.toDateTime());
        interval = pointTime - points.property(count - 1).property(u"time"_s).toNumber();
    }
    point.setProperty(u"index"_s, count);
    point.setProperty(u"time"_s, pointTime);
    point.setProperty(u"interval"_s, interval);
    point.setProperty(u"timeString"_s, millisToPointTime(pointTime));
}

QJSValue NmeaParsing::createTrackPoint(
    const QString &format,
    const QString &latitude,
    const QString &latitudeHemisphere,
    const QString &longitude,
    const QString &longitudeHemisphere,
    const QJSValue &altitude) const
{
    QJSValue point = qjsEngine(this)->newObject();
    point.setProperty(u"format"_s, format);
    point.setProperty(u"latitude"_s, parseLatitudeFromNmea(latitude, latitudeHemisphere));
    point.setProperty(u"longitude"_s, parseLongitudeFromNmea(longitude, longitudeHemisphere));
    point.setProperty(u"altitude"_s, altitude);
    return point;
}

} // namespace EmulationManagement::Internal
