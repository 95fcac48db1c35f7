// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraemulationmanager.h"

#include "camera/gsthandles.h"
#include "utils/jpegreceiver.h"
#include "utils/pipelinerecorder.h"
#include "utils/signallog.h"
#include "utils/testcameras.h"
#include "utils/testmedia.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QUrl>

#include <sys/stat.h>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::alike;
using TestUtils::JpegReceiver;
using TestUtils::PipelineRecorder;
using TestUtils::SignalLog;
using TestUtils::TestCamera;
using TestUtils::TestCameras;
using TestUtils::TestVideo;

namespace {

const QColor green(0, 255, 0);
const QColor blue(0, 0, 255);
const QSize cameraSize(320, 240);
const QSize videoSize(160, 120);

const TestCamera blueCamera{.name = u"Blue"_s, .color = blue};

const QString playCamera = u"play camera-stream-pipeline"_s;
const QString stopCamera = u"stop camera-stream-pipeline"_s;
const QString playVideo = u"play video-stream-pipeline"_s;
const QString stopVideo = u"stop video-stream-pipeline"_s;

const QStringList rawChain{
    u"sourcePluginCam"_s, u"capsfilterCam"_s, u"jpegencCam"_s, u"rtpjpegpayCam"_s, u"udpsinkCam"_s};
const QStringList decodingChain{
    u"sourcePluginCam"_s, u"jpegdecCam"_s, u"capsfilterCam"_s, u"jpegencCam"_s, u"rtpjpegpayCam"_s, u"udpsinkCam"_s};

QStringList cameraChain()
{
    return PipelineRecorder::chain(u"camera-stream-pipeline"_s, u"sourcePluginCam"_s);
}

bool writeBytes(const QString &filePath, const QByteArray &bytes)
{
    QFile file(filePath);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readBytes(const QString &filePath)
{
    QFile file(filePath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Which of the manager's pipelines is played and stopped. Looking into a file takes others.
QStringList takeStates()
{
    static const QRegularExpression ours(u"^(play|stop) (camera|video)-stream-pipeline$"_s);
    return PipelineRecorder::takeEntries().filter(ours);
}

} // namespace

class TestCameraStreams : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void cameraPicturesArrive_data();
    void cameraPicturesArrive();
    void aPatternArrivesPixelByPixel();
    void theChosenCameraIsShown();
    void appliedSettingsArrive();
    void jpegIsDecodedWhereNothingElseComes_data();
    void jpegIsDecodedWhereNothingElseComes();
    void sizesOfBothKindsTakeTurns_data();
    void sizesOfBothKindsTakeTurns();
    void theFirstCameraThatIsPluggedInStreams_data();
    void theFirstCameraThatIsPluggedInStreams();
    void theFirstCameraThatIsPluggedInBeginsToStream();

    void videoLoops_data();
    void videoLoops();
    void soundIsLeftOut();
    void videoEndsInTheManagersThread();
    void aStoppedVideoIsNotRestarted_data();
    void aStoppedVideoIsNotRestarted();
    void namesOfFiles_data();
    void namesOfFiles();
    void refusedFiles_data();
    void refusedFiles();
    void refusedFilesEndARunningStream_data();
    void refusedFilesEndARunningStream();
    void onlyAcceptedFilesReachTheSource_data();
    void onlyAcceptedFilesReachTheSource();
    void h264IsNamed();
    void aVideoThatCannotBeEncodedBlocksNothing();
    void anotherVideoTakesOver();

    void cameraToVideoToCamera();
    void appliedSettingsReplaceTheVideo();
    void unpluggedWhileAVideoPlays();
    void updatingTheListWhileAVideoPlays();
    void noFileEndsAVideoThatCountsAsStopped();
    void updatingTheListEndsTheCamerasStream();
    void pluggedInAgainItStreams();
    void truncatedFiles();
    void streamsLeaveNothingBehind();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    bool nothingComes();
    void addRefusedFiles();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<JpegReceiver> m_receiver;
    std::unique_ptr<SignalLog> m_log;
    std::unique_ptr<CameraEmulationManager> m_manager;
    QString m_video; // green, repeated 5 times a second
};

void TestCameraStreams::initTestCase()
{
    TestCameras::install();
    PipelineRecorder::install();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_video = path(u"green.webm"_s);
    QCOMPARE(TestUtils::writeVideo(m_video, {}), QString());
}

void TestCameraStreams::init()
{
    m_receiver = std::make_unique<JpegReceiver>();
    m_manager = std::make_unique<CameraEmulationManager>();
    m_log = std::make_unique<SignalLog>();
    m_log->watch(m_manager.get());
}

void TestCameraStreams::cleanup()
{
    QCOMPARE(m_receiver->errors(), QStringList());
    m_manager.reset();
    m_receiver.reset();
    TestCameras::unplugAll();
    PipelineRecorder::takeEntries();
}

// Of the manager's. While another sender's pictures come, one by one, a stream that goes on would be seen.
bool TestCameraStreams::nothingComes()
{
    const auto send = [this](int pictures) {
        return TestUtils::writeMedia(
                   path(u"sent"_s),
                   "videotestsrc is-live=true num-buffers=" + QByteArray::number(pictures)
                       + " ! video/x-raw,format=I420,width=64,height=48,framerate=30/1 ! jpegenc ! tee name=all"
                         " ! queue ! rtpjpegpay ! udpsink host=127.0.0.1 port=34343 all. ! queue ! filesink "
                         "name=target")
            .isEmpty();
    };
    const QSize size(64, 48);
    // What was on its way is there before it.
    if (!send(1) || !QTest::qWaitFor([&] { return m_receiver->size() == size; }, 30000))
        return false;
    m_receiver->clear();
    return send(5) && QTest::qWaitFor([&] { return m_receiver->frameCount() >= 5; }, 30000)
        && m_receiver->sizes() == QList<QSize>({size});
}

void TestCameraStreams::cameraPicturesArrive_data()
{
    QTest::addColumn<QByteArray>("caps");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("rate");

    QTest::newRow("I420, 320x240 at 30") << "video/x-raw,format=I420,width=320,height=240,framerate=30/1"_ba
                                         << QSize(320, 240) << 30.0;
    QTest::newRow("YUY2, 640x480 at 15") << "video/x-raw,format=YUY2,width=640,height=480,framerate={15/1,5/1}"_ba
                                         << QSize(640, 480) << 15.0;
    QTest::newRow("NV12, 1280x720 at 10")
        << "video/x-raw,format=NV12,width=1280,height=720,framerate=[1/1,10/1]"_ba << QSize(1280, 720) << 10.0;
    QTest::newRow("a rate that is no whole number")
        << "video/x-raw,format=I420,width=352,height=288,framerate=30000/1001"_ba << QSize(352, 288) << 29.97;
    QTest::newRow("a size and rate that cannot be chosen are the source's")
        << "video/x-raw,format=I420,width=[160,240],height=[120,184],framerate=[10/1,20/1]"_ba << QSize(240, 184)
        << 20.0;
}

void TestCameraStreams::cameraPicturesArrive()
{
    QFETCH(QByteArray, caps);
    QFETCH(QSize, size);
    QFETCH(double, rate);
    TestCamera camera = blueCamera;
    camera.caps = caps;
    TestCameras::plug(camera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({size}));
    QVERIFY2(qAbs(m_receiver->rate() - rate) < 0.05, qPrintable(QString::number(m_receiver->rate())));
    QVERIFY(alike(m_receiver->color(), blue));
}

void TestCameraStreams::aPatternArrivesPixelByPixel()
{
    TestCamera camera = blueCamera;
    camera.caps = "video/x-raw,format=YUY2,width=640,height=480,framerate=15/1";
    camera.pattern = "smpte100";
    TestCameras::plug(camera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 1, 30000);
    const QImage frame = m_receiver->lastFrame();
    const QList<QColor> bars{Qt::white, Qt::yellow, Qt::cyan, QColor(0, 255, 0), Qt::magenta, Qt::red, Qt::blue};
    for (int i = 0; i < bars.size(); ++i) {
        // The upper two thirds are the bars; colours bleed into the blocks of 16 pixels at their borders.
        const int left = frame.width() * i / int(bars.size()) + 16;
        const int right = frame.width() * (i + 1) / int(bars.size()) - 16;
        for (int y = 0; y < frame.height() / 2; ++y) {
            for (int x = left; x < right; ++x) {
                const QColor color = frame.pixelColor(x, y);
                QVERIFY2(
                    alike(color, bars.at(i)),
                    qPrintable(u"%1,%2 is %3 instead of %4"_s.arg(x).arg(y).arg(color.name(), bars.at(i).name())));
            }
        }
    }
}

void TestCameraStreams::theChosenCameraIsShown()
{
    TestCamera red = blueCamera;
    red.name = u"Red"_s;
    red.device = u"/dev/test1"_s;
    red.color = Qt::red;
    TestCameras::plug(blueCamera);
    TestCameras::plug(red);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(alike(m_receiver->color(), blue), 30000);
    m_manager->setCameraName(u"Red"_s);
    m_manager->setCameraStreamSettings();
    QTRY_VERIFY_WITH_TIMEOUT(alike(m_receiver->color(), Qt::red), 30000);
    // The first that is left is taken, but not started.
    TestCameras::unplug(u"Red"_s);
    QTRY_VERIFY(!m_manager->streamRunning());
    QVERIFY(nothingComes());
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(alike(m_receiver->color(), blue), 30000);
}

void TestCameraStreams::appliedSettingsArrive()
{
    TestCamera camera = blueCamera;
    camera.caps = "video/x-raw,format=I420,width=640,height=480,framerate={30/1,15/1};"
                  "video/x-raw,format=I420,width=320,height=240,framerate={30/1,20/1}";
    TestCameras::plug(camera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->size() == QSize(640, 480), 30000);

    m_manager->setResolutionIndex(1);
    m_manager->setFramerate(u"20/1"_s);
    m_manager->setCameraStreamSettings();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->size() == QSize(320, 240), 30000);
    m_receiver->clear();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 5, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({QSize(320, 240)}));
    QVERIFY2(qAbs(m_receiver->rate() - 20) < 0.05, qPrintable(QString::number(m_receiver->rate())));
}

