// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameracapabilities.h"

#include "camera/gsthandles.h"
#include "utils/testcameras.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::TestCamera;
using TestUtils::TestCameras;

namespace {

QVariantMap resolution(int width, int height, const QStringList &framerates)
{
    return {
        {u"width"_s, width},
        {u"height"_s, height},
        {u"string"_s, u"%1x%2"_s.arg(width).arg(height)},
        {u"framerates"_s, framerates},
    };
}

QStringList words(const QString &text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

} // namespace

class TestCameraCapabilities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void normalizesFractions_data();
    void normalizesFractions();
    void readsTheEndsOfARange_data();
    void readsTheEndsOfARange();
    void fillsARange_data();
    void fillsARange();
    void readsFramerates_data();
    void readsFramerates();
    void addsToWhatIsThere();
    void addsResolutions_data();
    void addsResolutions();
    void theFirstOfASizeWins();
    void readsCaps_data();
    void readsCaps();
    void readsNoCaps();
    void knowsWhatComesAsJpegOnly_data();
    void knowsWhatComesAsJpegOnly();
    void findsTheDeviceProperty_data();
    void findsTheDeviceProperty();
    void namesDevices();
};

void TestCameraCapabilities::initTestCase()
{
    TestCameras::install();
}

void TestCameraCapabilities::normalizesFractions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");

    const auto row = [](const char *name, const QString &text, const QString &expected) {
        QTest::newRow(name) << text << expected.split(u'|', Qt::SkipEmptyParts);
    };
    row("nothing", {}, {});
    row("whole rates stay", u"30/1,15/1"_s, u"30/1|15/1"_s);
    row("30000/1001 is truncated", u"30000/1001"_s, u"29/1"_s);
    row("15/2 is truncated", u"15/2"_s, u"7/1"_s);
    row("duplicates that arise are kept", u"30000/1001,29/1"_s, u"29/1|29/1"_s);
    row("empty parts are dropped", u",30/1,,15/1,"_s, u"30/1|15/1"_s);
    row("a text without a slash stays", u"30"_s, u"30"_s);
    row("a text with two slashes stays", u"30/2/2"_s, u"30/2/2"_s);
    row("a denominator of 0 counts as 1", u"30/0"_s, u"30/1"_s);
    row("a negative denominator counts as 1", u"30/-2"_s, u"30/1"_s);
    row("a denominator that is no number counts as 1", u"30/x"_s, u"30/1"_s);
    row("an empty denominator counts as 1", u"30/"_s, u"30/1"_s);
    row("a numerator that is no number counts as 0", u"x/2"_s, u"0/1"_s);
    row("a numerator is not looked at above 1", u"x/1"_s, u"x/1"_s);
    row("01 is not exactly 1, but is divided by it", u"30/01"_s, u"30/1"_s);
    row("a rate below one frame a second", u"1/2"_s, u"0/1"_s);
    row("a number too large for an int counts as 0", u"99999999999/2"_s, u"0/1"_s);
}

void TestCameraCapabilities::normalizesFractions()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    QCOMPARE(normalizeFractions(text), expected);
}

void TestCameraCapabilities::readsTheEndsOfARange_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upper");

    QTest::newRow("as GStreamer writes it") << u"[ 1/1, 30/1 ]"_s << 1 << 30;
    QTest::newRow("without brackets and blanks") << u"5/1,10/1"_s << 5 << 10;
    QTest::newRow("truncating") << u"[ 15/2, 30000/1001 ]"_s << 7 << 29;
    QTest::newRow("from 0") << u"[ 0/1, 2147483647/1 ]"_s << 0 << 2147483647;
    QTest::newRow("a zero denominator counts as 1") << u"[ 30/0, 60/1 ]"_s << 1 << 60;
    QTest::newRow("a missing upper end counts as 1") << u"[ 30/1 ]"_s << 30 << 1;
    QTest::newRow("a missing lower end is taken by the upper one") << u"[ , 30/1 ]"_s << 30 << 1;
    QTest::newRow("nothing counts as 1") << QString() << 1 << 1;
    QTest::newRow("only brackets count as 1") << u"[ ]"_s << 1 << 1;
    QTest::newRow("no fraction counts as 1") << u"[ 30, 60 ]"_s << 1 << 1;
    QTest::newRow("letters count as 0 above and 1 below") << u"[ x/1, 30/x ]"_s << 0 << 1;
    QTest::newRow("a quotient too large for an int") << u"[ -2147483648/-1, 1/1 ]"_s << 2147483647 << 1;
}

