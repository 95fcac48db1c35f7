// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <limits>
#include <optional>

// Times are what a script's Date holds: milliseconds since 1970 in UTC, not a number for an invalid date.

namespace EmulationManagement::Internal {

double currentTime();

/// Gives the times of a log their dates, in local time. For one thread and for the time of reading one log: the clock
/// and the time zone are looked at once.
class NmeaClock
{
public:
    explicit NmeaClock(double now = currentTime());

    /// The point in time that a sentence names by its time, hhmmss[.fff], and its date, ddmmyy. Without a date, which
    /// an empty one is too, it is at or after the previous point's time, and without that one, today.
    double parseDateFromNmea(QStringView date, QStringView time, std::optional<double> previous);

private:
    // The zone's offset from UTC over a day of UTC, in milliseconds.
    struct Day
    {
        bool contains(double utc) const { return utc >= begin && utc < end; }

        double begin = 0;
        double end = 0;
        double offset = 0;
    };

    double offsetAt(double utc);
    double toLocal(double utc);
    double toUtc(double local);

    // The days that a track and the current time need, the one needed last first.
    std::array<Day, 4> m_days;
    double m_standardOffset;
    double m_localNow;
    double m_currentYear;
};

/// A duration in milliseconds as hours, minutes, seconds and tenths of a second, such as "00:01:05.3"; days are
/// dropped.
QString millisToPointTime(double duration);

} // namespace EmulationManagement::Internal
