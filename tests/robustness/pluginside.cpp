// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/pluginside.h"

#include "robustness/guest.h"
#include "robustness/waiting.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace Robustness {

namespace {

double general(double value)
{
    return u"%1"_s.arg(value).toDouble();
}

double fixed(double value, int decimals)
{
    return u"%1"_s.arg(value, 0, 'f', decimals).toDouble();
}

} // namespace

PluginSide::PluginSide()
{
    gps.setRdbusinvoker(&channel);
    sensors.setRdbusinvoker(&channel);
    gps.setRdbusinvoker(&channel);
    connect(&channel, &RemoteDBusInvokerService::webSocketConnected, this, [this] {
        m_connected = true;
        ++m_connections;
    });
    connect(&channel, &RemoteDBusInvokerService::webSocketDisconnected, this, [this] {
        m_connected = false;
        ++m_disconnections;
    });
    connect(&channel, &RemoteDBusInvokerService::replyReceived, this, [this](const QString &reply) {
        m_replies.append(reply);
    });
}

bool PluginSide::waitUntilCarriedOut()
{
    // Each service takes its calls in their order.
    const auto ask = [this](const QString &service, const QString &property) {
        m_replies.clear();
        channel.callDBusMethod(
            u"system"_s,
            service,
            u'/' + QString(service).replace(u'.', u'/'),
            u"org.freedesktop.DBus.Properties"_s,
            u"Get"_s,
            u"string:%1 string:%2"_s.arg(service, property));
        const QString start = u"Get:%1|%2:"_s.arg(service, property);
        const auto isAnswer = [&start](const QString &reply) { return reply.startsWith(start); };
        return waitFor([&] { return std::ranges::any_of(m_replies, isAnswer); });
    };
    return ask(Guest::sensorService, u"tap"_s) && ask(Guest::positionService, u"trackState"_s);
}

QVariantMap PluginSide::sensorValues() const
{
    QVariantMap values{
        {u"accelerometerX"_s, sensors.accelerometer()->x()},
        {u"accelerometerY"_s, sensors.accelerometer()->y()},
        {u"accelerometerZ"_s, sensors.accelerometer()->z()},
        {u"als"_s, sensors.als()->lux()},
        {u"gyroscopeX"_s, general(sensors.gyroscope()->x())},
        {u"gyroscopeY"_s, general(sensors.gyroscope()->y())},
        {u"gyroscopeZ"_s, general(sensors.gyroscope()->z())},
        {u"magnetometerX"_s, general(sensors.magnetometer()->x())},
        {u"magnetometerY"_s, general(sensors.magnetometer()->y())},
        {u"magnetometerZ"_s, general(sensors.magnetometer()->z())},
        {u"magnetometerCalibrationLevel"_s, sensors.magnetometer()->calibrationLevel()},
        {u"proximity"_s, sensors.proximity()->reflectance()},
        {u"tap"_s, static_cast<int>(sensors.tap()->tapDirection())},
    };
    QStringList enabledSensors;
    for (const auto &[name, enabled] : sensors.sensorsEnabledStates().asKeyValueRange()) {
        if (enabled.toBool())
            enabledSensors.append(name);
    }
    values.insert(u"enabledSensors"_s, enabledSensors);
    return values;
}

QVariantMap PluginSide::positionValues() const
{
    return {
        {u"latitude"_s, fixed(gps.currentPosition()->latitude(), 7)},
        {u"longitude"_s, fixed(gps.currentPosition()->longitude(), 7)},
        {u"altitude"_s, fixed(gps.currentPosition()->altitude(), 2)},
        {u"trackIndex"_s, gps.currentPositionIndex()},
        {u"trackLooped"_s, gps.trackLooped()},
        {u"trackIntervalMode"_s, gps.useDefaultInterval()},
        {u"trackSpeed"_s, gps.trackSpeed()},
    };
}

QStringList PluginSide::takeReplies()
{
    return std::exchange(m_replies, {});
}

} // namespace Robustness
