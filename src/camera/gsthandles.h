// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <gst/gst.h>

#include <memory>

namespace EmulationManagement::Internal {

// Owners of what GStreamer and GLib hand out. Each holds one reference.

struct GstObjectDeleter
{
    void operator()(gpointer object) const { gst_object_unref(object); }
};
using GstBusPointer = std::unique_ptr<GstBus, GstObjectDeleter>;
using GstDevicePointer = std::unique_ptr<GstDevice, GstObjectDeleter>;
using GstDeviceProviderPointer = std::unique_ptr<GstDeviceProvider, GstObjectDeleter>;
using GstElementPointer = std::unique_ptr<GstElement, GstObjectDeleter>;
using GstPluginFeaturePointer = std::unique_ptr<GstPluginFeature, GstObjectDeleter>;
using GstPadPointer = std::unique_ptr<GstPad, GstObjectDeleter>;

struct GObjectDeleter
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

struct GstCapsDeleter
{
    void operator()(GstCaps *caps) const { gst_caps_unref(caps); }
};
using GstCapsPointer = std::unique_ptr<GstCaps, GstCapsDeleter>;

struct GstMessageDeleter
{
    void operator()(GstMessage *message) const { gst_message_unref(message); }
};
using GstMessagePointer = std::unique_ptr<GstMessage, GstMessageDeleter>;

struct GErrorDeleter
{
    void operator()(GError *error) const { g_error_free(error); }
};
using GErrorPointer = std::unique_ptr<GError, GErrorDeleter>;

struct GFreeDeleter
{
    void operator()(gpointer memory) const { g_free(memory); }
};
using GCharPointer = std::unique_ptr<gchar, GFreeDeleter>;

// A monitor that watches as long as it is owned.
struct GstDeviceMonitorDeleter
{
    void operator()(GstDeviceMonitor *monitor) const
    {
        gst_device_monitor_stop(monitor);
        gst_object_unref(monitor);
    }
};
using GstDeviceMonitorPointer = std::unique_ptr<GstDeviceMonitor, GstDeviceMonitorDeleter>;

// A list that owns its devices.
struct GstDeviceListDeleter
{
    void operator()(GList *devices) const { g_list_free_full(devices, gst_object_unref); }
};
using GstDeviceListPointer = std::unique_ptr<GList, GstDeviceListDeleter>;

// A new element belongs to nobody ("floating"); this takes it over. Null stays null.
inline GstElementPointer takeElement(GstElement *element)
{
    return GstElementPointer(element ? GST_ELEMENT(gst_object_ref_sink(element)) : nullptr);
}

} // namespace EmulationManagement::Internal
