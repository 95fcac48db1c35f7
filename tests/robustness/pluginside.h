// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gps/gpsemulationmanager.h"
#include "sensors/sensorsemulationmanager.h"

#include <QStringList>

namespace Robustness {

/// The channel and its managers, bound as the plugin binds them.
class PluginSide : public QObject
{
    Q_OBJECT

public:
    PluginSide();

    EmulationManagement::Internal::RemoteDBusInvokerService channel;
    EmulationManagement::Internal::GPSEmulationManager gps;
    EmulationManagement::Internal::SensorsEmulationManager sensors;

    bool isConnected() const { return m_connected; }
    int connections() const { return m_connections; }
    int disconnections() const { return m_disconnections; }

    /// Until both services have carried out everything that was sent before; the connection must hold meanwhile.
    bool waitUntilCarriedOut();

    /// What the models say, as the guest's properties would: numbers as the wire writes them.
    QVariantMap sensorValues() const;
    QVariantMap positionValues() const;

    /// Replies that have come since the last call.
    QStringList takeReplies();

private:
    bool m_connected = false;
    int m_connections = 0;
    int m_disconnections = 0;
    QStringList m_replies;
};

} // namespace Robustness
