// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "common/emulationservice.h"
#include "trackplayer.h"

#include <QElapsedTimer>
#include <QTimer>

namespace Emulator {

/*! A track on the wire, aad: for each point latitude, longitude, altitude and the interval since the previous point. */
using TrackArgument = QList<QList<double>>;

/*!
    The emulated position, as the system bus sees it: set by hand, or moved along a track by a clock of the service's
    own. Latitude and longitude are degrees, the altitude metres.
*/
class PositionService : public EmulationService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "ru.kelo.GeoclueEmulationManagement")

    Q_PROPERTY(double latitude READ latitude)
    Q_PROPERTY(double longitude READ longitude)
    Q_PROPERTY(double altitude READ altitude)
    Q_PROPERTY(int trackLength READ trackLength)
    Q_PROPERTY(int trackIndex READ trackIndex)
    Q_PROPERTY(QString trackState READ trackState)
    Q_PROPERTY(bool trackLooped READ trackLooped)
    Q_PROPERTY(bool trackIntervalMode READ trackIntervalMode)
    Q_PROPERTY(int trackSpeed READ trackSpeed)
    Q_PROPERTY(Emulator::CallCounts calls READ calls)

public:
    static constexpr auto serviceName = "ru.kelo.GeoclueEmulationManagement";
    static constexpr auto objectPath = "/ru/kelo/GeoclueEmulationManagement";

    explicit PositionService(const QDBusConnection &connection, QObject *parent = nullptr);

    double latitude() const { return m_latitude; }
    double longitude() const { return m_longitude; }
    double altitude() const { return m_altitude; }
    int trackLength() const { return m_player.size(); }
    int trackIndex() const { return m_player.index(); }
    QString trackState() const; // "stopped", "playing" or "paused"
    bool trackLooped() const { return m_player.isLooped(); }
    bool trackIntervalMode() const { return m_player.usesDefaultInterval(); }
    int trackSpeed() const { return m_player.speed(); }

public Q_SLOTS:
    Q_SCRIPTABLE void setPosition(double latitude, double longitude, double altitude);
    Q_SCRIPTABLE void setLatitude(double latitude);
    Q_SCRIPTABLE void setLongitude(double longitude);
    Q_SCRIPTABLE void setAltitude(double altitude);
    Q_SCRIPTABLE void loadTrack(const QList<QList<double>> &points);
    Q_SCRIPTABLE void startTrack();
    Q_SCRIPTABLE void pauseTrack();
    Q_SCRIPTABLE void stopTrack();
    Q_SCRIPTABLE void setTrackLooped(bool looped);
    Q_SCRIPTABLE void setTrackIntervalMode(bool useDefaultInterval);
    Q_SCRIPTABLE void setTrackSpeed(int speed);
    Q_SCRIPTABLE void goToPositionOnTrack(int index);

private:
    double now() const;
    void setCoordinate(double &coordinate, double value);
    void takePositionFromTrack();
    void trackChanged();
    void onTimeout();

    double m_latitude = 0;
    double m_longitude = 0;
    double m_altitude = 0;
    TrackPlayer m_player;
    QElapsedTimer m_clock;
    QTimer m_timer;
};

} // namespace Emulator
