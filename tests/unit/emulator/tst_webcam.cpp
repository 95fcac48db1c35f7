// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameraemulationmanager.h"

#include "utils/testcameras.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using TestUtils::TestCameras;

namespace {

constexpr int deadline = 30'000; // ms

QVariant stateOf(const QString &name)
{
    const QString service = u"ru.kelo.CameraEmulation"_s;
    QDBusMessage get = QDBusMessage::createMethodCall(
        service, u"/ru/kelo/CameraEmulation"_s, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    get << service << name;
    const QDBusReply<QVariant> reply = QDBusConnection::systemBus().call(get);
    return reply.isValid() ? reply.value() : QVariant();
}

qulonglong frames()
{
    return stateOf(u"framesReceived"_s).toULongLong();
}

QSize size()
{
    return {stateOf(u"width"_s).toInt(), stateOf(u"height"_s).toInt()};
}

} // namespace

/// A laptop's camera, of which the largest size comes as JPEG only, and the emulator's own receiver.
class tst_Webcam : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void eachSizeArrives_data();
    void eachSizeArrives();
};

void tst_Webcam::initTestCase()
{
    TestCameras::install();
}

void tst_Webcam::cleanup()
{
    TestCameras::unplugAll();
}

void tst_Webcam::eachSizeArrives_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QSize>("expected");

    QTest::newRow("the largest, which is chosen first and comes as JPEG only") << 0 << QSize(1280, 720);
    QTest::newRow("one that comes as JPEG and raw") << 1 << QSize(640, 480);
    QTest::newRow("one that comes raw only") << 2 << QSize(320, 240);
}

void tst_Webcam::eachSizeArrives()
{
    QFETCH(int, index);
    QFETCH(QSize, expected);
    TestCameras::plug(
        {.name = u"Integrated Camera"_s,
         .caps = "video/x-raw,format=YUY2,width=640,height=480,framerate=30/1;"
                 "video/x-raw,format=YUY2,width=320,height=240,framerate=30/1;"
                 "image/jpeg,width=640,height=480,framerate=30/1;"
                 "image/jpeg,width=1280,height=720,framerate=15/1"});
    CameraEmulationManager manager;
    manager.setupCameraStreamPipeline();
    if (index != manager.resolutionIndex()) {
        manager.setResolutionIndex(index);
        manager.setCameraStreamSettings();
    }
    const qulonglong before = frames();
    manager.startCameraStream();
    QTRY_COMPARE_WITH_TIMEOUT(size(), expected, deadline);
    QTRY_VERIFY_WITH_TIMEOUT(frames() >= before + 20, deadline);
    QVERIFY(stateOf(u"meanBlue"_s).toInt() > 200);
    QVERIFY(stateOf(u"meanRed"_s).toInt() < 60);
    QVERIFY(stateOf(u"meanGreen"_s).toInt() < 60);

    manager.stopCameraStream();
    QTRY_VERIFY_WITH_TIMEOUT(!stateOf(u"streaming"_s).toBool(), deadline);
}

QTEST_GUILESS_MAIN(tst_Webcam)

#include "tst_webcam.moc"
