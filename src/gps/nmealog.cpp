// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmealog.h"

#include "gps/scriptnumber.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr double latLongRoundingFactor = 1e7; // 7 decimals
constexpr double altRoundingFactor = 1e2;
constexpr qsizetype latitudeDegreesSize = 2;
constexpr qsizetype longitudeDegreesSize = 3;

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

bool areDigits(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return isDigit(c.unicode()); });
}

// \d{6}
bool isSixDigits(QStringView field)
{
    return field.size() == 6 && areDigits(field);
}

// \d{6}(\.\d{2,3})?
bool isTime(QStringView field)
{
    if (field.size() == 6)
        return areDigits(field);
    return (field.size() == 9 || field.size() == 10) && field.at(6) == u'.' && areDigits(field.first(6))
        && areDigits(field.sliced(7));
}

// \d{6}(\.\d+)?
bool isTimeOfPosition(QStringView field)
{
    if (field.size() == 6)
        return areDigits(field);
    return field.size() > 7 && field.at(6) == u'.' && areDigits(field.first(6)) && areDigits(field.sliced(7));
}

// \d+\.\d+
bool isDecimal(QStringView field)
{
    qsizetype point = 0;
    while (point < field.size() && isDigit(field.at(point).unicode()))
        ++point;
    return point > 0 && point + 1 < field.size() && field.at(point) == u'.' && areDigits(field.sliced(point + 1));
}

bool isNorthOrSouth(QStringView field)
{
    return field == u'N' || field == u'S';
}

bool isEastOrWest(QStringView field)
{
    return field == u'E' || field == u'W';
}

// The matchers decide, in one pass over the fields of a line, what these patterns say:
//
// ^\$GPRMC,\d{6}(\.\d{2,3})?,.*,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,\d{6},.*,.*$
// ^\$GPGGA,\d{6}(\.\d{2,3})?,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,.*,\d+\.\d+,.*,.*,.*,.*,.*$
// ^\$GPGLL,\d+\.\d+,(N|S),\d+\.\d+,(E|W),(\d{6}(\.\d{2,3})?,)?.*$
// ^\$GPWPL,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*$
//
// Each ".*" stands for one field or more, so what follows one may come later than in a tidy line. A regular expression
// engine needs ages to find out that a long line does not match.
//
// take() is given each field after the id and says whether the line may still match, isComplete() whether it does.

// Latitude, hemisphere, longitude, hemisphere.
bool isPositionPart(int part, QStringView field)
{
    switch (part) {
    case 0:
    case 2:
        return isDecimal(field);
    case 1:
        return isNorthOrSouth(field);
    default:
        return isEastOrWest(field);
    }
}

class RmcMatcher
{
public:
    bool take(qsizetype index, QStringView field)
    {
        if (index == 1)
            return isTime(field);
        if (index == 2)
            return true;
        if (m_positionParts < 4) {
            takePosition(field);
            m_firstDate = index + 3;
        } else if (m_date == 0 && index >= m_firstDate && isSixDigits(field)) {
            m_date = index;
        }
        return true;
    }

    bool isComplete(qsizetype fields) const { return m_date > 0 && fields >= m_date + 3; }

private:
    // The first position that there is.
    void takePosition(QStringView field)
    {
        if (isPositionPart(m_positionParts, field))
            ++m_positionParts;
        else if (m_positionParts == 3 && isNorthOrSouth(field))
            m_positionParts = 2; // the longitude was a latitude
        else
            m_positionParts = isDecimal(field) ? 1 : 0;
    }

    int m_positionParts = 0;
    qsizetype m_firstDate = 0;
    qsizetype m_date = 0;
};

class GgaMatcher
{
public:
    bool take(qsizetype index, QStringView field)
    {
        if (index == 1)
            return isTime(field);
        if (index < 6)
            return isPositionPart(int(index) - 2, field);
        if (m_altitude == 0 && index >= 9 && isDecimal(field))
            m_altitude = index;
        return true;
    }

    bool isComplete(qsizetype fields) const { return m_altitude > 0 && fields >= m_altitude + 6; }

private:
    qsizetype m_altitude = 0;
};

// GLL and WPL: the pattern of GLL has a time only where it may be anything else too.
class PositionMatcher
{
public:
    bool take(qsizetype index, QStringView field) { return index > 4 || isPositionPart(int(index) - 1, field); }
    bool isComplete(qsizetype fields) const { return fields >= 6; }
};