void TestCameraCapabilities::readsTheEndsOfARange()
{
    QFETCH(QString, text);
    QTEST(parseGstFramerate(text, LOWER), "lower");
    QTEST(parseGstFramerate(text, UPPER), "upper");
}

void TestCameraCapabilities::fillsARange_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("1 to 30") << u"[ 1/1, 30/1 ]"_s << u"1/1 2/1 5/1 10/1 15/1 20/1 25/1 30/1"_s;
    QTest::newRow("1 to 24 passes the upper end") << u"[ 1/1, 24/1 ]"_s << u"1/1 2/1 5/1 10/1 15/1 20/1 25/1"_s;
    QTest::newRow("1 to 3 passes it twice") << u"[ 1/1, 3/1 ]"_s << u"1/1 2/1 5/1 10/1"_s;
    QTest::newRow("15 to 30") << u"[ 15/1, 30/1 ]"_s << u"15/1 16/1 20/1 25/1 30/1"_s;
    QTest::newRow("from 0 it starts with 0 and 1") << u"[ 0/1, 10/1 ]"_s << u"0/1 1/1 5/1 10/1"_s;
    QTest::newRow("1 to 2") << u"[ 1/1, 2/1 ]"_s << u"1/1 2/1"_s;
    QTest::newRow("4 to 6 needs no step to the next multiple") << u"[ 4/1, 6/1 ]"_s << u"4/1 5/1 10/1"_s;
    QTest::newRow("equal ends are one rate") << u"[ 30/1, 30/1 ]"_s << u"30/1"_s;
    QTest::newRow("ends that are equal once truncated") << u"[ 15/2, 7/1 ]"_s << u"7/1"_s;
    QTest::newRow("ends in the wrong order") << u"[ 30/1, 15/1 ]"_s << u"30/1 31/1"_s;
    QTest::newRow("an empty text") << QString() << u"1/1"_s;
    QTest::newRow("zero denominators") << u"[ 1/0, 30/0 ]"_s << u"1/1"_s;
    QTest::newRow("up to 1000") << u"[ 985/1, 1000/1 ]"_s << u"985/1 986/1 990/1 995/1 1000/1"_s;
    QTest::newRow("nothing above 1000") << u"[ 998/1, 2147483647/1 ]"_s << u"998/1 999/1 1000/1"_s;
    QTest::newRow("not even the second rate") << u"[ 1000/1, 2000/1 ]"_s << u"1000/1"_s;
    QTest::newRow("not even the first rate") << u"[ 1001/1, 2000/1 ]"_s << QString();
    QTest::newRow("nothing below 0") << u"[ -2147483648/1, 5/1 ]"_s << u"0/1 1/1 5/1 10/1"_s;
}

void TestCameraCapabilities::fillsARange()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QStringList framerates;
    initFrameratesFromRange(&framerates, text);
    QCOMPARE(framerates, words(expected));
}

void TestCameraCapabilities::readsFramerates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a list") << u"{ (fraction)30/1, (fraction)15/1 }"_s << u"30/1 15/1"_s;
    QTest::newRow("a list is sorted, the highest first")
        << u"{ (fraction)5/1, (fraction)120/1, (fraction)30/1 }"_s << u"120/1 30/1 5/1"_s;
    QTest::newRow("members of a list are truncated") << u"{ (fraction)30000/1001, (fraction)15/1 }"_s << u"29/1 15/1"_s;
    QTest::newRow("a list of one") << u"{ (fraction)30/1 }"_s << u"30/1"_s;
    QTest::newRow("an empty list") << u"{ }"_s << QString();
    QTest::newRow("braces count before brackets, which make a numerator no number") << u"{ [ 30/1 ] }"_s << u"0/1"_s;
    QTest::newRow("a single framerate") << u"30/1"_s << u"30/1"_s;
    QTest::newRow("a single framerate stays as it is") << u"30000/1001"_s << u"30000/1001"_s;
    QTest::newRow("single framerates, sorted by numerator alone")
        << u"15/1,30000/1001,20/1"_s << u"30000/1001 20/1 15/1"_s;
    QTest::newRow("a text that is no number sorts as 0") << u"x/1,30/1"_s << u"30/1 x/1"_s;
    QTest::newRow("a range, the highest first") << u"[ 1/1, 12/1 ]"_s << u"15/1 10/1 5/1 2/1 1/1"_s;
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("half a list") << u"{30/1"_s << u"{30/1"_s;
    QTest::newRow("half a range") << u"[30/1"_s << u"[30/1"_s;
}

