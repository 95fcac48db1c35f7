// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameramonitor.h"

#include "camera/cameracapabilities.h"
#include "camera/gsthandles.h"
#include "utils/testcameras.h"

#include <QSet>
#include <QTest>
#include <QThread>

#include <memory>
#include <thread>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::TestCamera;
using TestUtils::TestCameras;

class TestCameraMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void listsCamerasInTheOrderOfPlugging();
    void listsWhatHasNotBeenAnnounced();
    void listsNoneWithoutCameras();
    void watchesCamerasOfRawPicturesOnly();
    void tellsV4l2sCamerasApart();
    void hearsOfPipeWiresCamerasWhereV4l2HasNone();
    void announcesCamerasThatAreThere();
    void announcesInOrder();
    void announcesInItsOwnThread();
    void stopsSilently();
    void stopsWhileSomethingIsAnnounced();
    void endsWithUnreadAnnouncements();

private:
    std::unique_ptr<CameraMonitor> newMonitor();
    static QStringList names(const CameraMonitor &monitor);

    QStringList m_announced; // "+name" and "-name"
    std::unique_ptr<CameraMonitor> m_monitor;
};

std::unique_ptr<CameraMonitor> TestCameraMonitor::newMonitor()
{
    auto monitor = std::make_unique<CameraMonitor>(startDeviceMonitor());
    connect(monitor.get(), &CameraMonitor::cameraAdded, this, [this](GstDevice *device) {
        m_announced.append(u'+' + deviceName(device));
    });
    connect(monitor.get(), &CameraMonitor::cameraRemoved, this, [this](GstDevice *device) {
        m_announced.append(u'-' + deviceName(device));
    });
    return monitor;
}

QStringList TestCameraMonitor::names(const CameraMonitor &monitor)
{
    QStringList names;
    const GstDeviceListPointer devices = monitor.devices();
    for (const GList *node = devices.get(); node; node = node->next)
        names.append(deviceName(GST_DEVICE(node->data)));
    return names;
}

void TestCameraMonitor::initTestCase()
{
    TestCameras::install();
}

void TestCameraMonitor::init()
{
    m_announced.clear();
    m_monitor = newMonitor();
    QVERIFY(TestCameras::isWatched());
}

void TestCameraMonitor::cleanup()
{
    m_monitor.reset();
    TestCameras::unplugAll();
    QVERIFY(!TestCameras::isWatched());
}

void TestCameraMonitor::listsCamerasInTheOrderOfPlugging()
{
    for (const QString &name : {u"Zeta"_s, u"Alpha"_s, u"Mu"_s})
        TestCameras::plug({.name = name});
    QCOMPARE(names(*m_monitor), QStringList({u"Zeta"_s, u"Alpha"_s, u"Mu"_s}));
    TestCameras::unplug(u"Alpha"_s);
    TestCameras::plug({.name = u"Alpha"_s});
    QCOMPARE(names(*m_monitor), QStringList({u"Zeta"_s, u"Mu"_s, u"Alpha"_s}));
}

void TestCameraMonitor::listsWhatHasNotBeenAnnounced()
{
    TestCameras::plug({.name = u"Alpha"_s});
    QCOMPARE(names(*m_monitor), QStringList(u"Alpha"_s));
    QCOMPARE(m_announced, QStringList());
    TestCameras::unplug(u"Alpha"_s);
    QCOMPARE(names(*m_monitor), QStringList());
    QTRY_COMPARE(m_announced, QStringList({u"+Alpha"_s, u"-Alpha"_s}));
}

void TestCameraMonitor::listsNoneWithoutCameras()
{
    QVERIFY(!m_monitor->devices());
}

void TestCameraMonitor::watchesCamerasOfRawPicturesOnly()
{
    TestCameras::plug({.name = u"Coded"_s, .caps = "image/jpeg,width=640,height=480,framerate=30/1"});
    TestCameras::plug({.name = u"Both"_s, .caps = "image/jpeg,width=640,height=480;video/x-raw,width=320,height=240"});
    QTRY_COMPARE(m_announced, QStringList(u"+Both"_s));
    QCOMPARE(names(*m_monitor), QStringList(u"Both"_s));
}

// As on a desktop: PipeWire offers them all, too.
void TestCameraMonitor::tellsV4l2sCamerasApart()
{
    using Provider = TestCamera::Provider;
    m_monitor.reset();
    for (const QString &name : {u"Webcam"_s, u"Microscope"_s}) {
        TestCameras::plug({.name = name, .provider = Provider::V4l2});
        TestCameras::plug({.name = name + u" (V4L2)"_s, .provider = Provider::PipeWire});
    }
    m_monitor = newMonitor();
    QVERIFY(!TestCameras::isWatched(Provider::PipeWire));
    QCOMPARE(names(*m_monitor), QStringList({u"Webcam"_s, u"Microscope"_s}));
    TestCameras::plug({.name = u"Grabber (V4L2)"_s, .provider = Provider::PipeWire});
    TestCameras::plug({.name = u"Grabber"_s, .provider = Provider::V4l2});
    QTRY_COMPARE(m_announced, QStringList({u"+Webcam"_s, u"+Microscope"_s, u"+Grabber"_s}));
}