// What is read of each sentence: the numbers of its fields.
struct Sentence
{
    TrackPoint::Format format;
    QStringView id;
    size_t latitude;
    size_t longitude;
    size_t time = 0; // none
    size_t date = 0;
    size_t altitude = 0;
};

constexpr std::array sentences{
    Sentence{.format = TrackPoint::Format::Rmc, .id = u"$GPRMC", .latitude = 3, .longitude = 5, .time = 1, .date = 9},
    Sentence{
        .format = TrackPoint::Format::Gga, .id = u"$GPGGA", .latitude = 2, .longitude = 4, .time = 1, .altitude = 9},
    Sentence{.format = TrackPoint::Format::Gll, .id = u"$GPGLL", .latitude = 1, .longitude = 3, .time = 5},
    Sentence{.format = TrackPoint::Format::Wpl, .id = u"$GPWPL", .latitude = 1, .longitude = 3},
};

const Sentence *sentenceOf(QStringView line)
{
    constexpr qsizetype idSize = 6;
    if (!line.startsWith(u"$GP") || line.size() < idSize || (line.size() > idSize && line.at(idSize) != u','))
        return nullptr;
    const QStringView id = line.first(idSize);
    const auto sentence = std::ranges::find(sentences, id, &Sentence::id);
    return sentence == sentences.end() ? nullptr : sentence;
}

// The fields up to the last one that a sentence reads.
using Fields = std::array<QStringView, 10>;

template<typename Matcher>
bool readFields(QStringView line, Fields &fields, Matcher matcher)
{
    const char16_t *position = line.utf16();
    const char16_t *const end = position + line.size();
    for (qsizetype index = 0;; ++index) {
        const char16_t *const begin = position;
        while (position != end && *position != u',')
            ++position;
        const QStringView field(begin, position);
        if (size_t(index) < fields.size())
            fields[size_t(index)] = field;
        if (index > 0 && !matcher.take(index, field))
            return false;
        if (position == end)
            return matcher.isComplete(index + 1);
        ++position;
    }
}

bool readFields(const Sentence &sentence, QStringView line, Fields &fields)
{
    switch (sentence.format) {
    case TrackPoint::Format::Rmc:
        return readFields(line, fields, RmcMatcher());
    case TrackPoint::Format::Gga:
        return readFields(line, fields, GgaMatcher());
    case TrackPoint::Format::Gll:
    case TrackPoint::Format::Wpl:
        return readFields(line, fields, PositionMatcher());
    }
    Q_UNREACHABLE_RETURN(false);
}

// Where a character comes next; each part of the text is searched once.
class NextOccurrence
{
public:
    NextOccurrence(QStringView text, QChar character)
        : m_text(text)
        , m_character(character)
    {
    }

    // Of the positions from this one on; the end of the text when there is none.
    qsizetype from(qsizetype position)
    {
        if (m_next < position) {
            m_next = m_text.indexOf(m_character, position);
            if (m_next < 0)
                m_next = m_text.size();
        }
        return m_next;
    }

private:
    QStringView m_text;
    QChar m_character;
    qsizetype m_next = -1;
};

// The lines of a text: what is between carriage returns and line feeds, unless that is nothing.
class LineReader
{
public:
    explicit LineReader(QStringView text)
        : m_text(text)
        , m_carriageReturn(text, u'\r')
        , m_lineFeed(text, u'\n')
        , m_lineSeparator(text, QChar::LineSeparator)
        , m_paragraphSeparator(text, QChar::ParagraphSeparator)
    {
    }

    bool next()
    {
        qsizetype begin = m_end;
        while (begin < m_text.size() && (m_text.at(begin) == u'\r' || m_text.at(begin) == u'\n'))
            ++begin;
        if (begin == m_text.size())
            return false;
        m_end = qMin(m_carriageReturn.from(begin), m_lineFeed.from(begin));
        m_line = m_text.sliced(begin, m_end - begin);
        m_hasSeparators = m_lineSeparator.from(begin) < m_end || m_paragraphSeparator.from(begin) < m_end;
        ++m_number;
        return true;
    }

