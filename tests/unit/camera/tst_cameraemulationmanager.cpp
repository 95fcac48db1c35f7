// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraemulationmanager.h"

#include "camera/gsthandles.h"
#include "utils/pipelinerecorder.h"
#include "utils/signallog.h"
#include "utils/testcameras.h"
#include "utils/testmedia.h"

#include <QMetaProperty>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::PipelineRecorder;
using TestUtils::SignalLog;
using TestUtils::TestCamera;
using TestUtils::TestCameras;

namespace {

const QString cameraPipeline = u"camera-stream-pipeline"_s;
const QString videoPipeline = u"video-stream-pipeline"_s;
const QStringList cameraChain{
    u"sourcePluginCam"_s, u"capsfilterCam"_s, u"jpegencCam"_s, u"rtpjpegpayCam"_s, u"udpsinkCam"_s};
const QStringList decodingChain{
    u"sourcePluginCam"_s, u"jpegdecCam"_s, u"capsfilterCam"_s, u"jpegencCam"_s, u"rtpjpegpayCam"_s, u"udpsinkCam"_s};
const QStringList videoElements{u"filesrc"_s, u"decodebin"_s, u"jpegencVS"_s, u"m_rtpjpegpayVS"_s, u"udpsinkVS"_s};

// In the order of their names; Beta is the one whose first resolution is small.
const TestCamera alphaCamera{
    .name = u"Alpha"_s,
    .caps = "video/x-raw,format=I420,width=640,height=480,framerate={30/1,15/1};"
            "video/x-raw,format=I420,width=320,height=240,framerate={30/1,15/1,5/1}",
    .device = u"/dev/alpha"_s,
};
const TestCamera betaCamera{
    .name = u"Beta"_s,
    .caps = "video/x-raw,format=YUY2,width=352,height=288,framerate={25/1,15/1}",
    .device = u"/dev/beta"_s,
};
const TestCamera gammaCamera{
    .name = u"Gamma"_s,
    .caps = "video/x-raw,format=YUY2,width=800,height=600,framerate={25/1,20/1}",
    .device = u"/dev/gamma"_s,
};
// Its largest size comes as JPEG only.
const TestCamera webCamera{
    .name = u"Web"_s,
    .caps = "video/x-raw,format=YUY2,width=640,height=480,framerate=30/1;"
            "image/jpeg,width=1920,height=1080,framerate=30/1;image/jpeg,width=640,height=480,framerate=30/1",
    .device = u"/dev/web"_s,
};
// Offers nothing that can be chosen.
const TestCamera oddCamera{
    .name = u"Odd"_s,
    .caps = "video/x-raw,format=I420,width=[1,1920],height=[1,1080],framerate=[0/1,30/1]",
    .device = u"/dev/odd"_s,
};

GstElementPointer element(const QString &pipeline, const QString &name)
{
    return GstElementPointer(PipelineRecorder::element(pipeline, name));
}

QString sourceDevice(const char *property = "device")
{
    const GstElementPointer source = element(cameraPipeline, u"sourcePluginCam"_s);
    gchar *device = nullptr;
    if (source)
        g_object_get(source.get(), property, &device, nullptr);
    return QString::fromUtf8(GCharPointer(device).get());
}

// Whether the filter lets pass just this.
bool filters(const char *expected)
{
    const GstElementPointer filter = element(cameraPipeline, u"capsfilterCam"_s);
    GstCaps *caps = nullptr;
    if (filter)
        g_object_get(filter.get(), "caps", &caps, nullptr);
    const GstCapsPointer owner(caps);
    const GstCapsPointer expectedCaps(gst_caps_from_string(expected));
    return caps && gst_caps_is_strictly_equal(caps, expectedCaps.get());
}

int intProperty(const QString &pipeline, const QString &name, const char *property)
{
    const GstElementPointer owner = element(pipeline, name);
    gint value = 0;
    if (owner)
        g_object_get(owner.get(), property, &value, nullptr);
    return value;
}

QString textProperty(const QString &pipeline, const QString &name, const char *property)
{
    const GstElementPointer owner = element(pipeline, name);
    gchar *value = nullptr;
    if (owner)
        g_object_get(owner.get(), property, &value, nullptr);
    return QString::fromUtf8(GCharPointer(value).get());
}

QStringList sorted(const QSet<QString> &names)
{
    QStringList list = names.values();
    list.sort();
    return list;
}

} // namespace

class TestCameraEmulationManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void describesItselfToQml();
    void hasTheConstantsOfTheStream();
    void startsWithNothingSelected();
    void watchesFromTheStartAndNoLongerThanItLives();
    void listsWhatWasThereBeforeIt();

    void buildsTheVideoPipeline();
    void buildsTheCameraPipelineWhenItIsSetUp();
    void settingUpTwiceLeavesOneLinkedPipeline();
    void withoutCamerasThereIsNoCameraPipeline();

    void setupListsCamerasAndSelectsTheFirst();
    void setupAnnouncesInOrder();
    void selectingACamera();
    void selectingAResolution();
    void selectingAResolutionKeepsTheFramerateIfItCan();
    void selectionsOutsideTheLists_data();
    void selectionsOutsideTheLists();
    void settersAnnounceInOrder_data();
    void settersAnnounceInOrder();
    void framerateNeedsASlash();

    void appliesTheSelection();
    void capsFollowTheSelection_data();
    void capsFollowTheSelection();
    void selectsTheDevice_data();
    void selectsTheDevice();
    void aSourceOfAnotherKindIsLeftAlone();
    void jpegIsDecodedAheadOfTheFilter();
    void aStreamThatCountsAsStoppedGoesOnWithAnotherKindOfPictures();
    void forgetsWhatAnUnpluggedCameraOffered();
    void v4l2sCamerasComeBeforePipeWires();
    void theFirstDeviceDecidesOfWhichKindTheSourceIs_data();
    void theFirstDeviceDecidesOfWhichKindTheSourceIs();

    void startsAndStopsTheCamera();
    void applyingWhileStreamingRestarts();
    void stoppingWhatDoesNotRunAnnouncesToo();
    void stoppingDoesNotWaitForGStreamer();
    void anEmptyVideoPathStopsEverythingSilently();
    void withoutASourceTheStreamCountsAsRunning();

    void firstCameraPluggedIn();
    void anotherCameraTakesTheOnlyOnesPlace();
    void secondCameraPluggedIn();
    void sameNamePluggedInAgain();
    void selectedCameraUnplugged();
    void otherCameraUnplugged();
    void lastCameraUnplugged();
    void unpluggedWhileStreaming();
    void otherUnpluggedWhileStreaming();
    void pluggedInAgain();
    void firstCameraPluggedInWhileStreaming();
    void forgetsWhatWasAnnouncedToAnOlderMonitor();

    void updatesTheList();
    void updatesTheListWhileStreaming();
    void updatesTheListToAnotherKindOfSource();
    void updatesTheListToNothing();
    void updatesTheListWhileSomethingIsAnnounced();

    void randomPlugging_data();
    void randomPlugging();
    void livesShortly();
    void aVideosEndIsNoMatterBeforeSetUp();