void TestCameraStreams::jpegIsDecodedWhereNothingElseComes_data()
{
    QTest::addColumn<QByteArray>("caps");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("rate");
    QTest::addColumn<bool>("decoded");

    const QByteArray rawSmall = "video/x-raw,format=YUY2,width=320,height=240,framerate=30/1";
    const QByteArray jpegSmall = "image/jpeg,width=320,height=240,framerate=30/1";
    const QByteArray jpegLarge = "image/jpeg,width=640,height=480,framerate={20/1,10/1}";
    QTest::newRow("a laptop's camera: the largest size comes as JPEG only")
        << rawSmall + ';' + jpegLarge + ';' + jpegSmall << QSize(640, 480) << 20.0 << true;
    QTest::newRow("JPEG is listed first")
        << jpegLarge + ';' + jpegSmall + ';' + rawSmall << QSize(640, 480) << 20.0 << true;
    QTest::newRow("a size that comes as both stays raw")
        << jpegSmall + ';' + rawSmall << QSize(320, 240) << 30.0 << false;
    QTest::newRow("the highest rate of a raw size comes as JPEG only")
        << jpegLarge + ";video/x-raw,format=YUY2,width=640,height=480,framerate={10/1,5/1}" << QSize(640, 480) << 20.0
        << true;
    QTest::newRow("the size is in a range that comes raw")
        << jpegSmall + ";video/x-raw,format=I420,width=[16,1920],height=[16,1080],framerate=[1/1,60/1]"
        << QSize(320, 240) << 30.0 << false;
}

