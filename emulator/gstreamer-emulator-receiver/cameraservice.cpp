// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cameraservice.h"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Emulator {

CameraService::CameraService(const QDBusConnection &connection, const StreamReceiver &receiver, QObject *parent)
    : EmulationService(connection, QLatin1StringView(objectPath), parent)
    , m_receiver(receiver)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(2s);
    m_announcement.setSingleShot(true);
    m_announcement.setInterval(500ms);
    connect(&m_silence, &QTimer::timeout, this, &CameraService::publish);
    connect(&m_announcement, &QTimer::timeout, this, &CameraService::publish);
    connect(&m_receiver, &StreamReceiver::framesReceived, this, &CameraService::onFramesReceived);
}

void CameraService::onFramesReceived()
{
    m_silence.start();
    if (!m_announcement.isActive())
        m_announcement.start();
}

} // namespace Emulator
