// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

namespace EmulationManagement::Internal {

/// A point of a track. Small, because tracks of real trips have hundreds of thousands.
struct TrackPoint
{
    Q_GADGET
    Q_PROPERTY(QString format READ formatName CONSTANT FINAL)
    Q_PROPERTY(double latitude MEMBER latitude CONSTANT FINAL)
    Q_PROPERTY(double longitude MEMBER longitude CONSTANT FINAL)
    Q_PROPERTY(double altitude MEMBER altitude CONSTANT FINAL)
    Q_PROPERTY(int index MEMBER index CONSTANT FINAL)
    Q_PROPERTY(double time MEMBER time CONSTANT FINAL)
    Q_PROPERTY(double interval MEMBER interval CONSTANT FINAL)
    Q_PROPERTY(QString timeString READ timeString CONSTANT FINAL)

public:
    /// The sentence that the point was read from.
    enum class Format : quint8 { Rmc, Gga, Gll, Wpl };

    /// The id of the sentence, such as "$GPRMC".
    QString formatName() const;
    /// The time as hours, minutes, seconds and tenths, such as "00:01:05.3"; see millisToPointTime().
    QString timeString() const;

    friend bool operator==(const TrackPoint &, const TrackPoint &) = default;

    /// Degrees, negative in the south and in the west; 7 decimals.
    double latitude = 0;
    double longitude = 0;
    /// Metres; 2 decimals. 0 for sentences without one.
    double altitude = 0;
    /// Whole milliseconds from the first point to this one; 0 for points without a time, not a number where the log's
    /// time is none.
    double time = 0;
    /// Whole milliseconds from the previous point's time to this one's.
    double interval = 0;
    /// The position in the track, from 0.
    int index = 0;
    Format format = Format::Rmc;
};

} // namespace EmulationManagement::Internal
