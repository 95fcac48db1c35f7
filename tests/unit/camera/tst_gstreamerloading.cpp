// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/gstreamerloading.h"

#include "camera/gsthandles.h"
#include "utils/testcameras.h"

#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::TestCamera;
using TestUtils::TestCameras;

namespace {

// Whether the plugin that makes such elements is in memory.
bool isLoaded(const char *factory)
{
    GstPluginFeature *feature = gst_registry_lookup_feature(gst_registry_get(), factory);
    if (!feature)
        return false;
    GstPlugin *plugin = gst_plugin_feature_get_plugin(feature);
    gst_object_unref(feature);
    const bool loaded = plugin && gst_plugin_is_loaded(plugin);
    if (plugin)
        gst_object_unref(plugin);
    return loaded;
}

QStringList notLoaded()
{
    QStringList factories;
    for (const char *factory : {"capsfilter", "decodebin", "filesrc", "jpegenc", "rtpjpegpay", "udpsink"}) {
        if (!isLoaded(factory))
            factories.append(QString::fromLatin1(factory));
    }
    return factories;
}

} // namespace

class TestGStreamerLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void loadsWhatThePipelinesNeed();
    void callsBackOnceInAThreadOfItsOwn();
    void handsOutAMonitorThatWatches();
    void doesNotWatchBeyondItsEnd();
};

void TestGStreamerLoading::initTestCase()
{
    TestCameras::install();
}

void TestGStreamerLoading::cleanup()
{
    TestCameras::unplugAll();
    QVERIFY(!TestCameras::isWatched());
}

// Goes first: what is loaded stays.
void TestGStreamerLoading::loadsWhatThePipelinesNeed()
{
    QVERIFY(notLoaded().contains(u"jpegenc"_s));
    QVERIFY(notLoaded().contains(u"rtpjpegpay"_s));
    QStringList missing{u"not called"_s};
    {
        const GStreamerLoading loading([&missing] { missing = notLoaded(); });
    }
    QCOMPARE(missing, QStringList());
}

void TestGStreamerLoading::callsBackOnceInAThreadOfItsOwn()
{
    QList<QThread *> threads;
    bool isWatched = false;
    {
        const GStreamerLoading loading([&] {
            threads.append(QThread::currentThread());
            isWatched = TestCameras::isWatched();
        });
    }
    QCOMPARE(threads.size(), 1);
    QVERIFY(threads.constFirst() != thread());
    QVERIFY(isWatched); // it is the last thing that happens
}

void TestGStreamerLoading::handsOutAMonitorThatWatches()
{
    TestCameras::plug({.name = u"Early"_s});
    GstDeviceMonitorPointer monitor;
    {
        GStreamerLoading loading([] {});
        monitor = loading.takeDeviceMonitor();
    }
    QVERIFY(TestCameras::isWatched());
    TestCameras::plug({.name = u"Late"_s});
    const GstDeviceListPointer devices(gst_device_monitor_get_devices(monitor.get()));
    QCOMPARE(g_list_length(devices.get()), 2U);
}

void TestGStreamerLoading::doesNotWatchBeyondItsEnd()
{
    bool loaded = false;
    std::make_unique<GStreamerLoading>([&loaded] { loaded = true; }).reset();
    QVERIFY(loaded);
    QVERIFY(!TestCameras::isWatched());
}

QTEST_GUILESS_MAIN(TestGStreamerLoading)

#include "tst_gstreamerloading.moc"