void TestCameraCapabilities::readsFramerates()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QStringList framerates;
    initAvailableFramerates(&framerates, text);
    QCOMPARE(framerates, words(expected));
}

void TestCameraCapabilities::addsToWhatIsThere()
{
    QStringList framerates{u"20/1"_s, u"1/1"_s};
    initAvailableFramerates(&framerates, u"{ (fraction)30/1, (fraction)15/1 }"_s);
    QCOMPARE(framerates, words(u"30/1 20/1 15/1 1/1"_s));
}

void TestCameraCapabilities::addsResolutions_data()
{
    QTest::addColumn<QByteArray>("width");
    QTest::addColumn<QByteArray>("height");
    QTest::addColumn<bool>("added");

    QTest::newRow("numbers") << "640"_ba << "480"_ba << true;
    QTest::newRow("the smallest") << "1"_ba << "1"_ba << true;
    QTest::newRow("a zero width") << "0"_ba << "480"_ba << false;
    QTest::newRow("a zero height") << "640"_ba << "0"_ba << false;
    QTest::newRow("a negative width") << "-640"_ba << "480"_ba << false;
    QTest::newRow("a range as width") << "[ 1, 1920 ]"_ba << "480"_ba << false;
    QTest::newRow("a range as height") << "640"_ba << "[ 1, 1080 ]"_ba << false;
    QTest::newRow("a list as width") << "{ (int)640, (int)1280 }"_ba << "480"_ba << false;
    QTest::newRow("no width") << QByteArray() << "480"_ba << false;
    QTest::newRow("no height") << "640"_ba << QByteArray() << false;
    QTest::newRow("a width that is no int") << "99999999999"_ba << "480"_ba << false;
    QTest::newRow("a hexadecimal width") << "0x280"_ba << "480"_ba << false;
}

void TestCameraCapabilities::addsResolutions()
{
    QFETCH(QByteArray, width);
    QFETCH(QByteArray, height);
    QFETCH(bool, added);
    const auto text = [](const QByteArray &bytes) { return bytes.isNull() ? nullptr : bytes.constData(); };
    QVariantList resolutions;
    addAvailableResolution(&resolutions, {u"30/1"_s}, text(width), text(height));
    QVariantList expected;
    if (added)
        expected.append(resolution(width.toInt(), height.toInt(), {u"30/1"_s}));
    QCOMPARE(resolutions, expected);
}

void TestCameraCapabilities::theFirstOfASizeWins()
{
    QVariantList resolutions;
    addAvailableResolution(&resolutions, {u"30/1"_s}, "640", "480");
    addAvailableResolution(&resolutions, {u"60/1"_s}, "640", "480");
    addAvailableResolution(&resolutions, {u"60/1"_s}, "640", "360");
    QCOMPARE(resolutions, QVariantList({resolution(640, 480, {u"30/1"_s}), resolution(640, 360, {u"60/1"_s})}));
}

