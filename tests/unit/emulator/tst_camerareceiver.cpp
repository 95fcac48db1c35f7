// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QHostAddress>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 30'000; // ms
constexpr quint16 cameraPort = 34343;

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

QByteArray lastPicture()
{
    const QDBusReply<QByteArray> reply = QDBusConnection::systemBus().call(QDBusMessage::createMethodCall(
        u"ru.kelo.CameraEmulation"_s, u"/ru/kelo/CameraEmulation"_s, u"ru.kelo.CameraEmulation"_s, u"lastPicture"_s));
    return reply.isValid() ? reply.value() : QByteArray("no reply");
}

bool isStreaming()
{
    return stateOf(u"streaming"_s).toBool();
}

// Sends a picture of one colour, as RTP/JPEG, while it lives.
class Stream
{
public:
    Stream(const QString &colour, int width, int height)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(
            u"gst-launch-1.0"_s,
            QStringList{u"-q"_s, u"videotestsrc"_s, u"is-live=true"_s, u"pattern=solid-color"_s}
                << u"foreground-color=%1"_s.arg(colour) << u"!"_s
                << u"video/x-raw,format=I420,framerate=30/1,width=%1,height=%2"_s.arg(width).arg(height) << u"!"_s
                << u"jpegenc"_s << u"quality=50"_s << u"!"_s << u"rtpjpegpay"_s << u"!"_s << u"udpsink"_s
                << u"host=127.0.0.1"_s << u"port=%1"_s.arg(cameraPort));
        m_process.waitForStarted(deadline);
    }

    ~Stream()
    {
        m_process.kill();
        m_process.waitForFinished(deadline);
    }

private:
    QProcess m_process;
};

} // namespace

class tst_CameraReceiver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingAtFirst();
    void receivesAStream();
    void noticesTheEnd();
    void receivesTheNextStream();
    void survivesGarbage_data();
    void survivesGarbage();
};

void tst_CameraReceiver::nothingAtFirst()
{
    QCOMPARE(stateOf(u"framesReceived"_s), QVariant(qulonglong(0)));
    QCOMPARE(stateOf(u"streaming"_s), QVariant(false));
    QCOMPARE(stateOf(u"width"_s), QVariant(0));
    QCOMPARE(stateOf(u"frameRate"_s), QVariant(0.0));
    QCOMPARE(lastPicture(), QByteArray());
}

void tst_CameraReceiver::receivesAStream()
{
    const Stream red(u"0xffff0000"_s, 320, 240);
    QTRY_VERIFY_WITH_TIMEOUT(frames() > 10, deadline);
    QVERIFY(isStreaming());
    QCOMPARE(stateOf(u"width"_s), QVariant(320));
    QCOMPARE(stateOf(u"height"_s), QVariant(240));
    QVERIFY(stateOf(u"meanRed"_s).toInt() > 200);
    QVERIFY(stateOf(u"meanGreen"_s).toInt() < 60);
    QVERIFY(stateOf(u"meanBlue"_s).toInt() < 60);

    // A busy machine may be late with some.
    QTRY_VERIFY_WITH_TIMEOUT(stateOf(u"frameRate"_s).toDouble() > 20, deadline);
    QVERIFY(stateOf(u"frameRate"_s).toDouble() < 40);
    const QImage picture = QImage::fromData(lastPicture(), "JPEG");
    QCOMPARE(picture.size(), QSize(320, 240));
    QVERIFY(picture.pixelColor(160, 120).red() > 200);
    QVERIFY(picture.pixelColor(160, 120).blue() < 60);
}

void tst_CameraReceiver::noticesTheEnd()
{
    {
        const Stream stream(u"0xffff0000"_s, 320, 240);
        QTRY_VERIFY_WITH_TIMEOUT(isStreaming(), deadline);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!isStreaming(), deadline);
    QCOMPARE(stateOf(u"frameRate"_s), QVariant(0.0));
    QCOMPARE(stateOf(u"width"_s), QVariant(320));
}

void tst_CameraReceiver::receivesTheNextStream()
{
    const Stream blue(u"0xff0000ff"_s, 640, 480);
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(u"width"_s), QVariant(640), deadline);
    QVERIFY(stateOf(u"meanBlue"_s).toInt() > 200);
    QVERIFY(stateOf(u"meanRed"_s).toInt() < 60);
}

void tst_CameraReceiver::survivesGarbage_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<int>("length");

    QTest::newRow("empty packets") << QByteArray() << 0;
    QTest::newRow("noise") << QByteArray() << 1200;
    QTest::newRow("short packets") << QByteArray() << 7;
    QTest::newRow("an RTP header alone") << QByteArray("\x80\x1a\0\1\0\0\0\0\0\0\0\1", 12) << 12;
    QTest::newRow("another payload type") << QByteArray("\x80\x60\0\1\0\0\0\0\0\0\0\1", 12) << 800;
    QTest::newRow("RTP/JPEG with noise for a picture")
        << QByteArray("\x80\x9a\0\1\0\0\0\0\0\0\0\1\0\0\0\0\1\x32\x28\x1e", 20) << 1200;
    QTest::newRow("RTP/JPEG with noise for its header") << QByteArray("\x80\x9a\0\1\0\0\0\0\0\0\0\1", 12) << 1200;
}

void tst_CameraReceiver::survivesGarbage()
{
    QFETCH(QByteArray, start);
    QFETCH(int, length);

    QUdpSocket socket;
    QRandomGenerator random(42);
    for (int packet = 0; packet < 300; ++packet) {
        QByteArray data = start;
        while (data.size() < length)
            data.append(char(random.bounded(256)));
        if (start.size() >= 4)
            data[3] = char(packet); // the sequence number
        socket.writeDatagram(data, QHostAddress(QHostAddress::LocalHost), cameraPort);
    }
    const qulonglong before = frames();
    const Stream stream(u"0xff00ff00"_s, 160, 120);
    QTRY_VERIFY_WITH_TIMEOUT(frames() > before + 5, deadline);
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(u"width"_s), QVariant(160), deadline);
    QTRY_VERIFY_WITH_TIMEOUT(stateOf(u"meanGreen"_s).toInt() > 200, deadline);
}

QTEST_GUILESS_MAIN(tst_CameraReceiver)

#include "tst_camerareceiver.moc"
