// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/gstreamerloading.h"

#include <gst/gst.h>

namespace EmulationManagement::Internal {

namespace {

// The factory itself is not needed, only what loading it leaves behind.
void loadFeature(GstPluginFeature *feature)
{
    if (GstPluginFeature *loaded = gst_plugin_feature_load(feature))
        gst_object_unref(loaded);
}

void load()
{
    gst_init(nullptr, nullptr);

    GstRegistry *registry = gst_registry_get();
    for (const char *factory : {"capsfilter", "decodebin", "filesrc", "jpegenc", "rtpjpegpay", "udpsink"}) {
        if (GstPluginFeature *feature = gst_registry_lookup_feature(registry, factory)) {
            loadFeature(feature);
            gst_object_unref(feature);
        }
    }

    GList *providers = gst_device_provider_factory_list_get_device_providers(GST_RANK_MARGINAL);
    for (GList *node = providers; node; node = node->next) {
        if (gst_device_provider_factory_has_classes(GST_DEVICE_PROVIDER_FACTORY(node->data), "Video/Source"))
            loadFeature(GST_PLUGIN_FEATURE(node->data));
    }
    gst_plugin_feature_list_free(providers);
}

} // namespace

GStreamerLoading::GStreamerLoading(const std::function<void()> &onLoaded)
    : m_loaded(std::async(std::launch::async, [onLoaded] {
        load();
        onLoaded();
    }))
{
}

GStreamerLoading::~GStreamerLoading()
{
    wait();
}

void GStreamerLoading::wait() const
{
    m_loaded.wait();
}

} // namespace EmulationManagement::Internal
