// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/playertrackpoint.h"

#include "gps/coordinates.h"

#include <cmath>

namespace EmulationManagement::Internal {

namespace {

// Smaller numbers are written without a group separator, also when they are rounded up.
constexpr double surelyWithoutGroups = 999;

// Reading the text back is what counts, but most numbers need no text for that.
double readBack(double number, QString (*text)(double))
{
    return std::abs(number) < surelyWithoutGroups ? number : text(number).toDouble();
}

} // namespace

PlayerTrackPoint::PlayerTrackPoint(const TrackPoint &point)
    : m_latitude(point.latitude)
    , m_longitude(point.longitude)
    , m_altitude(point.altitude)
    , m_interval(point.interval)
{
}

QString PlayerTrackPoint::latitude() const
{
    return degreesText(m_latitude);
}

QString PlayerTrackPoint::longitude() const
{
    return degreesText(m_longitude);
}

QString PlayerTrackPoint::altitude() const
{
    return metresText(m_altitude);
}

double PlayerTrackPoint::interval() const
{
    return m_interval;
}

double PlayerTrackPoint::latitudeNumber() const
{
    return readBack(m_latitude, degreesText);
}

double PlayerTrackPoint::longitudeNumber() const
{
    return readBack(m_longitude, degreesText);
}

double PlayerTrackPoint::altitudeNumber() const
{
    return readBack(m_altitude, metresText);
}

} // namespace EmulationManagement::Internal