private:
    void makeManager();
    void waitUntilWatching();
    void setUpWith(const QList<TestCamera> &cameras);

    std::unique_ptr<SignalLog> m_log;
    std::unique_ptr<CameraEmulationManager> m_manager;
};

void TestCameraEmulationManager::initTestCase()
{
    TestCameras::install();
    PipelineRecorder::install();
}

void TestCameraEmulationManager::init()
{
    PipelineRecorder::takeEntries();
    makeManager();
}

void TestCameraEmulationManager::makeManager()
{
    m_log = std::make_unique<SignalLog>();
    m_manager = std::make_unique<CameraEmulationManager>();
    m_log->watch(m_manager.get());
}

void TestCameraEmulationManager::cleanup()
{
    m_manager.reset();
    TestCameras::unplugAll();
    QVERIFY(!TestCameras::isWatched());
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 0);
    QTRY_COMPARE(PipelineRecorder::count(videoPipeline), 0);
}

void TestCameraEmulationManager::waitUntilWatching()
{
    // What is made right after the monitor.
    QTRY_COMPARE(PipelineRecorder::count(videoPipeline), 1);
    QVERIFY(TestCameras::isWatched());
}

void TestCameraEmulationManager::setUpWith(const QList<TestCamera> &cameras)
{
    for (const TestCamera &camera : cameras)
        TestCameras::plug(camera);
    m_manager->setupCameraStreamPipeline();
    QCOMPARE(m_manager->cameras().size(), cameras.size());
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
}

void TestCameraEmulationManager::describesItselfToQml()
{
    const QMetaObject *meta = m_manager->metaObject();
    QCOMPARE(QByteArray(meta->className()), "CameraEmulationManager"_ba);
    QStringList properties;
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        QVERIFY(property.isReadable());
        QVERIFY(!property.isConstant());
        QCOMPARE(property.notifySignal().parameterCount(), 0);
        properties.append(u"%1 %2%3 %4"_s.arg(
            QLatin1StringView(property.typeName()),
            QLatin1StringView(property.name()),
            property.isWritable() ? u" writable"_s : QString(),
            QLatin1StringView(property.notifySignal().name())));
    }
    QCOMPARE(
        properties,
        QStringList(
            {u"bool streamRunning streamRunningChanged"_s,
             u"QStringList framerates frameratesChanged"_s,
             u"QVariantList resolutions resolutionsChanged"_s,
             u"QStringList cameras camerasChanged"_s,
             u"QString framerate writable framerateChanged"_s,
             u"int width writable widthChanged"_s,
             u"int height writable heightChanged"_s,
             u"int resolutionIndex writable resolutionIndexChanged"_s,
             u"QString cameraName writable cameraNameChanged"_s}));

    QStringList signalTexts;
    QStringList invokables;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        const QString text =
            QString::fromLatin1(method.typeName()) + u' ' + QString::fromLatin1(method.methodSignature());
        (method.methodType() == QMetaMethod::Signal ? signalTexts : invokables).append(text);
        QCOMPARE(method.access(), QMetaMethod::Public);
    }
    QCOMPARE(
        signalTexts,
        QStringList(
            {u"void streamRunningChanged()"_s,
             u"void videoStreamStopped()"_s,
             u"void frameratesChanged()"_s,
             u"void resolutionsChanged()"_s,
             u"void camerasChanged()"_s,
             u"void framerateChanged()"_s,
             u"void widthChanged()"_s,
             u"void heightChanged()"_s,
             u"void resolutionIndexChanged()"_s,
             u"void cameraNameChanged()"_s,
             u"void cameraStreamSettingsApplied()"_s,
             u"void videoFileCodecChecked(bool,QString)"_s}));
    QCOMPARE(
        invokables,
        QStringList(
            {u"void startVideoStream(QString)"_s,
             u"void startCameraStream()"_s,
             u"void stopVideoStream()"_s,
             u"void stopCameraStream()"_s,
             u"void setCameraStreamSettings()"_s,
             u"void updateCamerasList()"_s}));
}

void TestCameraEmulationManager::hasTheConstantsOfTheStream()
{
    QCOMPARE(CameraEmulationManager::udpPort, quint16(34343));
    QCOMPARE(QLatin1StringView(CameraEmulationManager::localhost), "127.0.0.1"_L1);
    QCOMPARE(CameraEmulationManager::portForwardingRule, u"emulationmanagementudp"_s);
}

void TestCameraEmulationManager::startsWithNothingSelected()
{
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(m_manager->cameras(), QStringList());
    QCOMPARE(m_manager->resolutions(), QVariantList());
    QCOMPARE(m_manager->framerates(), QStringList());
    QCOMPARE(m_manager->framerate(), QString());
    QCOMPARE(m_manager->width(), -1);
    QCOMPARE(m_manager->height(), -1);
    QCOMPARE(m_manager->resolutionIndex(), 0);
    QCOMPARE(m_manager->cameraName(), QString());
    waitUntilWatching();
    QCOMPARE(m_log->entries(), QStringList());
}

