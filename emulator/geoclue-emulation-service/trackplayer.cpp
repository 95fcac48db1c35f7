// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trackplayer.h"

#include <algorithm>

namespace Emulator {

void TrackPlayer::load(const QList<Point> &points)
{
    m_points = points;
    stop();
}

void TrackPlayer::start(double now)
{
    advance(now);
    if (m_points.isEmpty() || m_state == State::Playing)
        return;
    if (m_state == State::Stopped && isAtEnd())
        m_index = 0;
    m_state = State::Playing;
    m_now = now;
    // A track of one point that is not looped is over as soon as it starts.
    advance(now);
}

void TrackPlayer::pause(double now)
{
    advance(now);
    if (m_state == State::Playing)
        m_state = State::Paused;
}

void TrackPlayer::stop()
{
    m_state = State::Stopped;
    m_index = 0;
    m_waited = 0;
}

void TrackPlayer::goTo(int index, double now)
{
    advance(now);
    m_index = index;
    m_waited = 0;
    advance(now);
}

void TrackPlayer::setLooped(bool looped, double now)
{
    advance(now);
    m_looped = looped;
}

void TrackPlayer::setUsesDefaultInterval(bool usesDefaultInterval, double now)
{
    advance(now);
    m_usesDefaultInterval = usesDefaultInterval;
}

void TrackPlayer::setSpeed(int speed, double now)
{
    advance(now);
    m_speed = speed;
}

void TrackPlayer::advance(double now)
{
    double elapsed = std::max(0.0, now - m_now);
    m_now = now;
    while (m_state == State::Playing) {
        if (isAtEnd() && !m_looped) {
            m_state = State::Stopped;
            m_waited = 0;
            return;
        }
        const double remaining = std::max(0.0, wait() - m_waited) / rate();
        if (elapsed < remaining) {
            m_waited += elapsed * rate();
            return;
        }
        elapsed -= remaining;
        m_waited = 0;
        m_index = isAtEnd() ? 0 : m_index + 1;
    }
}

std::optional<double> TrackPlayer::untilNextPoint() const
{
    if (m_state != State::Playing)
        return std::nullopt;
    return std::max(0.0, wait() - m_waited) / rate();
}

double TrackPlayer::wait() const
{
    if (isAtEnd() || m_usesDefaultInterval)
        return defaultInterval;
    return std::max(0.0, m_points.at(m_index + 1).interval);
}

} // namespace Emulator
