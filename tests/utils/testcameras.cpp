// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/testcameras.h"

#include <QList>
#include <QMap>
#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace TestUtils {

namespace {

// What is plugged in, and how it has been announced.
struct Plugged
{
    TestCamera camera;
    GstDevice *device = nullptr; // owned by the provider; null while nobody watches
};

QMutex mutex; // guards what follows
QList<Plugged> pluggedCameras;
QMap<TestCamera::Provider, GstDeviceProvider *> watchingProviders;

// ---- the source element: a bin of videotestsrc, a filter for what the camera can do, and an encoder for JPEG

enum PropertyId { NoProperty, DeviceProperty, DeviceIndexProperty, DevicePathProperty };

struct SourceKind
{
    TestCamera::Source source;
    const char *factory;
    std::array<PropertyId, 2> properties;
};

constexpr std::array sourceKinds{
    SourceKind{TestCamera::Source::Device, "testcamerasrc", {DeviceProperty, NoProperty}},
    SourceKind{TestCamera::Source::DeviceIndex, "testindexcamerasrc", {DeviceIndexProperty, NoProperty}},
    SourceKind{TestCamera::Source::DevicePath, "testpathcamerasrc", {DevicePathProperty, NoProperty}},
    SourceKind{TestCamera::Source::PathAndDevice, "testpathdevicecamerasrc", {DevicePathProperty, DeviceProperty}},
    SourceKind{TestCamera::Source::DeviceAndPath, "testdevicepathcamerasrc", {DeviceProperty, DevicePathProperty}},
    SourceKind{TestCamera::Source::Plain, "testplaincamerasrc", {NoProperty, NoProperty}},
};

const SourceKind &kindOf(TestCamera::Source source)
{
    return *std::find_if(
        sourceKinds.begin(), sourceKinds.end(), [source](const SourceKind &kind) { return kind.source == source; });
}

struct TestCameraSource
{
    GstBin parent;
    GstElement *pictures; // all owned by the bin
    GstElement *filter;
    GstElement *encoder;
    GstPad *output;
    gchar *device;
    gchar *devicePath;
    gint deviceIndex;
};

struct TestCameraSourceClass
{
    GstBinClass parent;
    const SourceKind *kind;
};

std::optional<TestCamera> cameraOf(TestCameraSource *self)
{
    const SourceKind &kind = *G_TYPE_INSTANCE_GET_CLASS(self, G_TYPE_FROM_INSTANCE(self), TestCameraSourceClass)->kind;
    const auto selects = [&](const TestCamera &camera) {
        switch (kind.source) {
        case TestCamera::Source::DeviceIndex:
            return camera.device.toInt() == self->deviceIndex;
        case TestCamera::Source::DevicePath:
            return camera.device == QString::fromUtf8(self->devicePath);
        case TestCamera::Source::Plain:
            return true;
        default:
            return camera.device == QString::fromUtf8(self->device);
        }
    };
    const QMutexLocker locker(&mutex);
    for (const Plugged &plugged : std::as_const(pluggedCameras)) {
        if (selects(plugged.camera))
            return plugged.camera;
    }
    return {};
}

GstElementClass *binClass()
{
    return GST_ELEMENT_CLASS(g_type_class_peek(GST_TYPE_BIN));
}

void setOutput(TestCameraSource *self, GstElement *last)
{
    GstPad *pad = last ? gst_element_get_static_pad(last, "src") : nullptr;
    gst_ghost_pad_set_target(GST_GHOST_PAD(self->output), pad);
    if (pad)
        gst_object_unref(pad);
}

// Without a target, the output tells of everything that it might do, as a camera does that nobody has opened.
void closeCamera(TestCameraSource *self)
{
    setOutput(self, nullptr);
    gst_element_unlink(self->filter, self->encoder);
}

void openCamera(TestCameraSource *self, const TestCamera &camera)
{
    gst_util_set_object_arg(G_OBJECT(self->pictures), "pattern", camera.pattern.constData());
    g_object_set(self->pictures, "foreground-color", camera.color.rgba(), nullptr);

    GstCaps *offered = gst_caps_from_string(camera.caps.constData());
    GstCaps *wanted = gst_pad_peer_query_caps(self->output, offered);
    if (!gst_caps_is_empty(wanted) && !gst_caps_is_any(wanted)
        && gst_structure_has_name(gst_caps_get_structure(wanted, 0), "image/jpeg")) {
        GstStructure *raw = gst_structure_copy(gst_caps_get_structure(wanted, 0));
        gst_structure_set_name(raw, "video/x-raw");
        gst_structure_set(raw, "format", G_TYPE_STRING, "Y42B", nullptr); // as most webcams' JPEG is
        gst_caps_take(&offered, gst_caps_new_full(raw, nullptr));
        gst_element_link(self->filter, self->encoder);
        setOutput(self, self->encoder);
    } else {
        setOutput(self, self->filter);
    }
    g_object_set(self->filter, "caps", offered, nullptr);
    gst_caps_unref(wanted);
    gst_caps_unref(offered);
}

GstStateChangeReturn changeState(GstElement *element, GstStateChange transition)
{
    auto *self = reinterpret_cast<TestCameraSource *>(element);
    if (transition == GST_STATE_CHANGE_NULL_TO_READY) {
        const std::optional<TestCamera> camera = cameraOf(self);
        if (!camera) {
            GST_ELEMENT_ERROR(element, RESOURCE, NOT_FOUND, ("There is no such camera"), (nullptr));
            return GST_STATE_CHANGE_FAILURE;
        }
        openCamera(self, *camera);
    }
    const GstStateChangeReturn result = binClass()->change_state(element, transition);
    if (transition == GST_STATE_CHANGE_READY_TO_NULL)
        closeCamera(self);
    return result;
}

void setProperty(GObject *object, guint id, const GValue *value, GParamSpec *)
{
    auto *self = reinterpret_cast<TestCameraSource *>(object);
    switch (id) {
    case DeviceProperty:
        g_free(self->device);
        self->device = g_value_dup_string(value);
        break;
    case DeviceIndexProperty:
        self->deviceIndex = g_value_get_int(value);
        break;
    case DevicePathProperty:
        g_free(self->devicePath);
        self->devicePath = g_value_dup_string(value);
        break;
    default:
        break;
    }
}

void getProperty(GObject *object, guint id, GValue *value, GParamSpec *)
{
    const auto *self = reinterpret_cast<TestCameraSource *>(object);
    switch (id) {
    case DeviceProperty:
        g_value_set_string(value, self->device);
        break;
    case DeviceIndexProperty:
        g_value_set_int(value, self->deviceIndex);
        break;
    case DevicePathProperty:
        g_value_set_string(value, self->devicePath);
        break;
    default:
        break;
    }
}

void finalizeSource(GObject *object)
{
    auto *self = reinterpret_cast<TestCameraSource *>(object);
    g_free(self->device);
    g_free(self->devicePath);
    G_OBJECT_CLASS(binClass())->finalize(object);
}

void initSourceClass(gpointer classPointer, gpointer kindPointer)
{
    static GstStaticPadTemplate pictures =
        GST_STATIC_PAD_TEMPLATE("src", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS("video/x-raw(ANY); image/jpeg"));
    auto *sourceClass = static_cast<TestCameraSourceClass *>(classPointer);
    sourceClass->kind = static_cast<const SourceKind *>(kindPointer);

    GObjectClass *objectClass = G_OBJECT_CLASS(classPointer);
    objectClass->set_property = setProperty;
    objectClass->get_property = getProperty;
    objectClass->finalize = finalizeSource;
    constexpr auto flags = GParamFlags(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS);
    for (const PropertyId id : sourceClass->kind->properties) {
        if (id == DeviceIndexProperty) {
            g_object_class_install_property(
                objectClass, id, g_param_spec_int("device-index", "", "", -1, G_MAXINT, -1, flags));
        } else if (id != NoProperty) {
            const char *name = id == DeviceProperty ? "device" : "device-path";
            g_object_class_install_property(objectClass, id, g_param_spec_string(name, "", "", nullptr, flags));
        }
    }

    GstElementClass *elementClass = GST_ELEMENT_CLASS(classPointer);
    elementClass->change_state = changeState;
    gst_element_class_add_static_pad_template(elementClass, &pictures);
    gst_element_class_set_static_metadata(elementClass, "Test camera", "Source/Video", "Shows a test picture", "Tests");
}

void initSource(GTypeInstance *instance, gpointer)
{
    auto *self = reinterpret_cast<TestCameraSource *>(instance);
    self->deviceIndex = -1;
    self->pictures = gst_element_factory_make("videotestsrc", nullptr);
    self->filter = gst_element_factory_make("capsfilter", nullptr);
    self->encoder = gst_element_factory_make("jpegenc", nullptr);
    g_object_set(self->pictures, "is-live", TRUE, nullptr);
    gst_bin_add_many(GST_BIN(self), self->pictures, self->filter, self->encoder, nullptr);
    gst_element_link(self->pictures, self->filter);
    self->output = gst_ghost_pad_new_no_target_from_template(
        "src", gst_element_class_get_pad_template(GST_ELEMENT_GET_CLASS(self), "src"));
    gst_element_add_pad(GST_ELEMENT(self), self->output);
}

GType sourceType(const SourceKind &kind)
{
    const QByteArray name = QByteArray("TestUtils-") + kind.factory;
    if (const GType known = g_type_from_name(name.constData()))
        return known;
    GTypeInfo info = {};
    info.class_size = sizeof(TestCameraSourceClass);
    info.class_init = initSourceClass;
    info.class_data = &kind;
    info.instance_size = sizeof(TestCameraSource);
    info.instance_init = initSource;
    return g_type_register_static(GST_TYPE_BIN, name.constData(), &info, GTypeFlags(0));
}

// ---- the device

struct TestCameraDevice
{
    GstDevice parent;
    TestCamera *camera;
};

struct TestCameraDeviceClass
{
    GstDeviceClass parent;
};

G_DEFINE_TYPE(TestCameraDevice, test_camera_device, GST_TYPE_DEVICE)

GstElement *createElement(GstDevice *device, const gchar *name)
{
    const TestCamera &camera = *reinterpret_cast<TestCameraDevice *>(device)->camera;
    const SourceKind &kind = kindOf(camera.source);
    GstElement *element = gst_element_factory_make(kind.factory, name);
    for (const PropertyId id : kind.properties) {
        if (id == DeviceIndexProperty)
            g_object_set(element, "device-index", camera.device.toInt(), nullptr);
        else if (id == DeviceProperty)
            g_object_set(element, "device", camera.device.toUtf8().constData(), nullptr);
        else if (id == DevicePathProperty)
            g_object_set(element, "device-path", camera.device.toUtf8().constData(), nullptr);
    }
    return element;
}

void test_camera_device_init(TestCameraDevice *self)
{
    self->camera = new TestCamera;
}

void finalizeDevice(GObject *object)
{
    delete reinterpret_cast<TestCameraDevice *>(object)->camera;
    G_OBJECT_CLASS(test_camera_device_parent_class)->finalize(object);
}

void test_camera_device_class_init(TestCameraDeviceClass *deviceClass)
{
    G_OBJECT_CLASS(deviceClass)->finalize = finalizeDevice;
    GST_DEVICE_CLASS(deviceClass)->create_element = createElement;
}

// ---- the providers

struct ProviderKind
{
    TestCamera::Provider provider;
    const char *factory;
    guint rank;
};

// Those of others have their names and ranks.
constexpr std::array providerKinds{
    ProviderKind{TestCamera::Provider::Other, "testcameraprovider", GST_RANK_PRIMARY},
    ProviderKind{TestCamera::Provider::V4l2, "v4l2deviceprovider", GST_RANK_PRIMARY},
    ProviderKind{TestCamera::Provider::PipeWire, "pipewiredeviceprovider", GST_RANK_PRIMARY + 1},
};

struct TestCameraProvider
{
    GstDeviceProvider parent;
};

struct TestCameraProviderClass
{
    GstDeviceProviderClass parent;
    TestCamera::Provider provider;
};

TestCamera::Provider kindOf(GstDeviceProvider *provider)
{
    return G_TYPE_INSTANCE_GET_CLASS(provider, G_OBJECT_TYPE(provider), TestCameraProviderClass)->provider;
}

GList *probe(GstDeviceProvider *provider)
{
    const QMutexLocker locker(&mutex);
    GList *devices = nullptr;
    for (const Plugged &plugged : std::as_const(pluggedCameras)) {
        if (plugged.camera.provider == kindOf(provider))
            devices = g_list_append(devices, gst_object_ref_sink(TestCameras::newDevice(plugged.camera)));
    }
    return devices;
}

gboolean start(GstDeviceProvider *provider)
{
    const QMutexLocker locker(&mutex);
    const TestCamera::Provider kind = kindOf(provider);
    watchingProviders.insert(kind, provider);
    if (kind == TestCamera::Provider::PipeWire)
        gst_device_provider_hide_provider(provider, "v4l2deviceprovider");
    for (Plugged &plugged : pluggedCameras) {
        if (plugged.camera.provider != kind)
            continue;
        plugged.device = TestCameras::newDevice(plugged.camera);
        gst_device_provider_device_add(provider, plugged.device);
    }
    return TRUE;
}

void stop(GstDeviceProvider *provider)
{
    // The base class forgets the devices.
    const QMutexLocker locker(&mutex);
    const TestCamera::Provider kind = kindOf(provider);
    watchingProviders.remove(kind);
    for (Plugged &plugged : pluggedCameras) {
        if (plugged.camera.provider == kind)
            plugged.device = nullptr;
    }
}

void remove(const Plugged &plugged)
{
    if (plugged.device)
        gst_device_provider_device_remove(watchingProviders.value(plugged.camera.provider), plugged.device);
}

void initProviderClass(gpointer classPointer, gpointer kindPointer)
{
    static_cast<TestCameraProviderClass *>(classPointer)->provider =
        static_cast<const ProviderKind *>(kindPointer)->provider;
    GstDeviceProviderClass *baseClass = GST_DEVICE_PROVIDER_CLASS(classPointer);
    baseClass->probe = probe;
    baseClass->start = start;
    baseClass->stop = stop;
    gst_device_provider_class_set_static_metadata(
        baseClass, "Test cameras", "Source/Video", "Cameras that tests plug and unplug", "Tests");
}

GType providerType(const ProviderKind &kind)
{
    const QByteArray name = QByteArray("TestUtils-") + kind.factory;
    if (const GType known = g_type_from_name(name.constData()))
        return known;
    GTypeInfo info = {};
    info.class_size = sizeof(TestCameraProviderClass);
    info.class_init = initProviderClass;
    info.class_data = &kind;
    info.instance_size = sizeof(TestCameraProvider);
    return g_type_register_static(GST_TYPE_DEVICE_PROVIDER, name.constData(), &info, GTypeFlags(0));
}

gboolean initPlugin(GstPlugin *plugin)
{
    for (const SourceKind &kind : sourceKinds) {
        if (!gst_element_register(plugin, kind.factory, GST_RANK_NONE, sourceType(kind)))
            return FALSE;
    }
    for (const ProviderKind &kind : providerKinds) {
        if (!gst_device_provider_register(plugin, kind.factory, kind.rank, providerType(kind)))
            return FALSE;
    }
    return TRUE;
}

} // namespace

