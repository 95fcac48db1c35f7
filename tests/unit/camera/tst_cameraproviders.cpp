// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraproviders.h"

#include "camera/gsthandles.h"
#include "utils/testcameras.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::TestCamera;
using TestUtils::TestCameras;

namespace {

constexpr guint usualRank = GST_RANK_PRIMARY + 1;
constexpr char raw[] = "video/x-raw,width=640,height=480,framerate=30/1";

GstPluginFeaturePointer provider(const char *name)
{
    return GstPluginFeaturePointer(
        gst_registry_find_feature(gst_registry_get(), name, GST_TYPE_DEVICE_PROVIDER_FACTORY));
}

guint rankOf(const char *name)
{
    const GstPluginFeaturePointer feature = provider(name);
    return feature ? gst_plugin_feature_get_rank(feature.get()) : 0;
}

} // namespace

class TestCameraProviders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void ranksPipeWire_data();
    void ranksPipeWire();
    void decidesAnewEachTime();
    void leavesOthersAlone();
    void aProviderThatIsRankedOutHasNoCameras();
    void managesWithoutV4l2();
    void managesWithoutPipeWire();
};

void TestCameraProviders::initTestCase()
{
    TestCameras::install();
}

void TestCameraProviders::cleanup()
{
    TestCameras::unplugAll();
}

void TestCameraProviders::ranksPipeWire_data()
{
    using Provider = TestCamera::Provider;
    QTest::addColumn<QList<TestCamera>>("cameras");
    QTest::addColumn<guint>("rank");

    const TestCamera v4l2{.name = u"Webcam"_s, .caps = raw, .provider = Provider::V4l2};
    const TestCamera pipeWire{.name = u"Webcam (V4L2)"_s, .caps = raw, .provider = Provider::PipeWire};
    const TestCamera other{.name = u"Grabber"_s, .caps = raw};
    TestCamera jpegOnly = v4l2;
    jpegOnly.caps = "image/jpeg,width=640,height=480,framerate=30/1";
    TestCamera both = v4l2;
    both.caps = jpegOnly.caps + ';' + raw;
    TestCamera output = v4l2;
    output.deviceClass = "Video/Sink";

    QTest::newRow("no cameras at all") << QList<TestCamera>() << usualRank;
    QTest::newRow("a camera that only PipeWire has") << QList{pipeWire} << usualRank;
    QTest::newRow("a camera that both have") << QList{pipeWire, v4l2} << guint(GST_RANK_NONE);
    QTest::newRow("a camera that only V4L2 has") << QList{v4l2} << guint(GST_RANK_NONE);
    QTest::newRow("a camera that somebody else has") << QList{other} << usualRank;
    QTest::newRow("a camera of V4L2 with JPEG beside raw pictures") << QList{both} << guint(GST_RANK_NONE);
    QTest::newRow("a camera of V4L2 that would not be listed") << QList{jpegOnly, pipeWire} << usualRank;
    QTest::newRow("the second of V4L2's cameras") << QList{jpegOnly, v4l2} << guint(GST_RANK_NONE);
    QTest::newRow("something of V4L2 that is no camera") << QList{output, pipeWire} << usualRank;
}

void TestCameraProviders::ranksPipeWire()
{
    QFETCH(QList<TestCamera>, cameras);
    QFETCH(guint, rank);
    for (const TestCamera &camera : std::as_const(cameras))
        TestCameras::plug(camera);
    rankCameraProviders();
    QCOMPARE(rankOf("pipewiredeviceprovider"), rank);
    QVERIFY(!TestCameras::isWatched());
}

void TestCameraProviders::decidesAnewEachTime()
{
    const TestCamera camera{.name = u"Webcam"_s, .caps = raw, .provider = TestCamera::Provider::V4l2};
    for (int i = 0; i < 3; ++i) {
        TestCameras::plug(camera);
        rankCameraProviders();
        QCOMPARE(rankOf("pipewiredeviceprovider"), guint(GST_RANK_NONE));
        rankCameraProviders();
        QCOMPARE(rankOf("pipewiredeviceprovider"), guint(GST_RANK_NONE));
        TestCameras::unplug(camera.name);
        rankCameraProviders();
        QCOMPARE(rankOf("pipewiredeviceprovider"), usualRank);
    }
}

void TestCameraProviders::leavesOthersAlone()
{
    TestCameras::plug({.name = u"Webcam"_s, .caps = raw, .provider = TestCamera::Provider::V4l2});
    rankCameraProviders();
    QCOMPARE(rankOf("v4l2deviceprovider"), guint(GST_RANK_PRIMARY));
    QCOMPARE(rankOf("testcameraprovider"), guint(GST_RANK_PRIMARY));
}

void TestCameraProviders::aProviderThatIsRankedOutHasNoCameras()
{
    TestCameras::plug({.name = u"Webcam"_s, .caps = raw, .provider = TestCamera::Provider::V4l2});
    const GstPluginFeaturePointer v4l2 = provider("v4l2deviceprovider");
    gst_plugin_feature_set_rank(v4l2.get(), GST_RANK_NONE);
    rankCameraProviders();
    gst_plugin_feature_set_rank(v4l2.get(), GST_RANK_PRIMARY);
    QCOMPARE(rankOf("pipewiredeviceprovider"), usualRank);
}

void TestCameraProviders::managesWithoutV4l2()
{
    const GstPluginFeaturePointer v4l2 = provider("v4l2deviceprovider");
    gst_registry_remove_feature(gst_registry_get(), v4l2.get());
    rankCameraProviders();
    gst_registry_add_feature(gst_registry_get(), GST_PLUGIN_FEATURE(gst_object_ref(v4l2.get())));
    QCOMPARE(rankOf("pipewiredeviceprovider"), usualRank);
}

void TestCameraProviders::managesWithoutPipeWire()
{
    TestCameras::plug({.name = u"Webcam"_s, .caps = raw, .provider = TestCamera::Provider::V4l2});
    const GstPluginFeaturePointer pipeWire = provider("pipewiredeviceprovider");
    gst_registry_remove_feature(gst_registry_get(), pipeWire.get());
    rankCameraProviders();
    QVERIFY(!provider("pipewiredeviceprovider"));
    QCOMPARE(rankOf("v4l2deviceprovider"), guint(GST_RANK_PRIMARY));
    gst_registry_add_feature(gst_registry_get(), GST_PLUGIN_FEATURE(gst_object_ref(pipeWire.get())));
}

QTEST_GUILESS_MAIN(TestCameraProviders)

#include "tst_cameraproviders.moc"
