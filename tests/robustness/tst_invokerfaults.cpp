// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An invoker that breaks its own rules, those of WebSockets or those of HTTP.

#include "robustness/faultyinvoker.h"
#include "robustness/guest.h"
#include "robustness/pluginside.h"
#include "robustness/resources.h"
#include "robustness/waiting.h"
#include "utils/idesettings.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Robustness;
using namespace EmulationManagement::Internal;
using TestUtils::IdeSettings;

namespace {

constexpr qsizetype connectionFrameCount = 25;

QByteArray text(const QByteArray &payload, bool isFinal = true)
{
    return FaultyInvoker::frame(FaultyInvoker::Text, payload, isFinal);
}

QByteArray continuation(const QByteArray &payload, bool isFinal)
{
    return FaultyInvoker::frame(FaultyInvoker::Continuation, payload, isFinal);
}

QByteArray ping(const QByteArray &payload = {})
{
    return FaultyInvoker::frame(FaultyInvoker::Ping, payload);
}

QByteArray inFragments(const QByteArray &payload, const QByteArray &between = {})
{
    QByteArray frames = text(payload.first(1), false);
    for (qsizetype i = 1; i < payload.size(); ++i)
        frames += between + continuation(payload.sliced(i, 1), i == payload.size() - 1);
    return frames;
}

} // namespace

class TestInvokerFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void takesWhatComes_data();
    void takesWhatComes();
    void asksForNothingTwice();
    void answersPings();
    void brokenProtocolEndsTheConnection_data();
    void brokenProtocolEndsTheConnection();
    void refusedHandshakeIsTriedAgain_data();
    void refusedHandshakeIsTriedAgain();
    void firstReplyMayComeWithTheHandshake();

private:
    void connectChannel();
    bool waitForText(const QString &text);

    std::unique_ptr<IdeSettings> m_ide;
    std::unique_ptr<FaultyInvoker> m_invoker;
    std::unique_ptr<PluginSide> m_side;
    QStringList m_texts; // what the pages get to hear
};

void TestInvokerFaults::initTestCase()
{
    m_ide = std::make_unique<IdeSettings>();
}

void TestInvokerFaults::init()
{
    m_ide->clear();
    m_texts.clear();
    m_invoker = std::make_unique<FaultyInvoker>();
    QVERIFY(m_invoker->listen(RemoteDBusInvokerService::hostTcpPort));
    m_side = std::make_unique<PluginSide>();
    connect(&m_side->sensors, &EmulationManager::replyFromEmulatorReceived, this, [this](const QString &text) {
        m_texts.append(text);
    });
}

void TestInvokerFaults::cleanup()
{
    m_side.reset();
    m_invoker.reset();
}

void TestInvokerFaults::connectChannel()
{
    m_side->channel.connectToEmulator();
    QVERIFY(waitFor([this] { return m_invoker->texts().size() == connectionFrameCount; }));
}

bool TestInvokerFaults::waitForText(const QString &text)
{
    return waitFor([&] { return m_texts.contains(text); });
}

void TestInvokerFaults::takesWhatComes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("enabledSensors");

    const QString ok = u"OK"_s;
    QTest::newRow("replies in another order than the requests")
        << text("enabled:tap:true::") + text("setAlsValue:100:::") + text("enabled:als:true::")
        << QStringList{ok, ok, ok} << QStringList{u"als"_s, u"tap"_s};
    QTest::newRow("replies that come twice")
        << text("enabled:tap:true::") + text("enabled:tap:true::") << QStringList{ok, ok} << QStringList{u"tap"_s};
    QTest::newRow("the later of two replies that contradict each other")
        << text("enabled:tap:true::") + text("enabled:tap:false::") << QStringList{ok, ok} << QStringList();
    QTest::newRow("replies to what nobody has asked")
        << text("launchMissiles:now:true::") + text("enabled::true::") << QStringList{ok, ok} << QStringList();
    QTest::newRow("replies that are cut short are texts for the user")
        << text("enabled:tap:true:") + text("enabled") + text("")
        << QStringList{u"enabled:tap:true:"_s, u"enabled"_s, {}} << QStringList();
    QTest::newRow("replies of too many fields are texts, too")
        << text("enabled:tap:true:::") << QStringList{u"enabled:tap:true:::"_s} << QStringList();
    QTest::newRow("an error is no state")
        << text("enabled:tap:true:a.b.Error:no") << QStringList{u"a.b.Error no"_s} << QStringList();
    QTest::newRow("zero characters") << text(QByteArray("a\0b", 3)) << QStringList{u"a\0b"_s} << QStringList();
    QTest::newRow("huge replies") << text(QByteArray(16 * 1024 * 1024, 'x')) + text("enabled:tap:true::")
                                  << QStringList{QString(16 * 1024 * 1024, u'x'), ok} << QStringList{u"tap"_s};
    QTest::newRow("nothing from binary frames") << FaultyInvoker::frame(FaultyInvoker::Binary, "enabled:tap:true::")
            + FaultyInvoker::frame(FaultyInvoker::Binary, QByteArray(1024 * 1024, '\xff'))
                                                << QStringList() << QStringList();
    QTest::newRow("nothing from pings and from pongs that answer none")
        << ping("enabled:tap:true::") + FaultyInvoker::frame(FaultyInvoker::Pong, "enabled:tap:true::") << QStringList()
        << QStringList();
    QTest::newRow("fragments of one byte")
        << inFragments("enabled:tap:true::") << QStringList{ok} << QStringList{u"tap"_s};
    QTest::newRow("fragments with pings between them")
        << inFragments("enabled:tap:true::", ping("?")) << QStringList{ok} << QStringList{u"tap"_s};
    QTest::newRow("fragments of other scripts")
        << text(u"ошибка"_s.toUtf8(), false) + continuation(u" 💥"_s.toUtf8(), true) << QStringList{u"ошибка 💥"_s}
        << QStringList();
    QTest::newRow("empty fragments") << text("", false) + continuation("", false)
            + continuation("enabled:tap:1::", true)
                                     << QStringList{ok} << QStringList{u"tap"_s};
}

