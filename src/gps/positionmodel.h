// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

namespace EmulationManagement::Internal {

// The position that the emulator was given last. Setters announce every value, also one that is not new.
class PositionModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double latitude READ latitude WRITE setLatitude NOTIFY latitudeChanged)
    Q_PROPERTY(double longitude READ longitude WRITE setLongitude NOTIFY longitudeChanged)
    Q_PROPERTY(double altitude READ altitude WRITE setAltitude NOTIFY altitudeChanged)

public:
    explicit PositionModel(QObject *parent = nullptr);

    // Degrees, positive to the north.
    double latitude() const;
    void setLatitude(double latitude);
    // Degrees, positive to the east.
    double longitude() const;
    void setLongitude(double longitude);
    // Metres.
    double altitude() const;
    void setAltitude(double altitude);

    Q_INVOKABLE void setValues(double latitude, double longitude, double altitude);

Q_SIGNALS:
    void latitudeChanged();
    void longitudeChanged();
    void altitudeChanged();

private:
    double m_latitude = 0;
    double m_longitude = 0;
    double m_altitude = 0;
};

} // namespace EmulationManagement::Internal