void TestCameraEmulationManager::watchesFromTheStartAndNoLongerThanItLives()
{
    waitUntilWatching();
    TestCameras::plug(betaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    m_manager.reset();
    QVERIFY(!TestCameras::isWatched());
}

void TestCameraEmulationManager::listsWhatWasThereBeforeIt()
{
    m_manager.reset();
    TestCameras::plug(betaCamera);
    TestCameras::plug(alphaCamera);
    makeManager();
    QTRY_COMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
    QCOMPARE(m_manager->cameraName(), QString());
    QCOMPARE(m_manager->resolutions(), QVariantList());
    // The first that is announced is the only one for a moment.
    QCOMPARE(
        m_log->takeEntries(),
        QStringList(
            {u"cameras=Beta"_s,
             u"resolutionsChanged"_s,
             u"framerates="_s,
             u"cameraStreamSettingsApplied"_s,
             u"cameras="_s,
             u"resolutionsChanged"_s,
             u"framerates="_s}));
}

void TestCameraEmulationManager::buildsTheVideoPipeline()
{
    waitUntilWatching();
    QTRY_COMPARE(PipelineRecorder::count(videoPipeline), 1);
    QStringList expected;
    for (const QString &name : videoElements)
        expected.append(videoPipeline + u" + "_s + name);
    expected.append({u"filesrc > decodebin"_s, u"jpegencVS > m_rtpjpegpayVS"_s, u"m_rtpjpegpayVS > udpsinkVS"_s});
    QCOMPARE(PipelineRecorder::takeEntries(), expected);

    QCOMPARE(PipelineRecorder::elements(videoPipeline), videoElements);
    QCOMPARE(PipelineRecorder::chain(videoPipeline, u"jpegencVS"_s), videoElements.mid(2));
    const QStringList factories{u"filesrc"_s, u"decodebin"_s, u"jpegenc"_s, u"rtpjpegpay"_s, u"udpsink"_s};
    for (int i = 0; i < videoElements.size(); ++i) {
        const GstElementPointer owner = element(videoPipeline, videoElements.at(i));
        QVERIFY(owner);
        QCOMPARE(QString::fromUtf8(GST_OBJECT_NAME(gst_element_get_factory(owner.get()))), factories.at(i));
    }
    QCOMPARE(intProperty(videoPipeline, u"jpegencVS"_s, "quality"), 50);
    QCOMPARE(textProperty(videoPipeline, u"udpsinkVS"_s, "host"), u"127.0.0.1"_s);
    QCOMPARE(intProperty(videoPipeline, u"udpsinkVS"_s, "port"), 34343);
    QCOMPARE(textProperty(videoPipeline, u"filesrc"_s, "location"), QString());
}

void TestCameraEmulationManager::buildsTheCameraPipelineWhenItIsSetUp()
{
    TestCameras::plug(betaCamera);
    waitUntilWatching();
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 0);
    PipelineRecorder::takeEntries();

    m_manager->setupCameraStreamPipeline();
    QStringList expected;
    for (const QString &name : cameraChain)
        expected.append(cameraPipeline + u" + "_s + name);
    for (int i = 1; i < cameraChain.size(); ++i)
        expected.append(cameraChain.at(i - 1) + u" > "_s + cameraChain.at(i));
    QCOMPARE(PipelineRecorder::takeEntries(), expected);

    QCOMPARE(PipelineRecorder::elements(cameraPipeline), cameraChain);
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
    const QStringList factories{u"testcamerasrc"_s, u"capsfilter"_s, u"jpegenc"_s, u"rtpjpegpay"_s, u"udpsink"_s};
    for (int i = 0; i < cameraChain.size(); ++i) {
        const GstElementPointer owner = element(cameraPipeline, cameraChain.at(i));
        QVERIFY(owner);
        QCOMPARE(QString::fromUtf8(GST_OBJECT_NAME(gst_element_get_factory(owner.get()))), factories.at(i));
    }
    QCOMPARE(intProperty(cameraPipeline, u"jpegencCam"_s, "quality"), 50);
    QCOMPARE(textProperty(cameraPipeline, u"udpsinkCam"_s, "host"), u"127.0.0.1"_s);
    QCOMPARE(intProperty(cameraPipeline, u"udpsinkCam"_s, "port"), 34343);
    QCOMPARE(sourceDevice(), betaCamera.device);
    QVERIFY(filters("video/x-raw,width=352,height=288,framerate=25/1"));
}

void TestCameraEmulationManager::settingUpTwiceLeavesOneLinkedPipeline()
{
    setUpWith({alphaCamera, betaCamera});
    m_manager->setupCameraStreamPipeline();
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
    QCOMPARE(PipelineRecorder::elements(cameraPipeline), cameraChain);
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
    QCOMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
}

void TestCameraEmulationManager::withoutCamerasThereIsNoCameraPipeline()
{
    m_manager->setupCameraStreamPipeline();
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 0);
    QCOMPARE(m_manager->cameraName(), QString());
    QCOMPARE(m_log->takeEntries(), QStringList(u"cameraStreamSettingsApplied"_s));
}

void TestCameraEmulationManager::setupListsCamerasAndSelectsTheFirst()
{
    setUpWith({betaCamera, alphaCamera});
    QCOMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(
        m_manager->resolutions(),
        QVariantList({
            QVariantMap{
                {u"width"_s, 640},
                {u"height"_s, 480},
                {u"string"_s, u"640x480"_s},
                {u"framerates"_s, QStringList{u"30/1"_s, u"15/1"_s}}},
            QVariantMap{
                {u"width"_s, 320},
                {u"height"_s, 240},
                {u"string"_s, u"320x240"_s},
                {u"framerates"_s, QStringList{u"30/1"_s, u"15/1"_s, u"5/1"_s}}},
        }));
    QCOMPARE(m_manager->framerates(), QStringList({u"30/1"_s, u"15/1"_s}));
    QCOMPARE(m_manager->resolutionIndex(), 0);
    QCOMPARE(m_manager->width(), 640);
    QCOMPARE(m_manager->height(), 480);
    QCOMPARE(m_manager->framerate(), u"30/1"_s);
    QCOMPARE(m_manager->streamRunning(), false);
}

void TestCameraEmulationManager::setupAnnouncesInOrder()
{
    TestCameras::plug(betaCamera);
    m_manager->setupCameraStreamPipeline();
    const QStringList expected{
        u"cameras=Beta"_s,
        u"resolutionsChanged"_s,
        u"framerates="_s, // nothing is selected
        u"width=352"_s,
        u"height=288"_s,
        u"framerate=25/1"_s,
        u"resolutionIndex=0"_s,
        u"framerates="_s, // more than one
        u"cameraName=Beta"_s,
        u"resolutionsChanged"_s,
        u"framerates="_s,
        u"cameraStreamSettingsApplied"_s,
    };
    QCOMPARE(m_log->takeEntries(), expected);

    // The camera is announced to the monitor too, and known by then.
    TestCameras::plug(alphaCamera);
    QTRY_COMPARE(m_manager->cameras().size(), 2);
    QCOMPARE(m_log->takeEntries(), QStringList({u"cameras="_s, u"resolutionsChanged"_s, u"framerates="_s}));
}

