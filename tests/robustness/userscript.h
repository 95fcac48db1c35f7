// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "robustness/pluginside.h"

#include <QList>
#include <QRandomGenerator>
#include <QSet>
#include <QVariantMap>

#include <functional>

namespace TestUtils {
class IdeSettings;
}

namespace Robustness {

/// A user who does anything the pages allow, in random order; and what the emulator and the models should hold then.
///
/// Points lie an hour apart, and nothing plays in the mode of short intervals, so that the emulator's player stands
/// still for as long as a test takes.
class UserScript
{
public:
    UserScript(PluginSide *side, quint32 seed);

    /// What the settings hold before the first connection, which brings it back; the user sets the rest. No value is a
    /// default, so that one that is sent by mistake is noticed. In the names of the guest's properties.
    static QVariantMap storedSensors();
    /// Call before the plugin's side is made.
    static void storeSensors(TestUtils::IdeSettings &settings);
    static QVariantMap initialPosition();

    /// One more thing. Does not wait.
    void doSomething();
    /// One thing after the other while events are handled; false when the condition does not hold within a minute.
    bool workUntil(const std::function<bool()> &condition);
    void loadTrack();
    void changeDeviceModel();

    /// Call on each connection. It keeps the values in force, and undoes the rest on both sides.
    void noteConnection();
    /// Somebody inside the emulator did, and the plugin has asked.
    void noteSwitchedOff(const QString &sensor);

    /// Without the length of the track unless one was loaded since the last connection.
    QVariantMap guestSensors() const { return m_sensors; }
    QVariantMap guestPosition() const { return m_position; }
    QVariantMap modelPosition() const;

private:
    void useSensors();
    void useGyroscopeAndMagnetometer();
    void useGps();
    void useTrack();

    int number(int lowest, int highest) { return m_random.bounded(lowest, highest + 1); }
    /// With no more digits than the wire carries.
    double decimal(int largest, double unit) { return number(-largest, largest) * unit; }
    void setSensors(const QVariantMap &values) { m_sensors.insert(values); }
    void setAccelerometer(int x, int y, int z);
    void switchSensor(const QString &name, bool on);
    void setPosition(double latitude, double longitude, double altitude);
    void takePositionFromTrack(int index);

    PluginSide *m_side;
    QRandomGenerator m_random;
    QVariantMap m_sensors;
    QVariantMap m_position;
    QVariantMap m_positionByHand;
    QSet<QString> m_available;
    QVariantList m_track;
};

} // namespace Robustness