void TestInvokerFaults::takesWhatComes()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, texts);
    QFETCH(const QStringList, enabledSensors);
    connectChannel();
    const QVariantMap before = m_side->sensorValues();

    m_invoker->send(bytes + text("the last one"));
    QVERIFY(waitForText(u"the last one"_s));
    m_texts.removeLast();
    QVERIFY(m_texts == texts); // some are too long to be printed
    QVariantMap expected = before;
    expected.insert(u"enabledSensors"_s, enabledSensors);
    QCOMPARE(m_side->sensorValues(), expected);
    QCOMPARE(m_invoker->connections(), 1);
    QCOMPARE(m_side->disconnections(), 0);
}

// Nothing that comes makes the channel send again what it has sent.
void TestInvokerFaults::asksForNothingTwice()
{
    connectChannel();
    for (int i = 0; i < 100; ++i)
        m_invoker->send(text("enabled:accelerometer:true::") + text("setAlsValue:100:::a:b:c") + text("stopTrack::::"));
    m_invoker->send(text("enabled:unknown:true::") + text("the last one"));
    QVERIFY(waitForText(u"the last one"_s));
    // A sensor that the device has not is switched off whenever its state is heard.
    QVERIFY(waitFor([this] { return m_invoker->texts().size() > connectionFrameCount; }));
    QCOMPARE(m_invoker->texts().size(), connectionFrameCount + 1);
    QVERIFY(m_invoker->texts().constLast().endsWith("disableSensor string:unknown"_L1));
}

void TestInvokerFaults::answersPings()
{
    connectChannel();
    m_invoker->send(ping("are you there?"));
    QVERIFY(waitFor([this] { return !m_invoker->pongs().isEmpty(); }));
    QCOMPARE(m_invoker->pongs(), QList<QByteArray>{"are you there?"});
}

void TestInvokerFaults::brokenProtocolEndsTheConnection_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("a continuation of nothing") << continuation("x", true);
    QTest::newRow("a text within the fragments of another") << text("x", false) + text("y");
    QTest::newRow("a fragmented ping") << FaultyInvoker::frame(FaultyInvoker::Ping, "x", false);
    QTest::newRow("a ping that is too long") << ping(QByteArray(126, 'x'));
    QTest::newRow("a kind of data that is not defined") << FaultyInvoker::frame(3, "x");
    QTest::newRow("a kind of control that is not defined") << FaultyInvoker::frame(11, "x");
    QTest::newRow("reserved bits") << FaultyInvoker::frame(FaultyInvoker::Text | 0x40, "x");
    QTest::newRow("text that is not UTF-8") << text("\xff\xfe\xfd");
    QTest::newRow("text that ends within a character") << text("\xd0");
    // Which is allowed, but QWebSocket wants whole characters.
    QTest::newRow("a character in two fragments") << inFragments(u"💥"_s.toUtf8());
    QTest::newRow("a size with its highest bit set") << QByteArray("\x81\x7f\xff\xff\xff\xff\xff\xff\xff\xff", 10);
    QTest::newRow("a size beyond any memory") << QByteArray("\x81\x7f\x00\x00\x40\x00\x00\x00\x00\x00", 10);
    QTest::newRow("a short size in the long form") << QByteArray("\x81\x7e\x00\x01x", 5);
    for (const int code : {1000, 1001, 1002, 1003, 1007, 1008, 1009, 1010, 1011, 1012, 3000, 4999}) {
        QTest::addRow("a farewell with code %d", code)
            << FaultyInvoker::frame(FaultyInvoker::Close, FaultyInvoker::closing(quint16(code), "bye"));
    }
    for (const int code : {0, 999, 1004, 1005, 1006, 1015, 5000, 65535}) {
        QTest::addRow("a farewell with code %d, which is not allowed", code)
            << FaultyInvoker::frame(FaultyInvoker::Close, FaultyInvoker::closing(quint16(code)));
    }
    QTest::newRow("a farewell without a code") << FaultyInvoker::frame(FaultyInvoker::Close, {});
    QTest::newRow("a farewell with half a code") << FaultyInvoker::frame(FaultyInvoker::Close, "\x03");
    QTest::newRow("a farewell with a reason that is not UTF-8")
        << FaultyInvoker::frame(FaultyInvoker::Close, FaultyInvoker::closing(1000, "\xff"));
    QTest::newRow("a reply after a farewell")
        << FaultyInvoker::frame(FaultyInvoker::Close, FaultyInvoker::closing(1000)) + text("enabled:tap:true::");
}