void TestCameraCapabilities::readsCaps_data()
{
    QTest::addColumn<QByteArray>("caps");
    QTest::addColumn<QVariantList>("expected");

    QTest::newRow("the first format of a size wins")
        << "video/x-raw,format=YUY2,width=640,height=480,framerate={30/1,15/1};"
           "image/jpeg,width=640,height=480,framerate={60/1,30/1}"_ba
        << QVariantList{resolution(640, 480, words(u"30/1 15/1"_s))};
    QTest::newRow("a laptop's camera: YUYV, large sizes slowly, then MJPG")
        << "video/x-raw,format=YUY2,width=640,height=480,framerate=30/1;"
           "video/x-raw,format=YUY2,width=1280,height=720,framerate=10/1;"
           "video/x-raw,format=YUY2,width=160,height=120,framerate={30/1,20/1,15/1,10/1,5/1};"
           "image/jpeg,width=1280,height=720,framerate=30/1;"
           "image/jpeg,width=1920,height=1080,framerate=30/1"_ba
        << QVariantList{
               resolution(1920, 1080, words(u"30/1"_s)),
               resolution(1280, 720, words(u"10/1"_s)),
               resolution(640, 480, words(u"30/1"_s)),
               resolution(160, 120, words(u"30/1 20/1 15/1 10/1 5/1"_s)),
           };
    QTest::newRow("an NTSC grabber")
        << "video/x-raw,format=NV12,width=720,height=480,framerate=30000/1001;"
           "video/x-raw,format=NV12,width=360,height=240,framerate={30000/1001,15000/1001,25/2}"_ba
        << QVariantList{resolution(720, 480, words(u"30000/1001"_s)), resolution(360, 240, words(u"29/1 14/1 12/1"_s))};
    QTest::newRow("a range of framerates")
        << "video/x-raw,format=NV12,width=1280,height=720,framerate=[1/1,30/1]"_ba
        << QVariantList{resolution(1280, 720, words(u"30/1 25/1 20/1 15/1 10/1 5/1 2/1 1/1"_s))};
    QTest::newRow("a list of ranges is skipped")
        << "video/x-raw,width=1280,height=720,framerate={[1/1,5/1],[10/1,30/1]};"
           "video/x-raw,width=640,height=480,framerate=30/1"_ba
        << QVariantList{resolution(640, 480, words(u"30/1"_s))};
    QTest::newRow("a list with one range in it is skipped")
        << "video/x-raw,width=1280,height=720,framerate={60/1,[1/1,30/1]}"_ba << QVariantList();
    QTest::newRow("a skipped structure does not hide a later one of its size")
        << "video/x-raw,width=640,height=480,framerate={60/1,[1/1,30/1]};"
           "image/jpeg,width=640,height=480,framerate=30/1"_ba
        << QVariantList{resolution(640, 480, words(u"30/1"_s))};
    QTest::newRow("a range as width is skipped")
        << "video/x-raw,width=[1,1920],height=480,framerate=30/1"_ba << QVariantList();
    QTest::newRow("a list as height is skipped")
        << "video/x-raw,width=640,height={360,480},framerate=30/1"_ba << QVariantList();
    QTest::newRow("a camera made of software that can do anything")
        << "video/x-raw,width=[1,2147483647],height=[1,2147483647],framerate=[0/1,2147483647/1]"_ba << QVariantList();
    QTest::newRow("no size") << "video/x-raw"_ba << QVariantList();
    QTest::newRow("no framerate") << "video/x-raw,width=640,height=480"_ba << QVariantList{resolution(640, 480, {})};
    QTest::newRow("memory features make no difference")
        << "video/x-raw(memory:DMABuf),format=DMA_DRM,width=640,height=480,framerate=30/1"_ba
        << QVariantList{resolution(640, 480, words(u"30/1"_s))};
    QTest::newRow("any caps") << "ANY"_ba << QVariantList();
    QTest::newRow("empty caps") << "EMPTY"_ba << QVariantList();
}

void TestCameraCapabilities::readsCaps()
{
    QFETCH(QByteArray, caps);
    QFETCH(QVariantList, expected);
    const GstCapsPointer parsed(gst_caps_from_string(caps.constData()));
    QVERIFY(parsed);
    QCOMPARE(availableResolutions(parsed.get()), expected);
}

void TestCameraCapabilities::readsNoCaps()
{
    QCOMPARE(availableResolutions(nullptr), QVariantList());
}