void TestCameraEmulationManager::selectingACamera()
{
    setUpWith({alphaCamera, betaCamera});
    m_manager->setResolutionIndex(1);
    m_manager->setCameraName(u"Beta"_s);
    QCOMPARE(m_manager->cameraName(), u"Beta"_s);
    QCOMPARE(m_manager->resolutionIndex(), 0);
    QCOMPARE(m_manager->width(), 352);
    QCOMPARE(m_manager->height(), 288);
    QCOMPARE(m_manager->framerate(), u"25/1"_s);
    QCOMPARE(m_manager->framerates(), QStringList({u"25/1"_s, u"15/1"_s}));
    // Nothing reaches the pipeline before it is applied.
    QCOMPARE(sourceDevice(), alphaCamera.device);
    QVERIFY(filters("video/x-raw,width=640,height=480,framerate=30/1"));
}

void TestCameraEmulationManager::selectingAResolution()
{
    setUpWith({alphaCamera});
    m_manager->setResolutionIndex(1);
    QCOMPARE(m_manager->width(), 320);
    QCOMPARE(m_manager->height(), 240);
    QCOMPARE(m_manager->framerates(), QStringList({u"30/1"_s, u"15/1"_s, u"5/1"_s}));
    QVERIFY(filters("video/x-raw,width=640,height=480,framerate=30/1"));
}

void TestCameraEmulationManager::selectingAResolutionKeepsTheFramerateIfItCan()
{
    setUpWith({alphaCamera});
    m_manager->setFramerate(u"15/1"_s);
    m_manager->setResolutionIndex(1);
    QCOMPARE(m_manager->framerate(), u"15/1"_s);
    m_manager->setFramerate(u"5/1"_s);
    m_manager->setResolutionIndex(0);
    QCOMPARE(m_manager->framerate(), u"30/1"_s);
}

void TestCameraEmulationManager::selectionsOutsideTheLists_data()
{
    QTest::addColumn<QString>("camera");
    QTest::addColumn<int>("index");

    QTest::newRow("below the list") << u"Alpha"_s << -1;
    QTest::newRow("behind the list") << u"Alpha"_s << 2;
    QTest::newRow("far below") << u"Alpha"_s << std::numeric_limits<int>::min();
    QTest::newRow("far behind") << u"Alpha"_s << std::numeric_limits<int>::max();
    QTest::newRow("a camera without resolutions") << u"Odd"_s << 0;
    QTest::newRow("a camera that is not there") << u"Nobody"_s << 0;
    QTest::newRow("no camera") << QString() << 0;
}

void TestCameraEmulationManager::selectionsOutsideTheLists()
{
    QFETCH(QString, camera);
    QFETCH(int, index);
    setUpWith({alphaCamera, oddCamera});
    m_manager->setCameraName(camera);
    m_manager->setResolutionIndex(index);
    QCOMPARE(m_manager->cameraName(), camera);
    QCOMPARE(m_manager->resolutionIndex(), index);
    QCOMPARE(m_manager->framerates(), QStringList());
    QCOMPARE(m_manager->width(), -1);
    QCOMPARE(m_manager->height(), -1);
    QCOMPARE(m_manager->framerate(), QString());
    m_manager->setCameraStreamSettings();
    QVERIFY(filters("video/x-raw"));
}

void TestCameraEmulationManager::settersAnnounceInOrder_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("expected");

    const QStringList index{
        u"width=352"_s, u"height=288"_s, u"framerate=25/1"_s, u"resolutionIndex=0"_s, u"framerates="_s};
    QTest::newRow("resolutionIndex, unchanged") << "resolutionIndex"_ba << QVariant(0) << index;
    QTest::newRow("cameraName, unchanged")
        << "cameraName"_ba << QVariant(u"Beta"_s)
        << index + QStringList{u"cameraName=Beta"_s, u"resolutionsChanged"_s, u"framerates="_s};
    QTest::newRow("framerate, unchanged") << "framerate"_ba << QVariant(u"25/1"_s) << QStringList(u"framerate=25/1"_s);
    QTest::newRow("framerate, another") << "framerate"_ba << QVariant(u"15/1"_s) << QStringList(u"framerate=15/1"_s);
    QTest::newRow("width, unchanged") << "width"_ba << QVariant(352) << QStringList(u"width=352"_s);
    QTest::newRow("width, unchecked") << "width"_ba << QVariant(-7) << QStringList(u"width=-7"_s);
    QTest::newRow("height, unchanged") << "height"_ba << QVariant(288) << QStringList(u"height=288"_s);
    QTest::newRow("height, unchecked") << "height"_ba << QVariant(0) << QStringList(u"height=0"_s);
}

void TestCameraEmulationManager::settersAnnounceInOrder()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    QFETCH(QStringList, expected);
    setUpWith({betaCamera});
    QVERIFY(m_manager->setProperty(property.constData(), value));
    QCOMPARE(m_manager->property(property.constData()), value);
    QCOMPARE(m_log->takeEntries(), expected);
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());
}

void TestCameraEmulationManager::framerateNeedsASlash()
{
    setUpWith({alphaCamera});
    m_manager->setFramerate(u"30"_s);
    QCOMPARE(m_manager->framerate(), QString());
    m_manager->setCameraStreamSettings();
    QVERIFY(filters("video/x-raw,width=640,height=480"));
}

void TestCameraEmulationManager::appliesTheSelection()
{
    setUpWith({alphaCamera, betaCamera});
    m_manager->setCameraName(u"Beta"_s);
    m_manager->setFramerate(u"15/1"_s);
    m_log->takeEntries();
    m_manager->setCameraStreamSettings();
    QCOMPARE(m_log->takeEntries(), QStringList(u"cameraStreamSettingsApplied"_s));
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());
    QCOMPARE(sourceDevice(), betaCamera.device);
    QVERIFY(filters("video/x-raw,width=352,height=288,framerate=15/1"));
}

