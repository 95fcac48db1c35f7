// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/userscript.h"

#include "robustness/waiting.h"
#include "utils/idesettings.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QOrientationReading>

#include <chrono>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace EmulationManagement::Internal;

namespace Robustness {

namespace {

const QStringList allSensors{
    u"accelerometer"_s,
    u"als"_s,
    u"compass"_s,
    u"gyroscope"_s,
    u"magnetometer"_s,
    u"orientation"_s,
    u"proximity"_s,
    u"tap"_s,
};

QVariantMap vector(const QString &sensor, const QVariant &x, const QVariant &y, const QVariant &z)
{
    return {{sensor + u'X', x}, {sensor + u'Y', y}, {sensor + u'Z', z}};
}

QVariantMap coordinates(double latitude, double longitude, double altitude)
{
    return {{u"latitude"_s, latitude}, {u"longitude"_s, longitude}, {u"altitude"_s, altitude}};
}

double asWritten(double value)
{
    return u"%1"_s.arg(value).toDouble();
}

} // namespace

UserScript::UserScript(PluginSide *side, quint32 seed)
    : m_side(side)
    , m_random(seed)
    , m_sensors(storedSensors())
    , m_position(initialPosition())
    , m_positionByHand(coordinates(0, 0, 0))
    , m_available(allSensors.cbegin(), allSensors.cend())
{
}

QVariantMap UserScript::storedSensors()
{
    QVariantMap values{
        {u"als"_s, 37},
        {u"magnetometerCalibrationLevel"_s, 1},
        {u"proximity"_s, 3},
        {u"tap"_s, 7},
        {u"enabledSensors"_s, allSensors},
    };
    values.insert(vector(u"accelerometer"_s, -11, 222, 333));
    values.insert(vector(u"gyroscope"_s, 0.125, -2.5, 3.75));
    values.insert(vector(u"magnetometer"_s, 1.5e-05, -2.5e-05, 3.5e-05));
    return values;
}

void UserScript::storeSensors(TestUtils::IdeSettings &settings)
{
    const QVariantMap values = storedSensors();
    const auto store = [&](const QString &key, const QString &property) {
        settings.setValue(u"emulationmanagement/"_s + key, values.value(property));
    };
    for (const QString &sensor : {u"accelerometer"_s, u"gyroscope"_s, u"magnetometer"_s}) {
        store(sensor + u"_x"_s, sensor + u'X');
        store(sensor + u"_y"_s, sensor + u'Y');
        store(sensor + u"_z"_s, sensor + u'Z');
    }
    store(u"als"_s, u"als"_s);
    store(u"magnetometer_calib_level"_s, u"magnetometerCalibrationLevel"_s);
    store(u"proximity_reflectance"_s, u"proximity"_s);
    store(u"tap"_s, u"tap"_s);
}

QVariantMap UserScript::initialPosition()
{
    QVariantMap values{
        {u"trackIndex"_s, 0},
        {u"trackState"_s, u"stopped"_s},
        {u"trackLooped"_s, false},
        {u"trackIntervalMode"_s, false},
        {u"trackSpeed"_s, 1},
    };
    values.insert(coordinates(0, 0, 0));
    return values;
}

QVariantMap UserScript::modelPosition() const
{
    QVariantMap values = m_position;
    values.insert(m_positionByHand);
    values.remove(u"trackState"_s); // which the manager does not know
    values.remove(u"trackLength"_s);
    return values;
}

void UserScript::noteConnection()
{
    QStringList enabledSensors(m_available.cbegin(), m_available.cend());
    enabledSensors.sort();
    m_sensors.insert(u"enabledSensors"_s, enabledSensors);

    m_position.insert(m_positionByHand);
    m_position.insert({{u"trackIndex"_s, 0}, {u"trackState"_s, u"stopped"_s}});
    m_position.remove(u"trackLength"_s);
    m_track.clear();
}

void UserScript::noteSwitchedOff(const QString &sensor)
{
    QStringList enabled = m_sensors.value(u"enabledSensors"_s).toStringList();
    enabled.removeAll(sensor);
    m_sensors.insert(u"enabledSensors"_s, enabled);
}

void UserScript::doSomething()
{
    const int chance = number(1, 100);
    if (chance <= 35)
        useSensors();
    else if (chance <= 60)
        useGyroscopeAndMagnetometer();
    else if (chance <= 75)
        useGps();
    else if (chance <= 95)
        useTrack();
    else if (chance <= 98)
        switchSensor(allSensors.at(number(0, int(allSensors.size()) - 1)), number(0, 1) == 1);
    else
        changeDeviceModel();
}

bool UserScript::workUntil(const std::function<bool()> &condition)
{
    const QDeadlineTimer limit(1min);
    while (!condition()) {
        if (limit.hasExpired())
            return false;
        doSomething();
        QCoreApplication::processEvents();
        deleteWhatIsDue();
    }
    return true;
}

void UserScript::setAccelerometer(int x, int y, int z)
{
    setSensors(vector(u"accelerometer"_s, x, y, z));
}

void UserScript::useSensors()
{
    SensorsEmulationManager &manager = m_side->sensors;
    const int value = number(-3000, 3000);
    const QList<std::function<void()>> actions{
        [&] {
            manager.setAccelerometerValues(value, -value, 1);
            setAccelerometer(value, -value, 1);
        },
        [&] {
            manager.setAccelerometerX(value);
            setSensors({{u"accelerometerX"_s, value}});
        },
        [&] {
            manager.setAccelerometerY(value);
            setSensors({{u"accelerometerY"_s, value}});
        },
        [&] {
            manager.setAccelerometerZ(value);
            setSensors({{u"accelerometerZ"_s, value}});
        },
        [&] {
            manager.setOrientation(QOrientationReading::LeftUp);
            setAccelerometer(-100, 0, 0);
        },
        [&] {
            manager.setAlsLuxValue(std::abs(value));
            setSensors({{u"als"_s, std::abs(value)}});
        },
        [&] {
            manager.setAlsLightLevel(AlsModel::LightLevel::Sunny);
            setSensors({{u"als"_s, 2500}});
        },
        [&] {
            manager.setProximitySensorReflectanceValue(value);
            setSensors({{u"proximity"_s, value}});
        },
        [&] {
            manager.setProximitySensorNearValue(true);
            setSensors({{u"proximity"_s, 0}});
        },
        [&] {
            manager.setTapSensorValue(TapModel::TapDirection::Z_Pos);
            setSensors({{u"tap"_s, 6}});
        },
        [&] {
            manager.setDefaultValues();
            setSensors({
                {u"als"_s, 100},
                {u"magnetometerCalibrationLevel"_s, 0},
                {u"proximity"_s, 5},
                {u"tap"_s, -1},
            });
            setAccelerometer(0, 0, 1000);
            setSensors(vector(u"gyroscope"_s, 0.0, 0.0, 1.14592));
            setSensors(vector(u"magnetometer"_s, 4.3e-05, 0.0, 0.0));
        },
    };
    actions.at(number(0, int(actions.size()) - 1))();
}

void UserScript::useGyroscopeAndMagnetometer()
{
    SensorsEmulationManager &manager = m_side->sensors;
    const double x = decimal(300'000, 1e-3);
    const double field = decimal(100'000, 1e-9);
    const int level = number(0, 3);
    const int azimuth = number(0, 359);
    const QList<std::function<void()>> actions{
        [&] {
            manager.setGyroscopeValues(x, -x, 0.5);
            setSensors(vector(u"gyroscope"_s, asWritten(x), asWritten(-x), 0.5));
        },
        [&] {
            manager.setGyroscopeX(x);
            setSensors({{u"gyroscopeX"_s, asWritten(x)}});
        },
        [&] {
            manager.setGyroscopeY(x);
            setSensors({{u"gyroscopeY"_s, asWritten(x)}});
        },
        [&] {
            manager.setGyroscopeZ(x);
            setSensors({{u"gyroscopeZ"_s, asWritten(x)}});
        },
        [&] {
            manager.setMagnetometerValues(field, -field, 1e-06);
            setSensors(vector(u"magnetometer"_s, asWritten(field), asWritten(-field), 1e-06));
        },
        [&] {
            manager.setMagnetometerX(field);
            setSensors({{u"magnetometerX"_s, asWritten(field)}});
        },
        [&] {
            manager.setMagnetometerY(field);
            setSensors({{u"magnetometerY"_s, asWritten(field)}});
        },
        [&] {
            manager.setMagnetometerZ(field);
            setSensors({{u"magnetometerZ"_s, asWritten(field)}});
        },
        [&] {
            manager.setCompassCalibrationLevel(level);
            setSensors({{u"magnetometerCalibrationLevel"_s, level}});
        },
        [&] {
            manager.setCompassAzimuth(azimuth);
            setAccelerometer(0, 0, 1000);
            const double angle = -azimuth * (std::numbers::pi / 180);
            const double radius = 4.358898943540674e-05;
            setSensors(vector(
                u"magnetometer"_s, asWritten(radius * std::sin(angle)), asWritten(radius * std::cos(angle)), 0.0));
        },
        [&] { manager.setMagneticFieldValues(x, -x, field); }, // the emulator never hears of it
    };
    actions.at(number(0, int(actions.size()) - 1))();
}

// As the check box of a sensor does.
void UserScript::switchSensor(const QString &name, bool on)
{
    if (on)
        m_side->sensors.enableSensor(name);
    else
        m_side->sensors.disableSensor(name);
    m_side->sensors.setSensorEnabled(name, on);
    QStringList enabled = m_sensors.value(u"enabledSensors"_s).toStringList();
    enabled.removeAll(name);
    if (on)
        enabled.append(name);
    enabled.sort();
    m_sensors.insert(u"enabledSensors"_s, enabled);
}

// As the plugin does when the emulator gets another one: a model that nobody knows has everything.
void UserScript::changeDeviceModel()
{
    QStringList enabled = allSensors;
    if (number(0, 3) == 0) {
        m_side->sensors.makeAllSensorsAvailable();
    } else {
        for (const QString &name : allSensors) {
            const bool available = number(0, 2) != 0;
            m_side->sensors.setSensorAvailable(name, available);
            if (!available)
                enabled.removeAll(name);
        }
    }
    m_available = QSet<QString>(enabled.cbegin(), enabled.cend());
    m_sensors.insert(u"enabledSensors"_s, enabled);
}

void UserScript::setPosition(double latitude, double longitude, double altitude)
{
    m_positionByHand = coordinates(latitude, longitude, altitude);
    m_position.insert(m_positionByHand);
}

void UserScript::useGps()
{
    GPSEmulationManager &manager = m_side->gps;
    const auto text = [this](int largest, int decimals) {
        return QString::number(decimal(largest * 1000, 1e-3), 'f', decimals).toDouble();
    };
    const double latitude = text(90, 7);
    const double longitude = text(180, 7);
    const double altitude = text(5000, 2);
    const auto setOne = [this](const QString &key, double value) {
        m_positionByHand.insert(key, value);
        m_position.insert(key, value);
    };
    switch (number(0, 4)) {
    case 0:
        manager.setLatitude(latitude);
        return setOne(u"latitude"_s, latitude);
    case 1:
        manager.setLongitude(longitude);
        return setOne(u"longitude"_s, longitude);
    case 2:
        manager.setAltitude(altitude);
        return setOne(u"altitude"_s, altitude);
    default:
        manager.setPosition(latitude, longitude, altitude);
        setPosition(latitude, longitude, altitude);
    }
}

void UserScript::loadTrack()
{
    m_track.clear();
    for (int points = number(2, 30); points > 0; --points) {
        m_track.append(QVariantMap{
            {u"latitude"_s, QString::number(decimal(90'000, 1e-3), 'f', 7)},
            {u"longitude"_s, QString::number(decimal(180'000, 1e-3), 'f', 7)},
            {u"altitude"_s, QString::number(decimal(5'000'000, 1e-3), 'f', 2)},
            {u"interval"_s, 3'600'000},
        });
    }
    m_side->gps.loadTrack(m_track);
    m_position.insert({{u"trackIndex"_s, 0}, {u"trackState"_s, u"stopped"_s}, {u"trackLength"_s, int(m_track.size())}});
}

void UserScript::takePositionFromTrack(int index)
{
    const QVariantMap point = m_track.at(index).toMap();
    for (const QString &key : {u"latitude"_s, u"longitude"_s, u"altitude"_s})
        m_position.insert(key, point.value(key).toDouble());
}

void UserScript::useTrack()
{
    GPSEmulationManager &manager = m_side->gps;
    if (!manager.trackLoaded()) // the page uploads it again when a row is chosen
        loadTrack();
    const bool playing = m_position.value(u"trackState"_s) == u"playing"_s;
    const int index = m_position.value(u"trackIndex"_s).toInt();
    switch (number(0, 6)) {
    case 0:
        loadTrack();
        break;
    case 1: { // not the last point, from which a looped track goes on by itself
        const int to = number(0, int(m_track.size()) - 2);
        manager.goToPositionOnTrack(to);
        m_position.insert(u"trackIndex"_s, to);
        takePositionFromTrack(to);
        break;
    }
    case 2:
        if (m_position.value(u"trackIntervalMode"_s).toBool())
            break;
        manager.startTrack();
        m_position.insert(u"trackState"_s, u"playing"_s);
        takePositionFromTrack(index);
        break;
    case 3:
        manager.pauseTrack();
        if (playing)
            m_position.insert(u"trackState"_s, u"paused"_s);
        break;
    case 4:
        manager.stopTrack();
        m_position.insert({{u"trackIndex"_s, 0}, {u"trackState"_s, u"stopped"_s}});
        break;
    case 5: {
        const int speed = number(1, 5);
        manager.setTrackSpeed(speed);
        m_position.insert(u"trackSpeed"_s, speed);
        break;
    }
    default: {
        const bool on = number(0, 1) == 1;
        if (number(0, 1) == 1) {
            manager.setTrackLooped(on);
            m_position.insert(u"trackLooped"_s, on);
        } else if (!playing) {
            manager.setTrackIntervalMode(on);
            m_position.insert(u"trackIntervalMode"_s, on);
        }
    }
    }
}

} // namespace Robustness
