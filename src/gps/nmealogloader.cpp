// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmealogloader.h"

#include "gps/nmealog.h"

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
    m_pool.waitForDone(); // the job refers to this object
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
        const auto finish = [this, stop, log = parseNmeaLog(text, currentTime(), stop)] {
            if (stop.stop_requested())
                return;
            m_busy = false;
            Q_EMIT busyChanged();
            if (stop.stop_requested()) // loads again already, or is gone
                return;
            if (const auto *error = std::get_if<NmeaError>(&log))
                Q_EMIT failed(error->message, error->incorrectLine);
            else
                Q_EMIT loaded(std::get<QList<TrackPoint>>(log));
        };
        if (!stop.stop_requested())
            QMetaObject::invokeMethod(this, finish, Qt::QueuedConnection);
    });
    if (!std::exchange(m_busy, true))
        Q_EMIT busyChanged();
}

} // namespace EmulationManagement::Internal