void TestCameraEmulationManager::capsFollowTheSelection_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QString>("framerate");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("nothing selected") << -1 << -1 << QString() << "video/x-raw"_ba;
    QTest::newRow("a size alone") << 1280 << 720 << QString() << "video/x-raw,width=1280,height=720"_ba;
    QTest::newRow("a size and a framerate")
        << 640 << 480 << u"30/1"_s << "video/x-raw,width=640,height=480,framerate=30/1"_ba;
    QTest::newRow("a framerate alone") << -1 << -1 << u"30/1"_s << "video/x-raw,framerate=30/1"_ba;
    QTest::newRow("no width") << -1 << 480 << QString() << "video/x-raw"_ba;
    QTest::newRow("no height") << 640 << -1 << QString() << "video/x-raw"_ba;
    QTest::newRow("a zero size is one") << 0 << 0 << QString() << "video/x-raw,width=0,height=0"_ba;
    QTest::newRow("a framerate that is no whole number")
        << 640 << 480 << u"30000/1001"_s << "video/x-raw,width=640,height=480,framerate=30000/1001"_ba;
    QTest::newRow("a framerate that is none") << 640 << 480 << u"1,=;/"_s << "ANY"_ba;
}

void TestCameraEmulationManager::capsFollowTheSelection()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QString, framerate);
    QFETCH(QByteArray, expected);
    setUpWith({alphaCamera});
    m_manager->setWidth(width);
    m_manager->setHeight(height);
    m_manager->setFramerate(framerate);
    m_manager->setCameraStreamSettings();
    QVERIFY(filters(expected.constData()));
}

void TestCameraEmulationManager::selectsTheDevice_data()
{
    using Source = TestCamera::Source;
    QTest::addColumn<Source>("source");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QByteArray>("property");

    QTest::newRow("device") << Source::Device << u"/dev/video2"_s << "device"_ba;
    QTest::newRow("device-index as a number") << Source::DeviceIndex << u"2"_s << "device-index"_ba;
    QTest::newRow("device-path") << Source::DevicePath << u"/dev/video2"_s << "device-path"_ba;
    QTest::newRow("device rather than device-path") << Source::PathAndDevice << u"/dev/video2"_s << "device"_ba;
}

void TestCameraEmulationManager::selectsTheDevice()
{
    QFETCH(TestCamera::Source, source);
    QFETCH(QString, device);
    QFETCH(QByteArray, property);
    TestCamera camera = betaCamera;
    camera.source = source;
    camera.device = device;
    setUpWith({camera});
    if (property == "device-index")
        QCOMPARE(intProperty(cameraPipeline, u"sourcePluginCam"_s, "device-index"), device.toInt());
    else
        QCOMPARE(sourceDevice(property.constData()), device);
    if (source == TestCamera::Source::PathAndDevice)
        QCOMPARE(sourceDevice("device-path"), QString());
}

void TestCameraEmulationManager::aSourceOfAnotherKindIsLeftAlone()
{
    TestCamera byIndex = alphaCamera;
    byIndex.name = u"Zeta"_s;
    byIndex.source = TestCamera::Source::DeviceIndex;
    byIndex.device = u"3"_s;
    setUpWith({betaCamera, byIndex});
    m_manager->setCameraName(u"Zeta"_s);
    m_manager->setCameraStreamSettings();
    QCOMPARE(sourceDevice(), betaCamera.device);
}

void TestCameraEmulationManager::jpegIsDecodedAheadOfTheFilter()
{
    setUpWith({webCamera, alphaCamera});
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(PipelineRecorder::elements(cameraPipeline), cameraChain);

    m_manager->setCameraName(u"Web"_s);
    QCOMPARE(m_manager->width(), 1920);
    QCOMPARE(PipelineRecorder::elements(cameraPipeline), cameraChain); // it is not applied yet
    m_manager->setCameraStreamSettings();
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), decodingChain);
    QVERIFY(filters("video/x-raw,width=1920,height=1080,framerate=30/1"));
    const GstElementPointer decoder = element(cameraPipeline, u"jpegdecCam"_s);
    QVERIFY(decoder);
    QCOMPARE(QString::fromUtf8(GST_OBJECT_NAME(gst_element_get_factory(decoder.get()))), u"jpegdec"_s);
    PipelineRecorder::takeEntries();
    m_manager->setCameraStreamSettings(); // once more
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());

    m_manager->setResolutionIndex(1);
    m_manager->setCameraStreamSettings();
    QCOMPARE(m_manager->width(), 640);
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList(u"sourcePluginCam > capsfilterCam"_s));
    QCOMPARE(PipelineRecorder::elements(cameraPipeline), cameraChain);
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);

    // A pipeline that is made anew has it from the start.
    TestCameras::unplug(u"Alpha"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Web"_s));
    m_manager->updateCamerasList();
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), decodingChain);
}

void TestCameraEmulationManager::aStreamThatCountsAsStoppedGoesOnWithAnotherKindOfPictures()
{
    setUpWith({webCamera});
    m_manager->startCameraStream();
    m_manager->stopVideoStream(); // the other one
    m_manager->setResolutionIndex(1);
    PipelineRecorder::takeEntries();
    m_manager->setCameraStreamSettings();
    QCOMPARE(m_manager->streamRunning(), false);
    QVERIFY(PipelineRecorder::isPlaying(cameraPipeline));
    QCOMPARE(
        PipelineRecorder::takeEntries(),
        QStringList(
            {u"stop camera-stream-pipeline"_s,
             u"sourcePluginCam > capsfilterCam"_s,
             u"play camera-stream-pipeline"_s}));
}

void TestCameraEmulationManager::forgetsWhatAnUnpluggedCameraOffered()
{
    setUpWith({webCamera});
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), decodingChain);
    TestCameras::unplug(u"Web"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList());
    m_manager->setCameraStreamSettings();
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
    TestCamera other = webCamera;
    other.caps = alphaCamera.caps;
    TestCameras::plug(other);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Web"_s));
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
    TestCameras::unplug(u"Web"_s);
    TestCameras::plug(webCamera);
    m_manager->updateCamerasList();
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), decodingChain);
}

// PipeWire's sources have no property by which one of its cameras could be chosen.
void TestCameraEmulationManager::v4l2sCamerasComeBeforePipeWires()
{
    m_manager.reset();
    for (const TestCamera &camera : {alphaCamera, betaCamera}) {
        TestCamera ofV4l2 = camera;
        ofV4l2.provider = TestCamera::Provider::V4l2;
        TestCamera ofPipeWire = camera;
        ofPipeWire.name += u" (V4L2)"_s;
        ofPipeWire.source = TestCamera::Source::Plain;
        ofPipeWire.provider = TestCamera::Provider::PipeWire;
        TestCameras::plug(ofPipeWire);
        TestCameras::plug(ofV4l2);
    }
    makeManager();
    m_manager->setupCameraStreamPipeline();
    QCOMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
    m_manager->setCameraName(u"Beta"_s);
    m_manager->setCameraStreamSettings();
    QCOMPARE(sourceDevice(), betaCamera.device);

    for (const QString &name : {u"Alpha"_s, u"Beta"_s})
        TestCameras::unplug(name);
    m_manager->updateCamerasList();
    QCOMPARE(m_manager->cameras(), QStringList({u"Alpha (V4L2)"_s, u"Beta (V4L2)"_s}));
}