void TestCameraCapabilities::knowsWhatComesAsJpegOnly_data()
{
    QTest::addColumn<QByteArray>("caps");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("framerate");
    QTest::addColumn<bool>("jpegOnly");

    const QByteArray laptop = "video/x-raw,format=YUY2,width=640,height=480,framerate=30/1;"
                              "video/x-raw,format=YUY2,width=1280,height=720,framerate={10/1,5/1};"
                              "image/jpeg,width=1280,height=720,framerate={30/1,10/1};"
                              "image/jpeg,width=1920,height=1080,framerate=30/1;"
                              "image/jpeg,width=640,height=480,framerate=30/1";
    const QString vga = u",width=640,height=480"_s;
    const QString hd = u",width=1280,height=720"_s;
    const QString fullHd = u",width=1920,height=1080"_s;
    const QString rate = u",framerate=30/1"_s;
    QTest::newRow("a size that comes as JPEG only") << laptop << fullHd << rate << true;
    QTest::newRow("a size that comes as JPEG only, at any rate") << laptop << fullHd << QString() << true;
    QTest::newRow("a size and rate that come as both") << laptop << vga << rate << false;
    QTest::newRow("a rate of a raw size that comes as JPEG only") << laptop << hd << rate << true;
    QTest::newRow("another rate of this size that comes as both") << laptop << hd << u",framerate=10/1"_s << false;
    QTest::newRow("a rate of this size that comes raw only") << laptop << hd << u",framerate=5/1"_s << false;
    QTest::newRow("a size that comes as both, at any rate") << laptop << hd << QString() << false;
    QTest::newRow("any size") << laptop << QString() << QString() << false;
    QTest::newRow("any size, at a rate that comes as both") << laptop << QString() << rate << false;
    QTest::newRow("a size that does not come") << laptop << u",width=4,height=4"_s << rate << false;
    QTest::newRow("a rate in the whole numbers of the list, of a raw size")
        << "video/x-raw,width=640,height=480,framerate={30000/1001,15/1};image/jpeg,width=640,height=480,framerate=30/1"_ba
        << vga << u",framerate=29/1"_s << false;
    QTest::newRow("a rate in the whole numbers of the list, of a JPEG size")
        << "image/jpeg,width=640,height=480,framerate={30000/1001,15/1}"_ba << vga << u",framerate=29/1"_s << true;
    QTest::newRow("JPEG that is listed first")
        << "image/jpeg,width=640,height=480,framerate=30/1;video/x-raw,width=640,height=480,framerate=30/1"_ba << vga
        << rate << false;
    QTest::newRow("raw pictures in a memory that the encoder cannot read")
        << "video/x-raw(memory:DMABuf),width=640,height=480,framerate=30/1;"
           "image/jpeg,width=640,height=480,framerate=30/1"_ba
        << vga << rate << true;
    QTest::newRow("raw sizes in a range") << "video/x-raw,width=[1,1920],height=[1,1080],framerate=[1/1,60/1];"
                                             "image/jpeg,width=640,height=480,framerate=30/1"_ba
                                          << vga << rate << false;
    QTest::newRow("H.264 only")
        << "video/x-h264,width=640,height=480,framerate=30/1;video/x-raw,width=320,height=240"_ba << vga << rate
        << false;
    QTest::newRow("a rate that is none") << laptop << vga << u",framerate=1,=;/"_s << false;
    QTest::newRow("a rate that is none, of a size that comes as JPEG only")
        << laptop << fullHd << u",framerate=1,=;/"_s << true;
    QTest::newRow("nothing offered") << "EMPTY"_ba << vga << rate << false;
}

void TestCameraCapabilities::knowsWhatComesAsJpegOnly()
{
    QFETCH(QByteArray, caps);
    QFETCH(QString, size);
    QFETCH(QString, framerate);
    QFETCH(bool, jpegOnly);
    const GstCapsPointer parsed(gst_caps_from_string(caps.constData()));
    QVERIFY(parsed);
    QCOMPARE(isJpegOnly(parsed.get(), size, framerate), jpegOnly);
    QVERIFY(!isJpegOnly(nullptr, size, framerate));
}

void TestCameraCapabilities::findsTheDeviceProperty_data()
{
    using Source = TestCamera::Source;
    QTest::addColumn<Source>("source");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");

    QTest::newRow("device") << Source::Device << u"/dev/video2"_s << u"device"_s << u"/dev/video2"_s;
    QTest::newRow("device-index") << Source::DeviceIndex << u"2"_s << u"device-index"_s << u"2"_s;
    QTest::newRow("device-path") << Source::DevicePath << u"/dev/video2"_s << u"device-path"_s << u"/dev/video2"_s;
    QTest::newRow("device after device-path") << Source::PathAndDevice << u"7"_s << u"device"_s << u"7"_s;
    QTest::newRow("device before device-path") << Source::DeviceAndPath << u"7"_s << u"device"_s << u"7"_s;
    QTest::newRow("neither") << Source::Plain << u"7"_s << QString() << QString();
    QTest::newRow("a text with blanks, as GStreamer writes it")
        << Source::Device << u"my camera"_s << u"device"_s << uR"("my\ camera")"_s;
    QTest::newRow("an empty device, as GStreamer writes it") << Source::Device << u""_s << u"device"_s << uR"("")"_s;
}

void TestCameraCapabilities::findsTheDeviceProperty()
{
    QFETCH(TestCamera::Source, source);
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(QString, value);
    TestCamera camera;
    camera.source = source;
    camera.device = device;
    const GstDevicePointer gstDevice(GST_DEVICE(gst_object_ref_sink(TestCameras::newDevice(camera))));
    QCOMPARE(retrieveCameraDeviceProperty(gstDevice.get()), QVariantMap({{u"name"_s, name}, {u"value"_s, value}}));
}

void TestCameraCapabilities::namesDevices()
{
    TestCamera camera;
    camera.name = u"Камера 🎥, \"one\""_s;
    const GstDevicePointer device(GST_DEVICE(gst_object_ref_sink(TestCameras::newDevice(camera))));
    QCOMPARE(deviceName(device.get()), camera.name);
}

QTEST_GUILESS_MAIN(TestCameraCapabilities)

#include "tst_cameracapabilities.moc"