void TestCameraStreams::jpegIsDecodedWhereNothingElseComes()
{
    QFETCH(QByteArray, caps);
    QFETCH(QSize, size);
    QFETCH(double, rate);
    QFETCH(bool, decoded);
    TestCamera camera = blueCamera;
    camera.caps = caps;
    TestCameras::plug(camera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({size}));
    QVERIFY2(qAbs(m_receiver->rate() - rate) < 0.05, qPrintable(QString::number(m_receiver->rate())));
    QVERIFY(alike(m_receiver->color(), blue));
    QCOMPARE(cameraChain(), decoded ? decodingChain : rawChain);
}

void TestCameraStreams::sizesOfBothKindsTakeTurns_data()
{
    QTest::addColumn<bool>("streaming");

    QTest::newRow("while the camera streams") << true;
    QTest::newRow("between two streams") << false;
}

void TestCameraStreams::sizesOfBothKindsTakeTurns()
{
    QFETCH(bool, streaming);
    TestCamera camera = blueCamera;
    camera.caps = "video/x-raw,format=YUY2,width=320,height=240,framerate=30/1;"
                  "image/jpeg,width=640,height=480,framerate=30/1";
    TestCameras::plug(camera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), QSize(640, 480), 30000);
    for (int i = 0; i < 6; ++i) {
        const bool isRaw = i % 2 == 0;
        if (!streaming)
            m_manager->stopCameraStream();
        m_manager->setResolutionIndex(isRaw ? 1 : 0);
        m_manager->setCameraStreamSettings();
        QCOMPARE(cameraChain(), isRaw ? rawChain : decodingChain);
        if (!streaming)
            m_manager->startCameraStream();
        const QSize size = isRaw ? QSize(320, 240) : QSize(640, 480);
        QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), size, 30000);
        m_receiver->clear();
        QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 5, 30000);
        QCOMPARE(m_receiver->sizes(), QList<QSize>({size}));
    }
    QCOMPARE(PipelineRecorder::elements(u"camera-stream-pipeline"_s).size(), decodingChain.size());
}

