// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmeatime.h"

#include "gps/scriptnumber.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <ctime>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr double millisInSecond = 1000;
constexpr double millisInMinute = 60 * millisInSecond;
constexpr double millisInHour = 60 * millisInMinute;
constexpr double millisInDay = 24 * millisInHour;

constexpr double invalidTime = std::numeric_limits<double>::quiet_NaN();
constexpr double latestTime = 100'000'000 * millisInDay;

// What is nearly always two digits.
double numberAt(QStringView text, qsizetype index)
{
    if (text.size() >= index + 2) {
        const int tens = text.at(index).unicode() - u'0';
        const int ones = text.at(index + 1).unicode() - u'0';
        if (tens >= 0 && tens <= 9 && ones >= 0 && ones <= 9)
            return tens * 10 + ones;
    }
    return scriptNumber(substring(text, index, index + 2));
}

double clipped(double time)
{
    return std::fabs(time) <= latestTime ? time : invalidTime;
}

double dayOf(double time)
{
    return std::floor(time / millisInDay);
}

double timeWithinDay(double time)
{
    return time - dayOf(time) * millisInDay;
}

double firstDayOfYear(double year)
{
    return 365 * (year - 1970) + std::floor((year - 1969) / 4) - std::floor((year - 1901) / 100)
        + std::floor((year - 1601) / 400);
}

double yearOf(double time)
{
    const double year = 1970 + std::floor(time / (millisInDay * 365.2425));
    if (firstDayOfYear(year) * millisInDay > time)
        return year - 1;
    return firstDayOfYear(year + 1) * millisInDay <= time ? year + 1 : year;
}

// Months count from 0; those and days beyond the end of the year or month go on in the next one.
double makeDay(double year, double month, double day)
{
    static constexpr std::array<int, 12> daysBefore{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    if (!std::isfinite(year) || !std::isfinite(month) || !std::isfinite(day))
        return invalidTime;
    const double months = std::trunc(month);
    const double fullYear = std::trunc(year) + std::floor(months / 12);
    const auto monthOfYear = size_t(months - 12 * std::floor(months / 12));
    const double firstDay = firstDayOfYear(fullYear);
    const bool leapDay = monthOfYear > 1 && firstDayOfYear(fullYear + 1) - firstDay == 366;
    return firstDay + daysBefore.at(monthOfYear) + (leapDay ? 1 : 0) + std::trunc(day) - 1;
}

double makeTime(double hours, double minutes, double seconds, double millis)
{
    return std::trunc(hours) * millisInHour + std::trunc(minutes) * millisInMinute
        + std::trunc(seconds) * millisInSecond + std::trunc(millis);
}

double zoneOffset(double utc)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(utc)).offsetFromUtc() * millisInSecond;
}

// Today's offset of the zone without its summer time.
double standardOffset()
{
    const std::time_t now = std::time(nullptr);
    std::tm utc;
    gmtime_r(&now, &utc); // says that it is not summer time
    return double(now - std::mktime(&utc)) * millisInSecond;
}

} // namespace

double currentTime()
{
    return double(QDateTime::currentMSecsSinceEpoch());
}

NmeaClock::NmeaClock(double now)
    : m_standardOffset(standardOffset())
    , m_localNow(toLocal(now))
    , m_currentYear(yearOf(m_localNow))
{
}

double NmeaClock::offsetAt(double utc)
{
    if (m_days.front().contains(utc))
        return m_days.front().offset;
    auto day = std::ranges::find_if(m_days, [utc](const Day &known) { return known.contains(utc); });
    if (day == m_days.end()) {
        const double begin = dayOf(utc) * millisInDay;
        const double end = begin + millisInDay;
        const double offset = zoneOffset(begin);
        if (zoneOffset(end) != offset)
            return zoneOffset(utc);
        --day;
        *day = {begin, end, offset};
    }
    std::rotate(m_days.begin(), day, day + 1);
    return m_days.front().offset;
}

double NmeaClock::toLocal(double utc)
{
    return std::isfinite(utc) ? utc + offsetAt(utc) : invalidTime;
}

// Around a change of the clocks, as the script engine has it: an hour that comes twice or never is taken by the offset
// at the standard time of that name.
double NmeaClock::toUtc(double local)
{
    const double standard = local - m_standardOffset;
    return std::isfinite(standard) ? clipped(local - offsetAt(standard)) : invalidTime;
}

double NmeaClock::parseDateFromNmea(QStringView date, QStringView time, std::optional<double> previous)
{
    const double hours = numberAt(time, 0);
    const double minutes = numberAt(time, 2);
    const double seconds = numberAt(time, 4);
    const double millis = scriptRound(scriptFraction(substring(time, 7, time.size())) * millisInSecond);
    const double timeOfDay = makeTime(hours, minutes, seconds, millis);

    if (!date.isEmpty()) {
        const double day = numberAt(date, 0);
        const double month = numberAt(date, 2);
        // The year comes from the day's digits, and the month counts from 0: the same for all points of a track, so the
        // times between them are right.
        const double yearDigits = day;
        const double year = 2000 + yearDigits > m_currentYear ? 1900 + yearDigits : 2000 + yearDigits;
        return toUtc(makeDay(year, month, day) * millisInDay + timeOfDay);
    }

    double result = toUtc(dayOf(m_localNow) * millisInDay + timeOfDay);
    if (previous) {
        // An invalid time is midnight once it is given a date.
        const double resultTime = std::isnan(result) ? 0 : timeWithinDay(toLocal(result));
        result = toUtc(dayOf(toLocal(*previous)) * millisInDay + resultTime);
        if (result < *previous) // the track has passed midnight
            result = toUtc(toLocal(result) + millisInDay);
    }
    return result;
}

QString millisToPointTime(double duration)
{
    // A negative number's sign counts as a digit; what is not a number says so.
    const auto append = [](QString &text, double number, int digits) {
        if (std::isnan(number))
            text += u"NaN"_s;
        else
            text += QString::number(int(number)).rightJustified(digits, u'0');
    };
    QString text;
    text.reserve(10);
    append(text, std::fmod(std::trunc(duration / millisInHour), 24), 2);
    text += u':';
    append(text, std::fmod(std::trunc(duration / millisInMinute), 60), 2);
    text += u':';
    append(text, std::fmod(std::trunc(duration / millisInSecond), 60), 2);
    text += u'.';
    append(text, std::trunc(std::fmod(duration, millisInSecond) / 100), 1);
    return text;
}

} // namespace EmulationManagement::Internal
