// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the parser makes of any text, against the patterns as regular expressions.

#include "gps/nmealog.h"

#include "fuzz/fuzzer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace EmulationManagement::Internal;

namespace {

const QMap<QString, QRegularExpression> &patterns()
{
    static const QMap<QString, QRegularExpression> result = [] {
        QMap<QString, QRegularExpression> map;
        const auto add = [&map](const QString &id, const QString &rest) {
            // A script's dot, which knows more line breaks.
            QString pattern = u"^\\$"_s + id + rest + u"\\z"_s;
            pattern.replace(u".*"_s, u"[^\\n\\r\\x{2028}\\x{2029}]*"_s);
            map.insert(u'$' + id, QRegularExpression(pattern));
        };
        add(u"GPRMC"_s, uR"(,\d{6}(\.\d{2,3})?,.*,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,\d{6},.*,.*)"_s);
        add(u"GPGGA"_s, uR"(,\d{6}(\.\d{2,3})?,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,.*,\d+\.\d+,.*,.*,.*,.*,.*)"_s);
        add(u"GPGLL"_s, uR"(,\d+\.\d+,(N|S),\d+\.\d+,(E|W),(\d{6}(\.\d{2,3})?,)?.*)"_s);
        add(u"GPWPL"_s, uR"(,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*)"_s);
        return map;
    }();
    return result;
}

QString anyField(Fuzz::Input &input)
{
    return input.oneOf(
        {u"4807.038"_s,
         u"01131.000"_s,
         u"N"_s,
         u"S"_s,
         u"E"_s,
         u"W"_s,
         u"123519"_s,
         u"235959.99"_s,
         u"000000.001"_s,
         u"310524"_s,
         u"545.4"_s,
         u"0.0"_s,
         QString(),
         u"A"_s,
         u"M*47"_s,
         u"1."_s,
         u".1"_s,
         u"-1.5"_s,
         u"12345"_s,
         u"1234567"_s,
         u"123519.5"_s,
         u"n"_s,
         u"\u2028"_s,
         u"\u0661.\u0662"_s,
         input.text(u"0123456789."_s, 9),
         input.anyText(4)});
}

// Mostly correct, in order that the parser comes to its later lines.
QString anyLine(Fuzz::Input &input)
{
    if (input.chance(5))
        return input.anyText(40);
    const QString id = input.oneOf({u"$GPRMC"_s, u"$GPGGA"_s, u"$GPGLL"_s, u"$GPWPL"_s, u"$GPGSA"_s});
    const QString time = input.oneOf({u"123519"_s, u"235959.99"_s, u"000000.001"_s});
    const QString position = u"%1.%2,%3,%4.%5,%6"_s.arg(input.number(9000), 4, 10, QChar(u'0'))
                                 .arg(input.number(10000))
                                 .arg(input.oneOf({u"N"_s, u"S"_s}))
                                 .arg(input.number(18000), 5, 10, QChar(u'0'))
                                 .arg(input.number(1000))
                                 .arg(input.oneOf({u"E"_s, u"W"_s}));
    QString line;
    if (id == u"$GPRMC")
        line = QStringList{id, time, u"A"_s, position, u"022.4,084.4,310524,003.1,W*6A"_s}.join(u',');
    else if (id == u"$GPGGA")
        line = QStringList{id, time, position, u"1,08,0.9,545.4,M,46.9,M,,*47"_s}.join(u',');
    else if (id == u"$GPGLL")
        line = QStringList{id, position, time, u"A*1D"_s}.join(u',');
    else
        line = QStringList{id, position, u"NAME*5C"_s}.join(u',');
    if (input.chance(60))
        return line;
    QStringList fields = line.split(u',');
    for (int changes = 1 + input.number(3); changes > 0 && !fields.isEmpty(); --changes) {
        const int field = input.number(int(fields.size()));
        switch (input.number(4)) {
        case 0:
            fields[field] = anyField(input);
            break;
        case 1:
            fields.insert(field, anyField(input));
            break;
        case 2:
            fields.removeAt(field);
            break;
        default:
            if (!fields.at(field).isEmpty())
                fields[field][input.number(int(fields.at(field).size()))] = QChar(u' ' + input.number(95));
            break;
        }
    }
    return fields.join(u',');
}

// Nothing when the line is not of a known sentence.
std::optional<bool> isCorrect(QString line)
{
    const auto pattern = patterns().constFind(line.section(u',', 0, 0));
    if (pattern == patterns().constEnd())
        return {};
    for (QChar &character : line) { // the expressions want valid texts; to them these are characters like others
        if (character.isSurrogate())
            character = u'?';
    }
    return pattern->match(line).hasMatch();
}

// A coordinate as it should be, when the field is a tidy one.
bool isWrong(double value, const QString &field, const QString &hemisphere, qsizetype degreesSize)
{
    static const QRegularExpression tidy(u"^[0-9]+\\.[0-9]+$"_s);
    if (!tidy.match(field).hasMatch() || field.indexOf(u'.') < degreesSize + 1)
        return false;
    const double degrees = field.first(degreesSize).toDouble() + field.sliced(degreesSize).toDouble() / 60;
    const double expected = hemisphere == u"S" || hemisphere == u"W" ? -degrees : degrees;
    if (std::isinf(expected)) // too many digits
        return value != expected;
    return !(std::fabs(value - expected) <= 0.51e-7 + std::fabs(expected) * 1e-15);
}

QString anyLog(Fuzz::Input &input)
{
    QStringList lines;
    for (int count = input.number(12); count > 0; --count)
        lines.append(anyLine(input));
    return lines.join(input.oneOf({u"\n"_s, u"\r\n"_s, u"\r"_s, u"\n\n"_s}));
}

QString check(Fuzz::Input &input)
{
    const std::optional<QString> sample = input.sample();
    const QString text = sample ? *sample : anyLog(input);

    QElapsedTimer timer;
    timer.start();
    const NmeaLog log = parseNmeaLog(text);
    if (timer.durationElapsed() > 2s)
        return u"reading took too long: %1"_s.arg(text);
    const auto *points = std::get_if<QList<TrackPoint>>(&log);
    const auto *error = std::get_if<NmeaError>(&log);

    const QStringList filled = QString(text).replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
    constexpr qsizetype mostCommas = 100; // beyond, the expressions give up
    if (std::ranges::any_of(filled, [](const QString &line) { return line.count(u',') > mostCommas; }))
        return {};
    QStringList accepted;
    for (qsizetype i = 0; i < filled.size(); ++i) {
        const std::optional<bool> correct = isCorrect(filled.at(i));
        if (correct && !*correct) {
            if (!error || error->incorrectLine != i + 1)
                return u"line %1 was not refused: %2"_s.arg(i + 1).arg(text);
            return {};
        }
        if (correct && (accepted.isEmpty() || accepted.constFirst().first(6) == filled.at(i).first(6)))
            accepted.append(filled.at(i));
    }
    if (accepted.isEmpty()) {
        if (!error || error->incorrectLine != filled.size())
            return u"points out of nothing: %1"_s.arg(text);
        return {};
    }
    if (!points)
        return u"line %1 was refused: %2"_s.arg(error->incorrectLine).arg(text);
    if (points->size() != accepted.size())
        return u"%1 points instead of %2: %3"_s.arg(points->size()).arg(accepted.size()).arg(text);

    for (qsizetype i = 0; i < points->size(); ++i) {
        const TrackPoint &point = points->at(i);
        const QStringList fields = accepted.at(i).split(u',');
        const int latitude = point.format == TrackPoint::Format::Rmc ? 3
            : point.format == TrackPoint::Format::Gga                ? 2
                                                                     : 1;
        if (point.formatName() != fields.constFirst() || point.index != i)
            return u"point %1 is of another line: %2"_s.arg(i).arg(text);
        if (isWrong(point.latitude, fields.at(latitude), fields.at(latitude + 1), 2)
            || isWrong(point.longitude, fields.at(latitude + 2), fields.at(latitude + 3), 3))
            return u"point %1 is elsewhere: %2"_s.arg(i).arg(text);
        const double interval = i == 0 ? 0 : point.time - points->at(i - 1).time;
        if (!(point.interval == interval || (std::isnan(point.interval) && std::isnan(interval))))
            return u"the interval of point %1 is not its time less the one before: %2"_s.arg(i).arg(text);
        if (std::isfinite(point.time) && point.time != std::trunc(point.time))
            return u"the time of point %1 is a fraction: %2"_s.arg(i).arg(text);
        if (i == 0 && point.time != 0)
            return u"the track begins late: %1"_s.arg(text);
    }
    return {};
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    return Fuzz::run("fuzz_nmea", check);
}
