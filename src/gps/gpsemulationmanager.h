// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/positionmodel.h"
#include "remote/emulationmanager.h"
#include "sensors/settingsmanager.h"

#include <QList>
#include <QVariant>

namespace EmulationManagement::Internal {

// Drives the emulator's GPS: a position set by hand, and a player that moves along an uploaded track with a clock of
// its own. Each call is sent first and then shown here; nothing waits for a reply.
//
// The last position is stored at once and restored on each connection, as are the player's settings, which live no
// longer than the manager. A track is lost with the connection and has to be loaded again.
class GPSEmulationManager : public EmulationManager
{
    Q_OBJECT
    Q_PROPERTY(PositionModel *currentPosition READ currentPosition CONSTANT)
    Q_PROPERTY(bool trackLooped READ trackLooped NOTIFY trackLoopedChanged)
    Q_PROPERTY(bool useDefaultInterval READ useDefaultInterval NOTIFY defaultIntervalUsingChanged)
    Q_PROPERTY(int trackSpeed READ trackSpeed NOTIFY trackSpeedChanged)
    Q_PROPERTY(int currentPositionIndex READ currentPositionIndex WRITE setCurrentPositionIndex NOTIFY
                   currentPositionIndexChanged)
    // Without a signal: whoever needs it asks at the moment of need.
    Q_PROPERTY(bool trackLoaded READ trackLoaded)

public:
    explicit GPSEmulationManager(QObject *parent = nullptr);

    QString bus() const override;
    QString dbusService() const override;
    QString dbusObject() const override;
    QString dbusInterface() const override;
    // The service's answers carry nothing that is needed here.
    void processDBusMethodsReturnValues(const QList<QString> &replyFields) override;

    // Owned by the manager.
    PositionModel *currentPosition() const;
    bool trackLooped() const;
    // Rather than the points' own intervals.
    bool useDefaultInterval() const;
    // A factor, 1 for the points' own intervals.
    int trackSpeed() const;
    // The current track point. Setting it here sends nothing.
    int currentPositionIndex() const;
    void setCurrentPositionIndex(int index);
    // A track was uploaded since the last connection.
    bool trackLoaded() const;

    // Degrees, degrees, metres. The emulator is not told.
    Q_INVOKABLE void setLocalPosition(double latitude, double longitude, double altitude);
    Q_INVOKABLE void setPosition(double latitude, double longitude, double altitude);
    Q_INVOKABLE void setLatitude(double latitude);
    Q_INVOKABLE void setLongitude(double longitude);
    Q_INVOKABLE void setAltitude(double altitude);

    // Maps with "latitude", "longitude" (degrees), "altitude" (metres) and "interval" (ms since the point before), as
    // numbers or as texts with "." as decimal point. What is missing or does not convert counts as 0.
    Q_INVOKABLE void loadTrack(const QList<QVariant> &trackPoints);
    Q_INVOKABLE void startTrack();
    Q_INVOKABLE void pauseTrack();
    Q_INVOKABLE void stopTrack();
    Q_INVOKABLE void setTrackLooped(bool looped);
    Q_INVOKABLE void setTrackIntervalMode(bool useDefaultInterval);
    Q_INVOKABLE void setTrackSpeed(int speed);
    Q_INVOKABLE void goToPositionOnTrack(int index);

    // Runs on each connection: the service has to be told everything anew, and has lost the track.
    void setupGPSData();

Q_SIGNALS:
    void trackLoopedChanged();
    void defaultIntervalUsingChanged();
    void trackSpeedChanged();
    void currentPositionIndexChanged();

private:
    PositionModel *m_currentPosition;
    SettingsManager m_settings;
    bool m_trackLooped = false;
    bool m_useDefaultInterval = false;
    int m_trackSpeed = 1;
    int m_currentPositionIndex = 0;
    bool m_trackLoaded = false;
};

} // namespace EmulationManagement::Internal