void TestInvokerFaults::brokenProtocolEndsTheConnection()
{
    QFETCH(const QByteArray, bytes);
    connectChannel();
    m_invoker->send(bytes);
    QVERIFY(waitFor([this] { return m_side->connections() == 2; }));
    QVERIFY(waitFor([this] { return m_invoker->texts().size() == connectionFrameCount; }));
    QCOMPARE(m_texts, QStringList());
    m_invoker->send(text("enabled:als:true::"));
    QVERIFY(waitForText(u"OK"_s));
    QCOMPARE(m_texts, QStringList{u"OK"_s});
    QCOMPARE(m_side->disconnections(), 1);
    QVERIFY(waitFor([] { return Resources::socketsTo(RemoteDBusInvokerService::hostTcpPort) == 1; }));
}

void TestInvokerFaults::refusedHandshakeIsTriedAgain_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("no answer") << QByteArray();
    QTest::newRow("half a line") << QByteArray("HTTP/1.1 101 Switch");
    QTest::newRow("half a header") << QByteArray("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\n");
    QTest::newRow("not found") << QByteArray("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    QTest::newRow("busy") << QByteArray("HTTP/1.1 503 Service Unavailable\r\n\r\n");
    QTest::newRow("elsewhere") << QByteArray("HTTP/1.1 301 Moved Permanently\r\nLocation: http://localhost/\r\n\r\n");
    QTest::newRow("a web page") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello");
    QTest::newRow("an agreement to somebody else's request")
        << QByteArray("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                      "Sec-WebSocket-Accept: s3pPLMBiTxaQ9kYGzzhZRbK+xOo=\r\n\r\n");
    QTest::newRow("an agreement to nothing") << QByteArray("HTTP/1.1 101 Switching Protocols\r\n\r\n");
    QTest::newRow("another protocol") << QByteArray("SSH-2.0-OpenSSH_9.9\r\n");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("a line without an end") << QByteArray(1024 * 1024, 'x');
}

void TestInvokerFaults::refusedHandshakeIsTriedAgain()
{
    QFETCH(const QByteArray, answer);
    m_invoker->setHandshake({.answer = [answer](const QByteArray &) { return answer; }});
    m_side->channel.connectToEmulator();
    QVERIFY(waitFor([this] { return m_invoker->connections() >= 5; }));
    QCOMPARE(m_side->connections(), 0);

    m_invoker->setHandshake({});
    QVERIFY(waitFor([this] { return m_invoker->texts().size() == connectionFrameCount; }));
    QCOMPARE(m_side->connections(), 1);
    QCOMPARE(m_texts, QStringList());
}

void TestInvokerFaults::firstReplyMayComeWithTheHandshake()
{
    m_invoker->setHandshake({
        .answer =
            [](const QByteArray &request) {
                return FaultyInvoker::agreement(request) + text("enabled:tap:true::") + text("the last one");
            },
        .closes = false,
    });
    m_side->channel.connectToEmulator();
    QVERIFY(waitForText(u"the last one"_s));
    QCOMPARE(m_texts, QStringList({u"OK"_s, u"the last one"_s}));
    QCOMPARE(m_side->connections(), 1);
    QCOMPARE(m_side->sensorValues().value(u"enabledSensors"_s).toStringList(), QStringList{u"tap"_s});
}

QTEST_GUILESS_MAIN(TestInvokerFaults)

#include "tst_invokerfaults.moc"