void TestCameraStreams::theFirstCameraThatIsPluggedInStreams_data()
{
    QTest::addColumn<bool>("chosen");

    QTest::newRow("once it is chosen") << true;
    QTest::newRow("even if nobody chooses it") << false;
}

void TestCameraStreams::theFirstCameraThatIsPluggedInStreams()
{
    QFETCH(bool, chosen);
    m_manager->setupCameraStreamPipeline(); // the view is shown
    TestCameras::plug(blueCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Blue"_s));
    if (chosen) {
        m_manager->setCameraName(u"Blue"_s);
        m_manager->setCameraStreamSettings();
    }
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QVERIFY(alike(m_receiver->color(), blue));
    m_manager->stopCameraStream();
    QVERIFY(nothingComes());

    // So does one that comes when it has gone, once it is chosen.
    TestCameras::unplug(u"Blue"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList());
    TestCamera red = blueCamera;
    red.name = u"Red"_s;
    red.device = u"/dev/test1"_s;
    red.color = Qt::red;
    TestCameras::plug(red);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Red"_s));
    m_manager->setCameraName(u"Red"_s);
    m_manager->setCameraStreamSettings();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(alike(m_receiver->color(), Qt::red), 30000);
}

// A stream that has been started counts as running, also where there is nothing to see.
void TestCameraStreams::theFirstCameraThatIsPluggedInBeginsToStream()
{
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    TestCameras::plug(blueCamera);
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QVERIFY(alike(m_receiver->color(), blue));
    QCOMPARE(m_receiver->sizes(), QList<QSize>({cameraSize}));
}

void TestCameraStreams::videoLoops_data()
{
    QTest::addColumn<QByteArray>("encoder");
    QTest::addColumn<QByteArray>("container");

    QTest::newRow("VP8 in WebM") << "vp8enc deadline=1"_ba << "webmmux"_ba;
    QTest::newRow("VP9 in WebM") << "vp9enc deadline=1 cpu-used=8"_ba << "webmmux"_ba;
    QTest::newRow("VP8 in Matroska") << "vp8enc deadline=1"_ba << "matroskamux"_ba;
}

void TestCameraStreams::videoLoops()
{
    QFETCH(QByteArray, encoder);
    QFETCH(QByteArray, container);
    const QString file = path(u"looping"_s);
    QCOMPARE(TestUtils::writeVideo(file, {.encoder = encoder, .container = container}), QString());
    QSignalSpy stopped(m_manager.get(), &CameraEmulationManager::videoStreamStopped);
    m_manager->startVideoStream(file);
    QTRY_VERIFY_WITH_TIMEOUT(stopped.size() >= 6, 60000);
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 30, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({videoSize}));
    QVERIFY(alike(m_receiver->color(), green));
    QVERIFY(m_manager->streamRunning());
    QStringList log = m_log->takeEntries();
    log.removeAll(u"videoStreamStopped"_s);
    QCOMPARE(log, QStringList({u"videoFileCodecChecked"_s, u"streamRunning=true"_s}));
    QStringList states = takeStates();
    QCOMPARE(states.takeFirst(), playVideo);
    while (states.size() > 1) {
        QCOMPARE(states.takeFirst(), stopVideo);
        QCOMPARE(states.takeFirst(), playVideo);
    }
    QCOMPARE(states.size(), 0);
}

void TestCameraStreams::soundIsLeftOut()
{
    const QString file = path(u"sound.webm"_s);
    const QString problem = TestUtils::writeMedia(
        file,
        "audiotestsrc num-buffers=20 ! vorbisenc ! queue ! webmmux name=mux ! filesink name=target "
        "videotestsrc pattern=solid-color foreground-color=0xff00ff00 num-buffers=10 "
        "! video/x-raw,format=I420,width=160,height=120,framerate=30/1 ! vp8enc deadline=1 ! queue ! mux.");
    QCOMPARE(problem, QString());
    QSignalSpy stopped(m_manager.get(), &CameraEmulationManager::videoStreamStopped);
    m_manager->startVideoStream(file);
    QTRY_VERIFY_WITH_TIMEOUT(stopped.size() >= 2, 60000);
    QTRY_VERIFY(m_receiver->frameCount() >= 10);
    QVERIFY(alike(m_receiver->color(), green));
}

void TestCameraStreams::videoEndsInTheManagersThread()
{
    QThread *emitter = nullptr;
    connect(
        m_manager.get(),
        &CameraEmulationManager::videoStreamStopped,
        m_manager.get(),
        [&] { emitter = QThread::currentThread(); },
        Qt::DirectConnection);
    m_manager->startVideoStream(m_video);
    QTRY_COMPARE_WITH_TIMEOUT(emitter, thread(), 30000);
}