void TestCameraMonitor::hearsOfPipeWiresCamerasWhereV4l2HasNone()
{
    using Provider = TestCamera::Provider;
    QVERIFY(TestCameras::isWatched(Provider::PipeWire));
    TestCameras::plug({.name = u"Webcam"_s, .provider = Provider::V4l2});
    TestCameras::plug({.name = u"Webcam (V4L2)"_s, .provider = Provider::PipeWire});
    TestCameras::plug({.name = u"Screen"_s, .provider = Provider::PipeWire});
    QTRY_COMPARE(m_announced, QStringList({u"+Webcam (V4L2)"_s, u"+Screen"_s}));
    QCOMPARE(names(*m_monitor), m_announced.replaceInStrings(u"+"_s, QString()));
    // A monitor that is made by now sees each of V4L2's.
    m_monitor.reset();
    m_monitor = newMonitor();
    QCOMPARE(names(*m_monitor), QStringList(u"Webcam"_s));
}

void TestCameraMonitor::announcesCamerasThatAreThere()
{
    m_monitor.reset();
    TestCameras::plug({.name = u"Zeta"_s});
    TestCameras::plug({.name = u"Alpha"_s});
    m_monitor = newMonitor();
    QCOMPARE(m_announced, QStringList());
    QTRY_COMPARE(m_announced, QStringList({u"+Zeta"_s, u"+Alpha"_s}));
}

void TestCameraMonitor::announcesInOrder()
{
    TestCameras::plug({.name = u"Alpha"_s});
    TestCameras::plug({.name = u"Beta"_s});
    TestCameras::unplug(u"Alpha"_s);
    TestCameras::plug({.name = u"Alpha"_s});
    TestCameras::unplug(u"Beta"_s);
    QTRY_COMPARE(m_announced, QStringList({u"+Alpha"_s, u"+Beta"_s, u"-Alpha"_s, u"+Alpha"_s, u"-Beta"_s}));
}

void TestCameraMonitor::announcesInItsOwnThread()
{
    QList<QThread *> threads;
    const auto note = [&threads] { threads.append(QThread::currentThread()); };
    connect(m_monitor.get(), &CameraMonitor::cameraAdded, m_monitor.get(), note, Qt::DirectConnection);
    connect(m_monitor.get(), &CameraMonitor::cameraRemoved, m_monitor.get(), note, Qt::DirectConnection);
    std::thread([] {
        TestCameras::plug({.name = u"Alpha"_s});
        TestCameras::plug({.name = u"Beta"_s});
        TestCameras::unplug(u"Alpha"_s);
    }).join();
    QCOMPARE(threads.size(), 0);
    QTRY_COMPARE(threads.size(), 3);
    QCOMPARE(QSet<QThread *>(threads.cbegin(), threads.cend()), QSet<QThread *>({thread()}));
}

void TestCameraMonitor::stopsSilently()
{
    TestCameras::plug({.name = u"Alpha"_s});
    m_monitor->stop();
    QVERIFY(!TestCameras::isWatched());
    QVERIFY(!m_monitor->devices());
    TestCameras::plug({.name = u"Beta"_s});
    // Only the other one tells of them.
    const std::unique_ptr<CameraMonitor> other = newMonitor();
    QTRY_VERIFY(m_announced.contains(u"+Beta"_s));
    QCOMPARE(m_announced, QStringList({u"+Alpha"_s, u"+Beta"_s}));
}

void TestCameraMonitor::stopsWhileSomethingIsAnnounced()
{
    connect(m_monitor.get(), &CameraMonitor::cameraAdded, m_monitor.get(), [this](GstDevice *device) {
        m_monitor->stop();
        m_announced.append(u"stopped by "_s + deviceName(device));
    });
    TestCameras::plug({.name = u"Alpha"_s});
    TestCameras::plug({.name = u"Beta"_s});
    QTRY_COMPARE(m_announced, QStringList({u"+Alpha"_s, u"stopped by Alpha"_s}));
    const std::unique_ptr<CameraMonitor> other = newMonitor();
    QTRY_VERIFY(m_announced.contains(u"+Beta"_s));
    QCOMPARE(m_announced, QStringList({u"+Alpha"_s, u"stopped by Alpha"_s, u"+Alpha"_s, u"+Beta"_s}));
}

void TestCameraMonitor::endsWithUnreadAnnouncements()
{
    TestCameras::plug({.name = u"Alpha"_s});
    TestCameras::plug({.name = u"Beta"_s});
    TestCameras::unplug(u"Alpha"_s);
    m_monitor.reset();
    QVERIFY(!TestCameras::isWatched());

    // The next one knows nothing of them.
    m_monitor = newMonitor();
    TestCameras::plug({.name = u"Gamma"_s});
    QTRY_COMPARE(m_announced, QStringList({u"+Beta"_s, u"+Gamma"_s}));
}

QTEST_GUILESS_MAIN(TestCameraMonitor)

#include "tst_cameramonitor.moc"
