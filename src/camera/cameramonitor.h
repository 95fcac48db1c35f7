// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "camera/gsthandles.h"

#include <QObject>
#include <QSocketNotifier>

namespace EmulationManagement::Internal {

// Begins to watch the host's cameras. That may take a while: GStreamer looks at all of them. Any thread may call it.
GstDeviceMonitorPointer startDeviceMonitor();

// Tells of cameras that are plugged in and unplugged, until it is stopped or destroyed.
class CameraMonitor : public QObject
{
    Q_OBJECT

public:
    explicit CameraMonitor(GstDeviceMonitorPointer monitor, QObject *parent = nullptr);

    // Those that are there now, whether or not they have been announced.
    GstDeviceListPointer devices() const;

    // Nothing is announced any more. May be called while something is announced.
    void stop();

Q_SIGNALS:
    // Emitted in this object's thread. The device lives as long as the call.
    void cameraAdded(GstDevice *device);
    void cameraRemoved(GstDevice *device);

private:
    void readMessage();

    GstDeviceMonitorPointer m_monitor;
    GstBusPointer m_bus;
    QSocketNotifier m_notifier; // goes before the bus, whose descriptor it watches
};

} // namespace EmulationManagement::Internal
