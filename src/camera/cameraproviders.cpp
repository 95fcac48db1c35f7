// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraproviders.h"

#include "camera/cameracapabilities.h"
#include "camera/gsthandles.h"

namespace EmulationManagement::Internal {

namespace {

GstPluginFeaturePointer findProvider(const char *name)
{
    return GstPluginFeaturePointer(
        gst_registry_find_feature(gst_registry_get(), name, GST_TYPE_DEVICE_PROVIDER_FACTORY));
}

// What a monitor would list.
bool isCamera(GstDevice *device)
{
    const GstCapsPointer raw(gst_caps_new_empty_simple(rawPictures));
    const GstCapsPointer offered(gst_device_get_caps(device));
    return gst_device_has_classes(device, cameraClass) && offered && gst_caps_can_intersect(offered.get(), raw.get());
}

bool hasCameras(const char *name)
{
    const GstPluginFeaturePointer factory = findProvider(name);
    if (!factory || gst_plugin_feature_get_rank(factory.get()) == GST_RANK_NONE) // which a user can see to
        return false;
    const GstDeviceProviderPointer provider(gst_device_provider_factory_get_by_name(name));
    const GstDeviceListPointer devices(provider ? gst_device_provider_get_devices(provider.get()) : nullptr);
    for (const GList *node = devices.get(); node; node = node->next) {
        if (isCamera(GST_DEVICE(node->data)))
            return true;
    }
    return false;
}

} // namespace

void rankCameraProviders()
{
    const GstPluginFeaturePointer pipeWire = findProvider("pipewiredeviceprovider");
    if (!pipeWire)
        return;
    static const guint usualRank = gst_plugin_feature_get_rank(pipeWire.get());
    gst_plugin_feature_set_rank(pipeWire.get(), hasCameras("v4l2deviceprovider") ? guint(GST_RANK_NONE) : usualRank);
}

} // namespace EmulationManagement::Internal