    QStringView line() const { return m_line; }
    int number() const { return m_number; }
    // Unicode's line and paragraph separators break no line here, but the dot of a pattern does not match them.
    bool hasSeparators() const { return m_hasSeparators; }

private:
    QStringView m_text;
    NextOccurrence m_carriageReturn;
    NextOccurrence m_lineFeed;
    NextOccurrence m_lineSeparator;
    NextOccurrence m_paragraphSeparator;
    QStringView m_line;
    qsizetype m_end = 0;
    int m_number = 0;
    bool m_hasSeparators = false;
};

// Nothing for sentences without a time, and where the time's field is none.
std::optional<double>
pointTime(const Sentence &sentence, const Fields &fields, std::optional<double> previousTime, NmeaClock &clock)
{
    if (sentence.time == 0)
        return {};
    const QStringView time = fields.at(sentence.time);
    if (!isTimeOfPosition(time)) // GLL, whose pattern has anything there
        return {};
    const QStringView date = sentence.date > 0 ? fields.at(sentence.date) : QStringView();
    return clock.parseDateFromNmea(date, time, previousTime);
}

} // namespace

NmeaLog parseNmeaLog(QStringView text, double now, const std::stop_token &stop)
{
    if (text.isEmpty())
        return NmeaError{.message = NmeaError::tr("NMEA file is empty")};

    constexpr int linesBetweenStops = 1024;
    NmeaClock clock(now);
    LineReader lines(text);
    QList<TrackPoint> points;
    std::optional<double> startTime;
    std::optional<double> previousTime;
    Fields fields;
    while (lines.next()) {
        if (lines.number() % linesBetweenStops == 0 && stop.stop_requested())
            return QList<TrackPoint>();
        const Sentence *const sentence = sentenceOf(lines.line());
        if (!sentence)
            continue;
        if (lines.hasSeparators() || !readFields(*sentence, lines.line(), fields))
            return NmeaError{.message = NmeaError::tr("Incorrect NMEA file"), .incorrectLine = lines.number()};
        // The first point decides on the sentence that the track is made of.
        if (!points.isEmpty() && sentence->format != points.constFirst().format)
            continue;

        const std::optional<double> time = pointTime(*sentence, fields, previousTime, clock);
        previousTime = time;
        TrackPoint point;
        if (points.isEmpty()) {
            startTime = time;
            points.reserve(text.size() / lines.line().size() + 1);
        } else {
            point.time = startTime && time ? *time - *startTime : 0;
            point.interval = point.time - points.constLast().time;
        }
        point.format = sentence->format;
        point.index = int(points.size());
        point.latitude = parseLatitudeFromNmea(fields.at(sentence->latitude), fields.at(sentence->latitude + 1));
        point.longitude = parseLongitudeFromNmea(fields.at(sentence->longitude), fields.at(sentence->longitude + 1));
        if (sentence->altitude > 0)
            point.altitude = roundByFactor(scriptNumber(fields.at(sentence->altitude)), altRoundingFactor);
        points.append(point);
    }

    // A script's loop over the lines has nothing to loop over then: users are to see what its engine says.
    if (lines.number() == 0)
        return NmeaError{
            .kind = NmeaError::Kind::Type, .message = u"Value is null and could not be converted to an object"_s};
    if (points.isEmpty()) {
        return NmeaError{
            .message =
                NmeaError::tr("NMEA file has incorrect points format.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL."),
            .incorrectLine = lines.number()};
    }
    if (points.capacity() / 4 > points.size() / 3) // most lines were others
        points.squeeze();
    return points;
}

// Rounded before the sign is applied: south and west round like north and east.
double parseCoordinateFromNmea(QStringView coordinate, QStringView hemisphere, qsizetype degreesSize)
{
    const double degrees = scriptNumber(substring(coordinate, 0, degreesSize));
    const double minutes = scriptNumber(substring(coordinate, degreesSize, coordinate.size()));
    const double value = roundByFactor(degrees + minutes / 60, latLongRoundingFactor);
    return hemisphere == u'W' || hemisphere == u'S' ? value * -1 : value;
}

double parseLatitudeFromNmea(QStringView coordinate, QStringView hemisphere)
{
    return parseCoordinateFromNmea(coordinate, hemisphere, latitudeDegreesSize);
}

double parseLongitudeFromNmea(QStringView coordinate, QStringView hemisphere)
{
    return parseCoordinateFromNmea(coordinate, hemisphere, longitudeDegreesSize);
}

} // namespace EmulationManagement::Internal
