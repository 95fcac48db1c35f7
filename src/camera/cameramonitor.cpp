// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameramonitor.h"

#include "camera/cameracapabilities.h"
#include "camera/cameralog.h"
#include "camera/cameraproviders.h"

#include <utility>

namespace EmulationManagement::Internal {

namespace {

// Messages are posted by other threads. A watch of GLib's would bring them here only if Qt's event loop ran GLib's,
// which QT_NO_GLIB forbids; a descriptor can be watched by every event loop of Qt's.
qintptr descriptorOf(GstBus *bus)
{
    GPollFD descriptor = {};
    gst_bus_get_pollfd(bus, &descriptor);
    return descriptor.fd;
}

} // namespace

GstDeviceMonitorPointer startDeviceMonitor()
{
    rankCameraProviders();
    GstDeviceMonitorPointer monitor(gst_device_monitor_new());
    const GstCapsPointer caps(gst_caps_new_empty_simple(rawPictures));
    gst_device_monitor_add_filter(monitor.get(), cameraClass, caps.get());
    if (!gst_device_monitor_start(monitor.get()))
        qCDebug(cameraLog) << "There is nothing that could tell of cameras";
    return monitor;
}

CameraMonitor::CameraMonitor(GstDeviceMonitorPointer monitor, QObject *parent)
    : QObject(parent)
    , m_monitor(std::move(monitor))
    , m_bus(gst_device_monitor_get_bus(m_monitor.get()))
    , m_notifier(descriptorOf(m_bus.get()), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &CameraMonitor::readMessage);
}

GstDeviceListPointer CameraMonitor::devices() const
{
    return GstDeviceListPointer(m_monitor ? gst_device_monitor_get_devices(m_monitor.get()) : nullptr);
}

void CameraMonitor::stop()
{
    m_notifier.setEnabled(false);
    m_monitor.reset();
}

void CameraMonitor::readMessage()
{
    // One at a time: the descriptor stays readable while there are more, and whoever hears of one may stop this
    // monitor.
    const GstMessagePointer message(gst_bus_pop(m_bus.get()));
    if (!message)
        return;
    GstDevice *device = nullptr;
    switch (GST_MESSAGE_TYPE(message.get())) {
    case GST_MESSAGE_DEVICE_ADDED: {
        gst_message_parse_device_added(message.get(), &device);
        const GstDevicePointer owner(device);
        Q_EMIT cameraAdded(device);
        break;
    }
    case GST_MESSAGE_DEVICE_REMOVED: {
        gst_message_parse_device_removed(message.get(), &device);
        const GstDevicePointer owner(device);
        Q_EMIT cameraRemoved(device);
        break;
    }
    default:
        break;
    }
}

} // namespace EmulationManagement::Internal
