// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/gstreamerloading.h"

#include "camera/cameramonitor.h"

#include <gst/gst.h>

namespace EmulationManagement::Internal {

namespace {

void load()
{
    gst_init(nullptr, nullptr);

    GstRegistry *registry = gst_registry_get();
    for (const char *factory : {"capsfilter", "decodebin", "filesrc", "jpegenc", "rtpjpegpay", "udpsink"}) {
        if (GstPluginFeature *feature = gst_registry_lookup_feature(registry, factory)) {
            // The factory itself is not needed, only the plugin that stays in memory.
            if (GstPluginFeature *loaded = gst_plugin_feature_load(feature))
                gst_object_unref(loaded);
            gst_object_unref(feature);
        }
    }
}

} // namespace

GStreamerLoading::GStreamerLoading(const std::function<void()> &onLoaded)
    : m_loaded(std::async(std::launch::async, [onLoaded] {
        load();
        GstDeviceMonitorPointer monitor = startDeviceMonitor();
        onLoaded();
        return monitor;
    }))
{
}

} // namespace EmulationManagement::Internal
