// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/trackpoint.h"

#include <QObject>
#include <QString>

namespace EmulationManagement::Internal {

// A track point as it is handed to the emulator's player: its coordinates are the texts that the user sees, so what
// is written with a group separator does not convert to a number any more.
//
// The texts are made when they are asked for, which keeps a million points small.
class PlayerTrackPoint
{
    Q_GADGET
    Q_PROPERTY(QString latitude READ latitude FINAL)
    Q_PROPERTY(QString longitude READ longitude FINAL)
    Q_PROPERTY(QString altitude READ altitude FINAL)
    Q_PROPERTY(double interval READ interval FINAL)

public:
    PlayerTrackPoint() = default;
    explicit PlayerTrackPoint(const TrackPoint &point);

    // Degrees with 7 decimals, metres with 2, in the language of the table: "." as decimal point, "," between groups.
    QString latitude() const;
    QString longitude() const;
    QString altitude() const;
    // Milliseconds since the point before.
    double interval() const;

    // What the texts convert to. A text that does not convert counts as 0.
    double latitudeNumber() const;
    double longitudeNumber() const;
    double altitudeNumber() const;

private:
    double m_latitude = 0;
    double m_longitude = 0;
    double m_altitude = 0;
    double m_interval = 0;
};

} // namespace EmulationManagement::Internal
