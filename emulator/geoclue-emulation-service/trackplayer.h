// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>

#include <optional>

namespace Emulator {

/*!
    The clock of a track: which of its points is the current one at a given time.

    Times are milliseconds on a clock that never runs backwards; the caller passes them in. Between two points lies the
    later one's interval, or 2000 ms in default interval mode, divided by the speed. A looped track goes from its last
    point to its first after 2000 ms, whatever the speed; any other stops at its last point.
*/
class TrackPlayer
{
public:
    struct Point
    {
        double latitude = 0;  // degrees
        double longitude = 0; // degrees
        double altitude = 0;  // metres
        double interval = 0;  // ms since the previous point
    };

    enum class State { Stopped, Playing, Paused };

    static constexpr double defaultInterval = 2000;

    State state() const { return m_state; }
    int index() const { return m_index; }
    int size() const { return int(m_points.size()); }
    bool isLooped() const { return m_looped; }
    bool usesDefaultInterval() const { return m_usesDefaultInterval; }
    int speed() const { return m_speed; }

    /*! The current point; the track must not be empty. */
    const Point &point() const { return m_points.at(m_index); }

    /*! Replaces the track; it is stopped, at its first point. */
    void load(const QList<Point> &points);

    /*! Plays on from the current point; a finished track from its first. Nothing happens without a track. */
    void start(double now);
    void pause(double now);

    /*! Stops and goes back to the first point. */
    void stop();

    /*! Makes \a index, which must lie in the track, the current one; a playing track waits its whole interval anew. */
    void goTo(int index, double now);

    void setLooped(bool looped, double now);
    void setUsesDefaultInterval(bool usesDefaultInterval, double now);

    /*! \a speed is 1 or more. */
    void setSpeed(int speed, double now);

    /*! Goes on to \a now. */
    void advance(double now);

    /*! The time from the last advance() to the next change of the current point; nothing when none will come. */
    std::optional<double> untilNextPoint() const;

private:
    bool isAtEnd() const { return m_index == size() - 1; }
    double wait() const;
    double rate() const { return isAtEnd() ? 1 : m_speed; }

    QList<Point> m_points;
    State m_state = State::Stopped;
    int m_index = 0;
    int m_speed = 1;
    bool m_looped = false;
    bool m_usesDefaultInterval = false;
    double m_now = 0;
    double m_waited = 0; // of wait(), at the current point
};

} // namespace Emulator