void TestCameraStreams::aStoppedVideoIsNotRestarted_data()
{
    QTest::addColumn<QStringList>("operations");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("stopped") << QStringList{u"stopVideoStream"_s} << QStringList{stopVideo};
    QTest::newRow("replaced by the camera")
        << QStringList{u"startCameraStream"_s} << QStringList{stopVideo, playCamera};
    QTest::newRow("started again, it plays from the start once")
        << QStringList{u"stopVideoStream"_s, u"startVideoStream"_s} << QStringList{stopVideo, playVideo};
}

void TestCameraStreams::aStoppedVideoIsNotRestarted()
{
    QFETCH(QStringList, operations);
    QFETCH(QStringList, expected);
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    // The end of the second file would be far away.
    const QString longVideo = path(u"long.webm"_s);
    if (!QFile::exists(longVideo))
        QCOMPARE(
            TestUtils::writeVideo(longVideo, {.frames = 3000, .encoder = "vp8enc deadline=1 cpu-used=16"}), QString());

    // Waits for the end of the file without letting the manager hear of it.
    QSemaphore ends;
    const GstElementPointer sink(PipelineRecorder::element(u"video-stream-pipeline"_s, u"udpsinkVS"_s));
    const GstPadPointer pad(gst_element_get_static_pad(sink.get(), "sink"));
    const auto onEvent = [](GstPad *, GstPadProbeInfo *info, gpointer semaphore) {
        if (GST_EVENT_TYPE(gst_pad_probe_info_get_event(info)) == GST_EVENT_EOS)
            static_cast<QSemaphore *>(semaphore)->release();
        return GST_PAD_PROBE_OK;
    };
    const gulong probe = gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onEvent, &ends, nullptr);
    m_log->takeEntries();
    m_manager->startVideoStream(m_video);
    QVERIFY(ends.tryAcquire(1, 30000));
    gst_pad_remove_probe(pad.get(), probe);
    QCOMPARE(m_log->takeEntries(), QStringList({u"videoFileCodecChecked"_s, u"streamRunning=true"_s}));
    takeStates();

    for (const QString &operation : std::as_const(operations)) {
        if (operation == "startVideoStream"_L1)
            m_manager->startVideoStream(longVideo);
        else
            QVERIFY(QMetaObject::invokeMethod(m_manager.get(), operation.toLatin1().constData()));
    }
    QCoreApplication::processEvents();
    QVERIFY(!m_log->takeEntries().contains(u"videoStreamStopped"_s));
    QCOMPARE(takeStates(), expected);
}

void TestCameraStreams::namesOfFiles_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("blanks") << u" a video .webm"_s;
    QTest::newRow("a hash") << u"take #1.webm"_s;
    QTest::newRow("a percent sign") << u"100%.webm"_s;
    QTest::newRow("an escape that is none") << u"a%20b%41%00.webm"_s;
    QTest::newRow("a question mark") << u"why?a=b&c=d;.webm"_s;
    QTest::newRow("non-Latin letters") << u"Фильм 影片 🎥.webm"_s;
    QTest::newRow("decomposed letters") << u"u\u0308ber.webm"_s;
    QTest::newRow("quotes and a backslash") << u"it's \"it\" \\ .webm"_s;
    QTest::newRow("a colon") << u"http:video.webm"_s;
    QTest::newRow("a line break") << u"two\nlines.webm"_s;
    QTest::newRow("brackets and a plus sign") << u"[1]+{2}.webm"_s;
    QTest::newRow("no ending") << u"video"_s;
    QTest::newRow("a folder of such a name") << u"50% of #1 фильм/video.webm"_s;
}

void TestCameraStreams::namesOfFiles()
{
    QFETCH(QString, name);
    const QString file = path(name);
    QVERIFY(QDir().mkpath(QFileInfo(file).path()));
    QVERIFY(QFile::copy(m_video, file));
    QSignalSpy checked(m_manager.get(), &CameraEmulationManager::videoFileCodecChecked);
    m_manager->startVideoStream(file);
    QCOMPARE(checked.size(), 1);
    QCOMPARE(checked.first().first().toBool(), true);
    QVERIFY2(checked.first().last().toString().contains(u"VP8"_s), qPrintable(checked.first().last().toString()));
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 3, 30000);
    QVERIFY(alike(m_receiver->color(), green));
    QVERIFY(QFile::remove(file));
}