void TestCameraEmulationManager::theFirstDeviceDecidesOfWhichKindTheSourceIs_data()
{
    QTest::addColumn<QStringList>("order");
    QTest::addColumn<QString>("factory");

    QTest::newRow("which is the first by name, too") << QStringList{u"Alpha"_s, u"Zeta"_s} << u"testcamerasrc"_s;
    QTest::newRow("which is the last by name") << QStringList{u"Zeta"_s, u"Alpha"_s} << u"testindexcamerasrc"_s;
}

void TestCameraEmulationManager::theFirstDeviceDecidesOfWhichKindTheSourceIs()
{
    QFETCH(QStringList, order);
    QFETCH(QString, factory);
    TestCamera byIndex = betaCamera;
    byIndex.name = u"Zeta"_s;
    byIndex.source = TestCamera::Source::DeviceIndex;
    byIndex.device = u"3"_s;
    const auto sourceFactory = [] {
        const GstElementPointer source = element(cameraPipeline, u"sourcePluginCam"_s);
        return source ? QString::fromUtf8(GST_OBJECT_NAME(gst_element_get_factory(source.get()))) : QString();
    };
    QList<TestCamera> cameras;
    for (const QString &name : std::as_const(order))
        cameras.append(name == byIndex.name ? byIndex : alphaCamera);
    setUpWith(cameras);
    QCOMPARE(sourceFactory(), factory);
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);

    m_manager->updateCamerasList();
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
    QCOMPARE(sourceFactory(), factory);
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
}

void TestCameraEmulationManager::startsAndStopsTheCamera()
{
    setUpWith({alphaCamera});
    m_manager->startCameraStream();
    QCOMPARE(m_manager->streamRunning(), true);
    QCOMPARE(m_log->takeEntries(), QStringList(u"streamRunning=true"_s));
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList(u"play camera-stream-pipeline"_s));

    m_manager->startCameraStream();
    QCOMPARE(m_log->takeEntries(), QStringList(u"streamRunning=true"_s));
    QCOMPARE(
        PipelineRecorder::takeEntries(),
        QStringList({u"stop camera-stream-pipeline"_s, u"play camera-stream-pipeline"_s}));

    m_manager->stopCameraStream();
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(m_log->takeEntries(), QStringList(u"streamRunning=false"_s));
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList(u"stop camera-stream-pipeline"_s));
}

void TestCameraEmulationManager::applyingWhileStreamingRestarts()
{
    setUpWith({alphaCamera, betaCamera});
    m_manager->startCameraStream();
    m_manager->setCameraName(u"Beta"_s);
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
    m_manager->setCameraStreamSettings();
    QCOMPARE(
        m_log->takeEntries(),
        QStringList({u"streamRunning=false"_s, u"streamRunning=true"_s, u"cameraStreamSettingsApplied"_s}));
    QCOMPARE(
        PipelineRecorder::takeEntries(),
        QStringList({u"stop camera-stream-pipeline"_s, u"play camera-stream-pipeline"_s}));
    QCOMPARE(sourceDevice(), betaCamera.device);
    QVERIFY(filters("video/x-raw,width=352,height=288,framerate=25/1"));
}

void TestCameraEmulationManager::stoppingWhatDoesNotRunAnnouncesToo()
{
    setUpWith({alphaCamera});
    m_manager->stopVideoStream();
    m_manager->stopCameraStream();
    QCOMPARE(m_log->takeEntries(), QStringList({u"streamRunning=false"_s, u"streamRunning=false"_s}));

    // Each stops its own pipeline only.
    m_manager->startCameraStream();
    PipelineRecorder::takeEntries();
    m_manager->stopVideoStream();
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());
}

// The page stops streams when it is made, which is when the IDE starts.
void TestCameraEmulationManager::stoppingDoesNotWaitForGStreamer()
{
    m_manager->stopCameraStream();
    m_manager->stopVideoStream();
    m_manager->startVideoStream(QString());
    QCOMPARE(PipelineRecorder::count(videoPipeline), 0);
    QCOMPARE(m_log->takeEntries(), QStringList({u"streamRunning=false"_s, u"streamRunning=false"_s}));
    waitUntilWatching();
    QTRY_COMPARE(PipelineRecorder::count(videoPipeline), 1);
}

void TestCameraEmulationManager::anEmptyVideoPathStopsEverythingSilently()
{
    setUpWith({alphaCamera});
    m_manager->startCameraStream();
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
    m_manager->startVideoStream(QString());
    QCOMPARE(m_log->takeEntries(), QStringList());
    QCOMPARE(m_manager->streamRunning(), true);
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList(u"stop camera-stream-pipeline"_s));
}

void TestCameraEmulationManager::withoutASourceTheStreamCountsAsRunning()
{
    m_manager->setupCameraStreamPipeline();
    m_log->takeEntries();
    m_manager->startCameraStream();
    QCOMPARE(m_manager->streamRunning(), true);
    m_manager->setCameraStreamSettings();
    m_manager->stopCameraStream();
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(
        m_log->takeEntries(),
        QStringList(
            {u"streamRunning=true"_s,
             u"streamRunning=false"_s,
             u"streamRunning=true"_s,
             u"cameraStreamSettingsApplied"_s,
             u"streamRunning=false"_s}));
}

