// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmealogloader.h"

#include "gps/gpslog.h"

#include <utility>

namespace EmulationManagement::Internal {

NmeaLogLoader::NmeaLogLoader(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(1); // those in front of the last one are stopped
}

NmeaLogLoader::~NmeaLogLoader()
{
    m_stop.request_stop();
    m_pool.waitForDone(); // the job refers to this object; it looks at the stop every thousand lines
}

bool NmeaLogLoader::isBusy() const
{
    return m_busy;
}

void NmeaLogLoader::load(const QString &text)
{
    m_stop.request_stop();
    m_stop = {};
    m_pool.start([this, text, stop = m_stop.get_token()] {
        NmeaLog log = parseNmeaLog(text, currentTime(), stop);
        if (stop.stop_requested())
            return;
        QMetaObject::invokeMethod(
            this,
            [this, stop, log = std::move(log)] {
                if (!stop.stop_requested())
                    finish(log);
            },
            Qt::QueuedConnection);
    });
    setBusy(true);
}

void NmeaLogLoader::cancel()
{
    m_stop.request_stop();
    setBusy(false);
}

void NmeaLogLoader::setBusy(bool busy)
{
    if (std::exchange(m_busy, busy) != busy)
        Q_EMIT busyChanged();
}

void NmeaLogLoader::finish(const NmeaLog &log)
{
    const std::stop_token stop = m_stop.get_token();
    setBusy(false);
    if (stop.stop_requested()) // whoever heard of it loads again already, or has deleted this
        return;
    if (const auto *error = std::get_if<NmeaError>(&log)) {
        qCDebug(gpsLog) << "A log is refused:" << error->message << "line" << error->incorrectLine;
        Q_EMIT failed(error->message, error->incorrectLine);
    } else {
        const auto &points = std::get<QList<TrackPoint>>(log);
        qCDebug(gpsLog) << "A log has" << points.size() << "points";
        Q_EMIT loaded(points);
    }
}

} // namespace EmulationManagement::Internal