void TestCameraStreams::addRefusedFiles()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("codec");

    const QString h264 = path(u"h264.mkv"_s);
    QCOMPARE(TestUtils::writeH264(h264), QString());
    QTest::newRow("H.264 that the host cannot decode") << h264 << QString();
    const QString theora = path(u"theora.ogv"_s);
    QCOMPARE(TestUtils::writeVideo(theora, {.encoder = "theoraenc", .container = "oggmux"}), QString());
    QTest::newRow("Theora") << theora << u"Theora"_s;
    const QString motionJpeg = path(u"jpeg.mkv"_s);
    QCOMPARE(TestUtils::writeVideo(motionJpeg, {.encoder = "jpegenc", .container = "matroskamux"}), QString());
    QTest::newRow("Motion JPEG") << motionJpeg << u"Motion JPEG"_s;
    const QString raw = path(u"raw.mkv"_s);
    QCOMPARE(TestUtils::writeVideo(raw, {.encoder = "identity", .container = "matroskamux"}), QString());
    QTest::newRow("no codec at all") << raw << u"Uncompressed planar YUV 4:2:0"_s;

    const QString sound = path(u"sound.ogg"_s);
    QCOMPARE(
        TestUtils::writeMedia(sound, "audiotestsrc num-buffers=10 ! vorbisenc ! webmmux ! filesink name=target"),
        QString());
    QTest::newRow("sound only") << sound << QString();
    const QString text = path(u"text.webm"_s);
    QVERIFY(writeBytes(text, "This is no video, though it says VP8.\n"));
    QTest::newRow("text") << text << QString();
    const QString empty = path(u"empty.webm"_s);
    QVERIFY(writeBytes(empty, {}));
    QTest::newRow("empty") << empty << QString();
    const QString truncated = path(u"truncated.webm"_s);
    QVERIFY(writeBytes(truncated, readBytes(m_video).first(64)));
    QTest::newRow("truncated in its header") << truncated << QString();
    QTest::newRow("missing") << path(u"missing.webm"_s) << QString();
    QTest::newRow("a folder") << m_folder->path() << QString();
    const QString pipe = path(u"pipe"_s);
    QVERIFY(QFile::exists(pipe) || mkfifo(pipe.toLocal8Bit().constData(), 0600) == 0);
    QTest::newRow("a named pipe that nobody writes to") << pipe << QString();
    QTest::newRow("a URL") << QUrl::fromLocalFile(m_video).toString() << QString();
}

void TestCameraStreams::refusedFiles_data()
{
    addRefusedFiles();
}

void TestCameraStreams::refusedFiles()
{
    QFETCH(QString, file);
    QFETCH(QString, codec);
    QSignalSpy checked(m_manager.get(), &CameraEmulationManager::videoFileCodecChecked);
    m_manager->startVideoStream(file);
    QCOMPARE(checked.size(), 1);
    QCOMPARE(checked.first().first().toBool(), false);
    QCOMPARE(checked.first().last().toString(), codec);
    QCOMPARE(m_log->takeEntries(), QStringList(u"videoFileCodecChecked"_s));
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(takeStates(), QStringList());
}

void TestCameraStreams::refusedFilesEndARunningStream_data()
{
    addRefusedFiles();
}

void TestCameraStreams::refusedFilesEndARunningStream()
{
    QFETCH(QString, file);
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 1, 30000);
    m_log->takeEntries();
    takeStates();
    m_manager->startVideoStream(file);
    QCOMPARE(m_log->takeEntries(), QStringList(u"videoFileCodecChecked"_s));
    QCOMPARE(m_manager->streamRunning(), true);
    QCOMPARE(takeStates(), QStringList(stopCamera));
    QVERIFY(nothingComes());
}

void TestCameraStreams::onlyAcceptedFilesReachTheSource_data()
{
    QTest::addColumn<bool>("running");

    QTest::newRow("while nothing runs") << false;
    QTest::newRow("while the camera runs") << true;
}

void TestCameraStreams::onlyAcceptedFilesReachTheSource()
{
    QFETCH(bool, running);
    const QString other = path(u"Другое видео.webm"_s);
    const QString refused = path(u"refused.webm"_s);
    QCOMPARE(TestUtils::writeVideo(other, {.frames = 300}), QString());
    QVERIFY(writeBytes(refused, "no video"));
    const auto location = [] {
        const GstElementPointer source(PipelineRecorder::element(u"video-stream-pipeline"_s, u"filesrc"_s));
        gchar *text = nullptr;
        if (source)
            g_object_get(source.get(), "location", &text, nullptr);
        return QFile::decodeName(GCharPointer(text).get());
    };
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    QCOMPARE(location(), QString());

    if (running)
        m_manager->startCameraStream();
    m_manager->startVideoStream(refused);
    QCOMPARE(location(), QString());
    QCOMPARE(m_manager->streamRunning(), running);
    m_manager->startVideoStream(other);
    QCOMPARE(location(), other);
    QVERIFY(m_manager->streamRunning());
    for (const QString &file : {refused, QString(), path(u"missing.webm"_s)}) {
        m_manager->startVideoStream(file);
        QCOMPARE(location(), other);
        QVERIFY(m_manager->streamRunning());
        QVERIFY(nothingComes());
    }
    m_manager->startVideoStream(m_video);
    QCOMPARE(location(), m_video);
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 3, 30000);
    QVERIFY(alike(m_receiver->color(), green));
}