void TestCameraEmulationManager::firstCameraPluggedIn()
{
    setUpWith({});
    TestCameras::plug(betaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    // It is not selected by this.
    QCOMPARE(m_manager->cameraName(), QString());
    QCOMPARE(m_manager->resolutions(), QVariantList());
    QCOMPARE(
        m_log->takeEntries(),
        QStringList({u"cameras=Beta"_s, u"resolutionsChanged"_s, u"framerates="_s, u"cameraStreamSettingsApplied"_s}));
    // But there is a source now, which knows of no other.
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
    QCOMPARE(sourceDevice(), betaCamera.device);
    QVERIFY(filters("video/x-raw"));

    m_manager->setCameraName(u"Beta"_s);
    m_manager->setCameraStreamSettings();
    QVERIFY(filters("video/x-raw,width=352,height=288,framerate=25/1"));
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
}

// The chosen name is still the first one's, and so the source's device.
void TestCameraEmulationManager::anotherCameraTakesTheOnlyOnesPlace()
{
    setUpWith({alphaCamera});
    QCOMPARE(sourceDevice(), alphaCamera.device);
    TestCameras::unplug(u"Alpha"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList());
    TestCameras::plug(betaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(sourceDevice(), alphaCamera.device);
    m_manager->updateCamerasList();
    QCOMPARE(sourceDevice(), betaCamera.device);
}

void TestCameraEmulationManager::secondCameraPluggedIn()
{
    setUpWith({betaCamera});
    m_manager->startCameraStream();
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
    TestCameras::plug(alphaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
    QCOMPARE(m_manager->cameraName(), u"Beta"_s);
    QCOMPARE(m_log->takeEntries(), QStringList({u"cameras="_s, u"resolutionsChanged"_s, u"framerates="_s}));
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());
    QVERIFY(m_manager->streamRunning());
}

void TestCameraEmulationManager::sameNamePluggedInAgain()
{
    setUpWith({betaCamera});
    TestCamera twin = alphaCamera;
    twin.name = betaCamera.name;
    TestCameras::plug(twin);
    TestCameras::plug(gammaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList({u"Beta"_s, u"Gamma"_s}));
    QCOMPARE(m_manager->resolutions().size(), 1);
}

void TestCameraEmulationManager::selectedCameraUnplugged()
{
    setUpWith({alphaCamera, betaCamera, gammaCamera});
    m_manager->setCameraName(u"Beta"_s);
    m_log->takeEntries();
    TestCameras::unplug(u"Beta"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Gamma"_s}));
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(
        m_log->takeEntries(),
        QStringList(
            {u"cameras="_s,
             u"width=640"_s,
             u"height=480"_s,
             u"framerate=30/1"_s,
             u"resolutionIndex=0"_s,
             u"framerates="_s,
             u"cameraName=Alpha"_s,
             u"resolutionsChanged"_s,
             u"framerates="_s,
             u"cameraStreamSettingsApplied"_s}));
    QCOMPARE(sourceDevice(), alphaCamera.device);
    QVERIFY(filters("video/x-raw,width=640,height=480,framerate=30/1"));
}

void TestCameraEmulationManager::otherCameraUnplugged()
{
    setUpWith({alphaCamera, betaCamera});
    TestCameras::unplug(u"Beta"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Alpha"_s));
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(m_log->takeEntries(), QStringList(u"cameras=Alpha"_s));
}

void TestCameraEmulationManager::lastCameraUnplugged()
{
    setUpWith({alphaCamera});
    TestCameras::unplug(u"Alpha"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList());
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(m_manager->resolutions(), QVariantList());
    QCOMPARE(m_manager->framerates(), QStringList());
    QCOMPARE(m_log->takeEntries(), QStringList(u"cameras="_s));
}

void TestCameraEmulationManager::unpluggedWhileStreaming()
{
    setUpWith({alphaCamera, betaCamera});
    m_manager->startCameraStream();
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
    TestCameras::unplug(u"Alpha"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    QCOMPARE(m_manager->cameraName(), u"Beta"_s);
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(m_log->takeEntries().first(2), QStringList({u"streamRunning=false"_s, u"cameras=Beta"_s}));
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList(u"stop camera-stream-pipeline"_s));
    QCOMPARE(sourceDevice(), betaCamera.device);
}

void TestCameraEmulationManager::otherUnpluggedWhileStreaming()
{
    setUpWith({alphaCamera, betaCamera});
    m_manager->startCameraStream();
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
    TestCameras::unplug(u"Beta"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Alpha"_s));
    QCOMPARE(m_manager->streamRunning(), true);
    QCOMPARE(m_log->takeEntries(), QStringList(u"cameras=Alpha"_s));
    QCOMPARE(PipelineRecorder::takeEntries(), QStringList());
}

void TestCameraEmulationManager::pluggedInAgain()
{
    setUpWith({alphaCamera});
    TestCameras::unplug(u"Alpha"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList());
    TestCameras::plug(alphaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Alpha"_s));
    // It was selected when it went.
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(m_manager->resolutions().size(), 2);
    m_manager->startCameraStream();
    QVERIFY(PipelineRecorder::isPlaying(cameraPipeline));
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
}

void TestCameraEmulationManager::firstCameraPluggedInWhileStreaming()
{
    setUpWith({});
    m_manager->startCameraStream();
    m_log->takeEntries();
    TestCameras::plug(betaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    QCOMPARE(
        m_log->takeEntries().mid(3),
        QStringList({u"streamRunning=false"_s, u"streamRunning=true"_s, u"cameraStreamSettingsApplied"_s}));
}

void TestCameraEmulationManager::forgetsWhatWasAnnouncedToAnOlderMonitor()
{
    setUpWith({alphaCamera});
    // Posted, and not read yet.
    TestCameras::plug(betaCamera);
    TestCameras::unplug(u"Alpha"_s);
    m_manager->updateCamerasList();
    TestCameras::plug(alphaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
    QCOMPARE(m_manager->cameraName(), u"Beta"_s);
}

void TestCameraEmulationManager::updatesTheList()
{
    setUpWith({});
    TestCameras::plug(betaCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    m_log->takeEntries();

    m_manager->updateCamerasList();
    QCOMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    QCOMPARE(m_manager->cameraName(), u"Beta"_s);
    QCOMPARE(
        m_log->takeEntries(),
        QStringList(
            {u"cameras=Beta"_s,
             u"resolutionsChanged"_s,
             u"framerates="_s,
             u"width=352"_s,
             u"height=288"_s,
             u"framerate=25/1"_s,
             u"resolutionIndex=0"_s,
             u"framerates="_s,
             u"cameraName=Beta"_s,
             u"resolutionsChanged"_s,
             u"framerates="_s,
             u"cameraStreamSettingsApplied"_s}));
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
    QCOMPARE(sourceDevice(), betaCamera.device);
    QVERIFY(filters("video/x-raw,width=352,height=288,framerate=25/1"));
}

void TestCameraEmulationManager::updatesTheListWhileStreaming()
{
    setUpWith({alphaCamera});
    m_manager->startCameraStream();
    m_log->takeEntries();
    PipelineRecorder::takeEntries();
    m_manager->updateCamerasList();
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(m_log->entries().first(), u"streamRunning=false"_s);
    QCOMPARE(m_log->takeEntries().count(u"streamRunning=false"_s), 1);
    const QStringList events = PipelineRecorder::takeEntries();
    QCOMPARE(events.first(), u"stop camera-stream-pipeline"_s);
    QVERIFY(!events.contains(u"play camera-stream-pipeline"_s));
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
}

void TestCameraEmulationManager::updatesTheListToAnotherKindOfSource()
{
    setUpWith({alphaCamera});
    TestCamera byIndex = betaCamera;
    byIndex.source = TestCamera::Source::DeviceIndex;
    byIndex.device = u"5"_s;
    TestCameras::unplug(u"Alpha"_s);
    TestCameras::plug(byIndex);
    m_manager->updateCamerasList();
    QCOMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
    QCOMPARE(intProperty(cameraPipeline, u"sourcePluginCam"_s, "device-index"), 5);
}

void TestCameraEmulationManager::updatesTheListToNothing()
{
    setUpWith({alphaCamera});
    TestCameras::unplug(u"Alpha"_s);
    m_manager->updateCamerasList();
    QCOMPARE(m_manager->cameras(), QStringList());
    QCOMPARE(m_manager->cameraName(), u"Alpha"_s);
    QCOMPARE(m_log->takeEntries(), QStringList(u"cameraStreamSettingsApplied"_s));
    // The kind of source is remembered.
    QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
}

void TestCameraEmulationManager::updatesTheListWhileSomethingIsAnnounced()
{
    setUpWith({alphaCamera});
    bool updated = false;
    connect(m_manager.get(), &CameraEmulationManager::camerasChanged, m_manager.get(), [&] {
        if (!std::exchange(updated, true))
            m_manager->updateCamerasList();
    });
    TestCameras::plug(betaCamera);
    QTRY_VERIFY(updated);
    QTRY_COMPARE(m_manager->cameras(), QStringList({u"Alpha"_s, u"Beta"_s}));
    QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
    TestCameras::unplug(u"Alpha"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Beta"_s));
}

void TestCameraEmulationManager::randomPlugging_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : {1U, 2U, 3U})
        QTest::addRow("seed %u", seed) << seed;
}

void TestCameraEmulationManager::randomPlugging()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QList<TestCamera> all{alphaCamera, betaCamera, gammaCamera, oddCamera};
    const QTemporaryDir folder;
    const QString video = folder.filePath(u"video.webm"_s);
    QCOMPARE(TestUtils::writeVideo(video, {.frames = 300}), QString());
    setUpWith({betaCamera});

    // What must hold, told without a pipeline.
    QSet<QString> plugged{u"Beta"_s};
    QString selected = u"Beta"_s;
    QString applied = u"Beta"_s; // the camera that the source would open
    bool running = false;
    bool cameraPlays = false;
    bool videoPlays = false;
    const auto selectFirst = [&] {
        if (!plugged.isEmpty())
            selected = sorted(plugged).constFirst();
    };
    const auto startCamera = [&] {
        running = true;
        cameraPlays = plugged.contains(applied);
        videoPlays = false;
    };
    const auto apply = [&] {
        if (plugged.contains(selected))
            applied = selected;
        if (running)
            startCamera();
    };

    for (int step = 0; step < 150; ++step) {
        const TestCamera &camera = all.at(random.bounded(int(all.size())));
        switch (random.bounded(12)) {
        case 0:
            m_manager->startCameraStream();
            startCamera();
            break;
        case 1:
            m_manager->stopCameraStream();
            running = cameraPlays = false;
            break;
        case 2:
            m_manager->startVideoStream(video);
            running = videoPlays = true;
            cameraPlays = false;
            break;
        case 3:
            m_manager->stopVideoStream();
            running = videoPlays = false;
            break;
        case 4:
            m_manager->startVideoStream(random.bounded(2) ? QString() : folder.filePath(u"missing.webm"_s));
            cameraPlays = videoPlays = false;
            break;
        case 5:
            m_manager->setCameraStreamSettings();
            apply();
            break;
        case 6:
            if (plugged.contains(camera.name)) {
                m_manager->setCameraName(camera.name);
                selected = camera.name;
            }
            break;
        case 7:
            m_manager->updateCamerasList();
            running = cameraPlays = false;
            applied.clear();
            selectFirst();
            apply();
            break;
        default:
            if (plugged.remove(camera.name)) {
                TestCameras::unplug(camera.name);
                if (selected == camera.name) {
                    if (running)
                        running = cameraPlays = false;
                    if (!plugged.isEmpty()) {
                        selectFirst();
                        apply();
                    }
                }
            } else {
                TestCameras::plug(camera);
                plugged.insert(camera.name);
                if (plugged.size() == 1)
                    apply();
            }
        }

        QTRY_COMPARE(m_manager->cameras(), sorted(plugged));
        QCOMPARE(m_manager->cameraName(), selected);
        QCOMPARE(m_manager->streamRunning(), running);
        const bool offers = plugged.contains(selected) && selected != "Odd"_L1;
        QCOMPARE(m_manager->resolutions().isEmpty(), !offers);
        QCOMPARE(m_manager->framerates().isEmpty(), !offers);
        QVERIFY(!offers || m_manager->framerates().contains(m_manager->framerate()));
        QTRY_COMPARE(PipelineRecorder::count(cameraPipeline), 1);
        QCOMPARE(PipelineRecorder::chain(cameraPipeline, u"sourcePluginCam"_s), cameraChain);
        QCOMPARE(PipelineRecorder::isPlaying(cameraPipeline), cameraPlays);
        QCOMPARE(PipelineRecorder::isPlaying(videoPipeline), videoPlays);
    }
}

void TestCameraEmulationManager::livesShortly()
{
    // Before GStreamer is loaded, before that has been noticed, and with a stream and unread announcements.
    m_manager.reset();
    for (int i = 0; i < 20; ++i) {
        CameraEmulationManager untouched;
        CameraEmulationManager used;
        used.setupCameraStreamPipeline();
        used.startCameraStream();
        TestCameras::plug(betaCamera);
        TestCameras::unplug(u"Beta"_s);
    }
    QCoreApplication::processEvents();
}

// Anyone may emit a signal, a script of the view too.
void TestCameraEmulationManager::aVideosEndIsNoMatterBeforeSetUp()
{
    CameraEmulationManager manager;
    Q_EMIT manager.videoStreamStopped();
    QVERIFY(!manager.streamRunning());
}

QTEST_GUILESS_MAIN(TestCameraEmulationManager)

#include "tst_cameraemulationmanager.moc"