void TestCameras::install()
{
    gst_init(nullptr, nullptr);
    GstRegistry *registry = gst_registry_get();
    GList *features = gst_registry_get_feature_list(registry, GST_TYPE_DEVICE_PROVIDER_FACTORY);
    for (GList *node = features; node; node = node->next)
        gst_registry_remove_feature(registry, GST_PLUGIN_FEATURE(node->data));
    gst_plugin_feature_list_free(features);

    const gboolean registered = gst_plugin_register_static(
        GST_VERSION_MAJOR,
        GST_VERSION_MINOR,
        "testcameras",
        "Cameras of tests",
        initPlugin,
        "1.0",
        "LGPL",
        "testcameras",
        "testcameras",
        "https://example.org");
    if (!registered)
        qFatal("The test cameras cannot be registered");
}

void TestCameras::plug(const TestCamera &camera)
{
    const QMutexLocker locker(&mutex);
    Plugged plugged{camera, nullptr};
    if (GstDeviceProvider *provider = watchingProviders.value(camera.provider)) {
        plugged.device = newDevice(camera);
        gst_device_provider_device_add(provider, plugged.device);
    }
    pluggedCameras.append(plugged);
}

void TestCameras::unplug(const QString &name)
{
    const QMutexLocker locker(&mutex);
    for (qsizetype i = 0; i < pluggedCameras.size(); ++i) {
        if (pluggedCameras.at(i).camera.name != name)
            continue;
        remove(pluggedCameras.takeAt(i));
        return;
    }
}

void TestCameras::unplugAll()
{
    const QMutexLocker locker(&mutex);
    for (const Plugged &plugged : std::as_const(pluggedCameras))
        remove(plugged);
    pluggedCameras.clear();
}

GstDevice *TestCameras::newDevice(const TestCamera &camera)
{
    GstCaps *caps = gst_caps_from_string(camera.caps.constData());
    auto *device = static_cast<TestCameraDevice *>(g_object_new(
        test_camera_device_get_type(),
        "display-name",
        camera.name.toUtf8().constData(),
        "caps",
        caps,
        "device-class",
        camera.deviceClass.constData(),
        nullptr));
    gst_caps_unref(caps);
    *device->camera = camera;
    return GST_DEVICE(device);
}

bool TestCameras::isWatched()
{
    const QMutexLocker locker(&mutex);
    return !watchingProviders.isEmpty();
}

bool TestCameras::isWatched(TestCamera::Provider provider)
{
    const QMutexLocker locker(&mutex);
    return watchingProviders.contains(provider);
}

} // namespace TestUtils
