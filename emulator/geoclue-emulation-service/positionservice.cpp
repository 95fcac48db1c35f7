// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "positionservice.h"

#include <QDBusMetaType>

#include <algorithm>
#include <chrono>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Emulator {

PositionService::PositionService(const QDBusConnection &connection, QObject *parent)
    : EmulationService(connection, QLatin1StringView(objectPath), parent)
{
    qDBusRegisterMetaType<TrackArgument>();
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &PositionService::onTimeout);
}

QString PositionService::trackState() const
{
    switch (m_player.state()) {
    case TrackPlayer::State::Playing:
        return u"playing"_s;
    case TrackPlayer::State::Paused:
        return u"paused"_s;
    case TrackPlayer::State::Stopped:
        break;
    }
    return u"stopped"_s;
}

void PositionService::setPosition(double latitude, double longitude, double altitude)
{
    if (!areFinite({latitude, longitude, altitude}))
        return;
    m_latitude = latitude;
    m_longitude = longitude;
    m_altitude = altitude;
    done();
}

void PositionService::setLatitude(double latitude)
{
    setCoordinate(m_latitude, latitude);
}

void PositionService::setLongitude(double longitude)
{
    setCoordinate(m_longitude, longitude);
}

void PositionService::setAltitude(double altitude)
{
    setCoordinate(m_altitude, altitude);
}

void PositionService::loadTrack(const QList<QList<double>> &points)
{
    QList<TrackPlayer::Point> track;
    track.reserve(points.size());
    for (const QList<double> &point : points) {
        if (point.size() != 4 || !std::ranges::all_of(point, [](double value) { return std::isfinite(value); })) {
            fail(u"InvalidArguments"_s, u"Point %1 of the track is not four finite numbers"_s.arg(track.size()));
            return;
        }
        track.append({.latitude = point[0], .longitude = point[1], .altitude = point[2], .interval = point[3]});
    }
    m_player.load(track);
    trackChanged();
    done();
}

void PositionService::startTrack()
{
    if (m_player.size() == 0) {
        fail(u"NoTrack"_s, u"No track is loaded"_s);
        return;
    }
    m_player.start(now());
    takePositionFromTrack();
    trackChanged();
    done();
}

void PositionService::pauseTrack()
{
    m_player.pause(now());
    trackChanged();
    done();
}

void PositionService::stopTrack()
{
    m_player.stop();
    trackChanged();
    done();
}

void PositionService::setTrackLooped(bool looped)
{
    m_player.setLooped(looped, now());
    trackChanged();
    done();
}

void PositionService::setTrackIntervalMode(bool useDefaultInterval)
{
    m_player.setUsesDefaultInterval(useDefaultInterval, now());
    trackChanged();
    done();
}

void PositionService::setTrackSpeed(int speed)
{
    if (speed < 1) {
        fail(u"InvalidArguments"_s, u"The speed %1 is less than 1"_s.arg(speed));
        return;
    }
    m_player.setSpeed(speed, now());
    trackChanged();
    done();
}

void PositionService::goToPositionOnTrack(int index)
{
    if (index < 0 || index >= m_player.size()) {
        fail(u"InvalidArguments"_s, u"The track of %1 points has no point %2"_s.arg(m_player.size()).arg(index));
        return;
    }
    m_player.goTo(index, now());
    takePositionFromTrack();
    trackChanged();
    done();
}

double PositionService::now() const
{
    return std::chrono::duration<double, std::milli>(m_clock.durationElapsed()).count();
}

void PositionService::setCoordinate(double &coordinate, double value)
{
    if (!areFinite({value}))
        return;
    coordinate = value;
    done();
}

void PositionService::takePositionFromTrack()
{
    const TrackPlayer::Point &point = m_player.point();
    m_latitude = point.latitude;
    m_longitude = point.longitude;
    m_altitude = point.altitude;
}

// Wakes at the next point; a very long wait is slept in parts.
void PositionService::trackChanged()
{
    const std::optional<double> wait = m_player.untilNextPoint();
    if (wait)
        m_timer.start(std::chrono::milliseconds(qint64(std::ceil(std::clamp(*wait, 1.0, 3600'000.0)))));
    else
        m_timer.stop();
}

void PositionService::onTimeout()
{
    const int index = m_player.index();
    m_player.advance(now());
    if (m_player.index() != index)
        takePositionFromTrack();
    trackChanged();
    publish();
}

} // namespace Emulator
