// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/gpsemulationmanager.h"

#include "gps/coordinates.h"
#include "gps/gpslog.h"
#include "gps/playertrackpoint.h"
#include "remote/dbusarguments.h"
#include "remote/finitenumber.h"

#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr qsizetype usualPointLength = 40;

QString degrees(double value)
{
    return DBusArguments::real(value, degreesDecimals);
}

QString metres(double value)
{
    return DBusArguments::real(value, metresDecimals);
}

void appendTrackPoint(QString &text, double latitude, double longitude, double altitude, double interval)
{
    DBusArguments::appendFixedNumber(text, latitude, degreesDecimals);
    text += u',';
    DBusArguments::appendFixedNumber(text, longitude, degreesDecimals);
    text += u',';
    DBusArguments::appendFixedNumber(text, altitude, metresDecimals);
    text += u',';
    DBusArguments::appendGeneralNumber(text, interval);
}

void appendTrackPoint(QString &text, const QVariant &trackPoint)
{
    if (const auto *point = get_if<PlayerTrackPoint>(&trackPoint)) { // no need to go through texts
        appendTrackPoint(
            text, point->latitudeNumber(), point->longitudeNumber(), point->altitudeNumber(), point->interval());
        return;
    }
    const QVariantMap map = trackPoint.toMap();
    const auto number = [&map](const QString &key) { return map.value(key).toDouble(); };
    appendTrackPoint(text, number(u"latitude"_s), number(u"longitude"_s), number(u"altitude"_s), number(u"interval"_s));
}

} // namespace

GPSEmulationManager::GPSEmulationManager(QObject *parent)
    : EmulationManager(parent)
    , m_currentPosition(new PositionModel(this))
{
    // The name under which the property's type is looked up.
    qRegisterMetaType<PositionModel *>("PositionModel*");
    connect(this, &EmulationManager::emulatorConnected, this, &GPSEmulationManager::setupGPSData);
}

QString GPSEmulationManager::bus() const
{
    return u"system"_s;
}

QString GPSEmulationManager::dbusService() const
{
    return u"ru.kelo.GeoclueEmulationManagement"_s;
}

QString GPSEmulationManager::dbusObject() const
{
    return u"/ru/kelo/GeoclueEmulationManagement"_s;
}

QString GPSEmulationManager::dbusInterface() const
{
    return dbusService();
}

void GPSEmulationManager::processDBusMethodsReturnValues([[maybe_unused]] const QList<QString> &replyFields) {}

PositionModel *GPSEmulationManager::currentPosition() const
{
    return m_currentPosition;
}

bool GPSEmulationManager::trackLooped() const
{
    return m_trackLooped;
}

bool GPSEmulationManager::useDefaultInterval() const
{
    return m_useDefaultInterval;
}

int GPSEmulationManager::trackSpeed() const
{
    return m_trackSpeed;
}

int GPSEmulationManager::currentPositionIndex() const
{
    return m_currentPositionIndex;
}

void GPSEmulationManager::setCurrentPositionIndex(int index)
{
    m_currentPositionIndex = index;
    Q_EMIT currentPositionIndexChanged();
}

bool GPSEmulationManager::trackLoaded() const
{
    return m_trackLoaded;
}

void GPSEmulationManager::setLocalPosition(double latitude, double longitude, double altitude)
{
    m_currentPosition->setValues(finiteOrZero(latitude), finiteOrZero(longitude), finiteOrZero(altitude));
    m_settings.saveGpsValues(
        m_currentPosition->latitude(), m_currentPosition->longitude(), m_currentPosition->altitude());
}

void GPSEmulationManager::setPosition(double latitude, double longitude, double altitude)
{
    callDBusMethod(u"setPosition"_s, DBusArguments::joined({degrees(latitude), degrees(longitude), metres(altitude)}));
    setLocalPosition(latitude, longitude, altitude);
}

void GPSEmulationManager::setLatitude(double latitude)
{
    callDBusMethod(u"setLatitude"_s, degrees(latitude));
    m_currentPosition->setLatitude(finiteOrZero(latitude));
    m_settings.saveGpsLatitude(m_currentPosition->latitude());
}

void GPSEmulationManager::setLongitude(double longitude)
{
    callDBusMethod(u"setLongitude"_s, degrees(longitude));
    m_currentPosition->setLongitude(finiteOrZero(longitude));
    m_settings.saveGpsLongitude(m_currentPosition->longitude());
}

void GPSEmulationManager::setAltitude(double altitude)
{
    callDBusMethod(u"setAltitude"_s, metres(altitude));
    m_currentPosition->setAltitude(finiteOrZero(altitude));
    m_settings.saveGpsAltitude(m_currentPosition->altitude());
}

void GPSEmulationManager::loadTrack(const QList<QVariant> &trackPoints)
{
    QString arguments = u"array:array:double:"_s;
    arguments.reserve(arguments.size() + trackPoints.size() * usualPointLength);
    for (qsizetype i = 0; i < trackPoints.size(); ++i) {
        if (i > 0)
            arguments += u';';
        appendTrackPoint(arguments, trackPoints.at(i));
    }
    qCDebug(gpsLog) << "Loading a track of" << trackPoints.size() << "points";
    callDBusMethod(u"loadTrack"_s, arguments);
    // Silently: whoever loads a track selects its first point.
    m_currentPositionIndex = 0;
    m_trackLoaded = true;
}

void GPSEmulationManager::startTrack()
{
    callDBusMethod(u"startTrack"_s, {});
}

void GPSEmulationManager::pauseTrack()
{
    callDBusMethod(u"pauseTrack"_s, {});
}

void GPSEmulationManager::stopTrack()
{
    callDBusMethod(u"stopTrack"_s, {});
    setCurrentPositionIndex(0);
}

void GPSEmulationManager::setTrackLooped(bool looped)
{
    callDBusMethod(u"setTrackLooped"_s, DBusArguments::boolean(looped));
    m_trackLooped = looped;
    Q_EMIT trackLoopedChanged();
}

void GPSEmulationManager::setTrackIntervalMode(bool useDefaultInterval)
{
    callDBusMethod(u"setTrackIntervalMode"_s, DBusArguments::boolean(useDefaultInterval));
    m_useDefaultInterval = useDefaultInterval;
    Q_EMIT defaultIntervalUsingChanged();
}

void GPSEmulationManager::setTrackSpeed(int speed)
{
    callDBusMethod(u"setTrackSpeed"_s, DBusArguments::int32(speed));
    m_trackSpeed = speed;
    Q_EMIT trackSpeedChanged();
}

void GPSEmulationManager::goToPositionOnTrack(int index)
{
    callDBusMethod(u"goToPositionOnTrack"_s, DBusArguments::int32(index));
    setCurrentPositionIndex(index);
}

void GPSEmulationManager::setupGPSData()
{
    qCDebug(gpsLog) << "Setting the service up";
    stopTrack();
    m_trackLoaded = false;
    setTrackLooped(m_trackLooped);
    setTrackIntervalMode(m_useDefaultInterval);
    setTrackSpeed(m_trackSpeed);
    setPosition(m_settings.readGpsLatitude(), m_settings.readGpsLongitude(), m_settings.readGpsAltitude());
}

} // namespace EmulationManagement::Internal