void TestCameraStreams::h264IsNamed()
{
    TestUtils::installH264Decoder();
    const QString file = path(u"decodable.mkv"_s);
    QCOMPARE(TestUtils::writeH264(file), QString());
    QSignalSpy checked(m_manager.get(), &CameraEmulationManager::videoFileCodecChecked);
    m_manager->startVideoStream(file);
    QCOMPARE(checked.size(), 1);
    QCOMPARE(checked.first(), QVariantList({false, u"H264"_s}));
    QCOMPARE(m_manager->streamRunning(), false);
    QCOMPARE(takeStates(), QStringList());
}

void TestCameraStreams::aVideoThatCannotBeEncodedBlocksNothing()
{
    const QString deep = path(u"deep.webm"_s);
    QCOMPARE(
        TestUtils::writeVideo(deep, {.encoder = "vp9enc deadline=1 cpu-used=8", .format = "I420_10LE"}), QString());
    QSignalSpy checked(m_manager.get(), &CameraEmulationManager::videoFileCodecChecked);
    m_manager->startVideoStream(deep);
    QCOMPARE(checked.size(), 1);
    QCOMPARE(checked.first().first().toBool(), true);
    QVERIFY(m_manager->streamRunning());
    QVERIFY(nothingComes());
    m_manager->startVideoStream(deep);
    m_manager->startVideoStream(m_video);
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 5, 30000);
}

void TestCameraStreams::anotherVideoTakesOver()
{
    const QString other = path(u"other.webm"_s);
    QCOMPARE(TestUtils::writeVideo(other, {.width = 240, .height = 160, .color = "0xff0000ff"}), QString());
    m_manager->startVideoStream(m_video);
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), videoSize, 30000);
    takeStates();
    m_manager->startVideoStream(other);
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), QSize(240, 160), 30000);
    m_receiver->clear();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({QSize(240, 160)}));
    QVERIFY(alike(m_receiver->color(), blue));
}

void TestCameraStreams::cameraToVideoToCamera()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    takeStates();
    m_log->takeEntries();
    const auto shows = [this](const QSize &size, const QColor &color) {
        QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), size, 30000);
        m_receiver->clear();
        QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 5, 30000);
        QCOMPARE(m_receiver->sizes(), QList<QSize>({size}));
        QVERIFY(alike(m_receiver->color(), color));
    };
    for (int i = 0; i < 3; ++i) {
        m_manager->startCameraStream();
        shows(cameraSize, blue);
        m_manager->startVideoStream(m_video);
        shows(videoSize, green);
    }
    m_manager->stopVideoStream();
    QStringList log = m_log->takeEntries();
    QCOMPARE(log.takeLast(), u"streamRunning=false"_s);
    QCOMPARE(log.count(u"streamRunning=true"_s), 6);
    QCOMPARE(log.count(u"streamRunning=false"_s), 0);
    QCOMPARE(takeStates().last(), stopVideo);
    QVERIFY(nothingComes());
}

void TestCameraStreams::appliedSettingsReplaceTheVideo()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startVideoStream(m_video);
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), videoSize, 30000);
    m_log->takeEntries();
    takeStates();
    m_manager->setCameraStreamSettings();
    QVERIFY(m_manager->streamRunning());
    QCOMPARE(
        m_log->takeEntries(),
        QStringList({u"streamRunning=false"_s, u"streamRunning=true"_s, u"cameraStreamSettingsApplied"_s}));
    QCOMPARE(takeStates(), QStringList({stopVideo, playCamera}));
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), cameraSize, 30000);
    m_receiver->clear();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({cameraSize}));
}

void TestCameraStreams::unpluggedWhileAVideoPlays()
{
    TestCamera second = blueCamera;
    second.name = u"Second"_s;
    TestCameras::plug(blueCamera);
    TestCameras::plug(second);
    m_manager->setupCameraStreamPipeline();
    m_manager->startVideoStream(m_video);
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), videoSize, 30000);
    TestCameras::unplug(u"Blue"_s);
    QTRY_COMPARE(m_manager->cameraName(), u"Second"_s);
    // Only the camera's pipeline is stopped, though the video counts as stopped.
    QCOMPARE(m_manager->streamRunning(), false);
    m_receiver->clear();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    m_manager->stopVideoStream();
    QCOMPARE(takeStates().last(), stopVideo);
    QVERIFY(nothingComes());
}

void TestCameraStreams::updatingTheListWhileAVideoPlays()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startVideoStream(m_video);
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), videoSize, 30000);
    m_manager->updateCamerasList();
    QCOMPARE(m_manager->streamRunning(), false);
    m_manager->startCameraStream();
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), cameraSize, 30000);
    m_receiver->clear();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000);
    QCOMPARE(m_receiver->sizes(), QList<QSize>({cameraSize}));
}

// So a page and a window that are left end it.
void TestCameraStreams::noFileEndsAVideoThatCountsAsStopped()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startVideoStream(m_video);
    m_manager->updateCamerasList();
    QCOMPARE(m_manager->streamRunning(), false);
    m_receiver->clear();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 10, 30000); // more than one round
    m_log->takeEntries();
    m_manager->startVideoStream(QString());
    QVERIFY(nothingComes());
    QCOMPARE(m_log->takeEntries(), QStringList());
}

void TestCameraStreams::updatingTheListEndsTheCamerasStream()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 1, 30000);
    m_manager->updateCamerasList();
    QVERIFY(nothingComes());
    m_manager->startCameraStream();
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), cameraSize, 30000);
}

void TestCameraStreams::pluggedInAgainItStreams()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    m_manager->startCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 1, 30000);
    TestCameras::unplug(u"Blue"_s);
    QTRY_COMPARE(m_manager->cameras(), QStringList());
    QVERIFY(nothingComes());
    TestCameras::plug(blueCamera);
    QTRY_COMPARE(m_manager->cameras(), QStringList(u"Blue"_s));
    QVERIFY(nothingComes()); // before somebody starts it
    m_manager->startCameraStream();
    QTRY_COMPARE_WITH_TIMEOUT(m_receiver->size(), cameraSize, 30000);
    m_manager->stopCameraStream();
    QVERIFY(nothingComes());
}

void TestCameraStreams::truncatedFiles()
{
    // Wherever the file ends: it is accepted or refused, and the manager goes on.
    const QByteArray whole = readBytes(m_video);
    const QString file = path(u"cut.webm"_s);
    QSet<QString> codecs;
    QSignalSpy checked(m_manager.get(), &CameraEmulationManager::videoFileCodecChecked);
    for (qsizetype length = 1; length < whole.size(); length += whole.size() / 6) {
        QVERIFY(writeBytes(file, whole.first(length)));
        checked.clear();
        m_manager->startVideoStream(file);
        QCOMPARE(checked.size(), 1);
        const bool accepted = checked.first().first().toBool();
        const QString codec = checked.first().last().toString();
        QVERIFY2(accepted ? codec.contains(u"VP8"_s) : codec.isEmpty(), qPrintable(codec));
        codecs.insert(codec);
    }
    QCOMPARE(codecs.size(), 2); // some are accepted, some are refused
    m_receiver->clear();
    m_manager->startVideoStream(m_video);
    QTRY_VERIFY_WITH_TIMEOUT(m_receiver->frameCount() >= 5, 30000);
}

void TestCameraStreams::streamsLeaveNothingBehind()
{
    TestCameras::plug(blueCamera);
    m_manager->setupCameraStreamPipeline();
    const auto cycle = [this] {
        m_manager->startCameraStream();
        m_manager->startVideoStream(m_video);
        QVERIFY(m_manager->streamRunning());
        m_manager->updateCamerasList();
        m_manager->stopVideoStream();
        QCoreApplication::processEvents();
    };
    const auto entries = [](const QString &folder) {
        return QDir(folder).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
    };
    for (int i = 0; i < 5; ++i)
        cycle();
    QTRY_COMPARE(PipelineRecorder::count(u"camera-stream-pipeline"_s), 1);
    const qsizetype descriptors = entries(u"/proc/self/fd"_s);
    const qsizetype threads = entries(u"/proc/self/task"_s);
    for (int i = 0; i < 30; ++i)
        cycle();
    QTRY_COMPARE(PipelineRecorder::count(u"camera-stream-pipeline"_s), 1);
    QTRY_VERIFY(entries(u"/proc/self/fd"_s) <= descriptors);
    QTRY_VERIFY(entries(u"/proc/self/task"_s) <= threads);
}

QTEST_GUILESS_MAIN(TestCameraStreams)

#include "tst_camerastreams.moc"
