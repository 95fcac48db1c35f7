// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/remotedbusinvokerservice.h"

#include "utils/recordinginvoker.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace EmulationManagement::Internal;
using TestUtils::RecordingInvoker;

class TestRemoteDBusInvokerService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void namesItsPortsAndItsRule();
    void hasNothingForQmlButSignals();
    void doesNotConnectBeforeItIsAsked();
    void sendsRequestAsOneFrame_data();
    void sendsRequestAsOneFrame();
    void keepsTheOrderOfRequests();
    void losesRequestsWhileNotConnected();
    void passesRepliesOn_data();
    void passesRepliesOn();
    void survivesBinaryFrames();
    void reportsDisconnectionBeforeItReconnects();
    void connectingAnewWhileTheEndIsReportedIsEnough();
    void opensALostConnectionAtOnce();
    void keepsTryingAClosedPort();
    void keepsTryingAPortThatDropsConnections();
    void connectsOnceTheEmulatorIsThere();
    void canBeDestroyedInAnyState_data();
    void canBeDestroyedInAnyState();

private:
    void connectChannel();

    std::unique_ptr<RecordingInvoker> m_invoker;
    std::unique_ptr<RemoteDBusInvokerService> m_channel;
};

void TestRemoteDBusInvokerService::init()
{
    m_invoker = std::make_unique<RecordingInvoker>();
    QVERIFY(m_invoker->listen(5454));
    m_channel = std::make_unique<RemoteDBusInvokerService>();
}

void TestRemoteDBusInvokerService::cleanup()
{
    m_channel.reset();
    m_invoker.reset();
}

void TestRemoteDBusInvokerService::connectChannel()
{
    QSignalSpy connected(m_channel.get(), &RemoteDBusInvokerService::webSocketConnected);
    m_channel->connectToEmulator();
    QVERIFY(connected.wait());
    QTRY_COMPARE(m_invoker->clients(), 1);
}

void TestRemoteDBusInvokerService::namesItsPortsAndItsRule()
{
    QCOMPARE(RemoteDBusInvokerService::portForwardingRule, u"emulationmanagementtcp"_s);
    QCOMPARE(RemoteDBusInvokerService::hostTcpPort, quint16(5454));
    QCOMPARE(RemoteDBusInvokerService::emulatorTcpPort, quint16(1234));
}

void TestRemoteDBusInvokerService::hasNothingForQmlButSignals()
{
    const QMetaObject &metaObject = RemoteDBusInvokerService::staticMetaObject;
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        QCOMPARE(metaObject.method(i).methodType(), QMetaMethod::Signal);
        methods.append(QString::fromLatin1(metaObject.method(i).methodSignature()));
    }
    QCOMPARE(
        methods, QStringList({u"webSocketConnected()"_s, u"webSocketDisconnected()"_s, u"replyReceived(QString)"_s}));
}

void TestRemoteDBusInvokerService::doesNotConnectBeforeItIsAsked()
{
    RemoteDBusInvokerService idle;
    QSignalSpy connected(&idle, &RemoteDBusInvokerService::webSocketConnected);
    connectChannel(); // the other one, made later, is through
    QCOMPARE(connected.count(), 0);
    QCOMPARE(m_invoker->connections(), 1);
}

void TestRemoteDBusInvokerService::sendsRequestAsOneFrame_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("frame");

    const QString service = u"ru.kelo.GeoclueEmulationManagement"_s;
    const QString object = u"/ru/kelo/GeoclueEmulationManagement"_s;
    const auto fields = [&](const QString &method, const QString &arguments) {
        return QStringList{u"system"_s, service, object, service, method, arguments};
    };
    const QString address = u"system ru.kelo.GeoclueEmulationManagement /ru/kelo/GeoclueEmulationManagement "
                            "ru.kelo.GeoclueEmulationManagement "_s;

    QTest::newRow("without arguments it ends in one blank")
        << fields(u"startTrack"_s, {}) << address + u"startTrack "_s;
    QTest::newRow("one argument") << fields(u"setLatitude"_s, u"double:55.7500000"_s)
                                  << address + u"setLatitude double:55.7500000"_s;
    QTest::newRow("three arguments make seven blanks")
        << fields(u"setPosition"_s, u"double:1.0000000 double:2.0000000 double:3.00"_s)
        << address + u"setPosition double:1.0000000 double:2.0000000 double:3.00"_s;
    QTest::newRow("text beyond ASCII") << fields(u"m"_s, u"string:\u043f\u0440\u0438\u0432\u0435\u0442\U0001F600"_s)
                                       << address + u"m string:\u043f\u0440\u0438\u0432\u0435\u0442\U0001F600"_s;
    QTest::newRow("empty fields leave their blanks") << QStringList{{}, {}, {}, {}, {}, {}} << u"     "_s;
    QTest::newRow("a percent sign alone is text") << fields(u"m"_s, u"string:100%"_s) << address + u"m string:100%"_s;
    QTest::newRow("a placeholder in the last field is text")
        << fields(u"m"_s, u"string:%1"_s) << address + u"m string:%1"_s;
    QTest::newRow("a placeholder in an earlier field takes a later field")
        << QStringList{u"%6"_s, u"s"_s, u"o"_s, u"i"_s, u"m"_s, u"a"_s} << u"a s o i m a"_s;
    QTest::newRow("a lower placeholder is taken first")
        << QStringList{u"%1"_s, u"s"_s, u"o"_s, u"i"_s, u"m"_s, u"a"_s} << u"s o i m a %6"_s;
    QTest::newRow("a placeholder in the method takes the arguments")
        << QStringList{u"b"_s, u"s"_s, u"o"_s, u"i"_s, u"%1"_s, u"a"_s} << u"b s o i a %6"_s;
    QTest::newRow("a placeholder above the last stays")
        << QStringList{u"%9"_s, u"s"_s, u"o"_s, u"i"_s, u"m"_s, u"a"_s} << u"%9 s o i m a"_s;
}

void TestRemoteDBusInvokerService::sendsRequestAsOneFrame()
{
    QFETCH(QStringList, fields);
    QFETCH(QString, frame);

    connectChannel();
    if (QTest::currentTestFailed())
        return;
    m_channel->callDBusMethod(fields.at(0), fields.at(1), fields.at(2), fields.at(3), fields.at(4), fields.at(5));
    QTRY_VERIFY(!m_invoker->frames().isEmpty());
    QCOMPARE(m_invoker->frames(), QStringList(frame));
    QCOMPARE(m_invoker->binaryFrames(), 0);
}

void TestRemoteDBusInvokerService::keepsTheOrderOfRequests()
{
    connectChannel();
    QStringList expected;
    for (int i = 0; i < 1000; ++i) {
        const QString number = QString::number(i);
        m_channel->callDBusMethod(u"b"_s, u"s"_s, u"o"_s, u"i"_s, u"m"_s, number);
        expected.append(u"b s o i m "_s + number);
    }
    QTRY_COMPARE(m_invoker->frames().size(), expected.size());
    QCOMPARE(m_invoker->frames(), expected);
}

void TestRemoteDBusInvokerService::losesRequestsWhileNotConnected()
{
    const auto call = [this](const QString &method) {
        m_channel->callDBusMethod(u"b"_s, u"s"_s, u"o"_s, u"i"_s, method, {});
    };
    call(u"beforeOpening"_s);
    m_channel->connectToEmulator();
    call(u"whileOpening"_s);
    QTRY_COMPARE(m_invoker->clients(), 1);
    QSignalSpy replies(m_channel.get(), &RemoteDBusInvokerService::replyReceived);
    m_invoker->sendText(u"the handshake is over"_s);
    QTRY_COMPARE(replies.count(), 1);
    call(u"connected"_s);
    QTRY_VERIFY(!m_invoker->frames().isEmpty());
    QCOMPARE(m_invoker->frames(), QStringList(u"b s o i connected "_s));
}

void TestRemoteDBusInvokerService::passesRepliesOn_data()
{
    QTest::addColumn<QStringList>("replies");
    QTest::newRow("five fields") << QStringList{u"enabled:tap|x:true::"_s};
    QTest::newRow("an empty frame") << QStringList{u""_s};
    QTest::newRow("free text with line ends and blanks") << QStringList{u" No such\n method:\t\r\n"_s};
    QTest::newRow("text beyond ASCII") << QStringList{u"a:b:c::\u043e\u0448\u0438\u0431\u043a\u0430\U0001F4A5"_s};
    QTest::newRow("a zero character") << QStringList{u"a\0b"_s};
    QTest::newRow("several, in order") << QStringList{u"1"_s, u"2"_s, u"2"_s, u""_s, u"3"_s};
    QTest::newRow("ten megabytes") << QStringList{QString(10 * 1024 * 1024, u'x'), u"after it"_s};
}

void TestRemoteDBusInvokerService::passesRepliesOn()
{
    QFETCH(QStringList, replies);

    connectChannel();
    QStringList received;
    connect(m_channel.get(), &RemoteDBusInvokerService::replyReceived, this, [&](const QString &reply) {
        received.append(reply);
    });
    for (const QString &reply : std::as_const(replies))
        m_invoker->sendText(reply);
    QTRY_COMPARE_WITH_TIMEOUT(received.size(), replies.size(), 30s);
    QVERIFY(received == replies);
}

void TestRemoteDBusInvokerService::survivesBinaryFrames()
{
    connectChannel();
    QSignalSpy replies(m_channel.get(), &RemoteDBusInvokerService::replyReceived);
    m_invoker->sendBinary(QByteArray());
    m_invoker->sendBinary(QByteArray(1024 * 1024, '\xff'));
    m_invoker->sendText(u"still there"_s);
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(replies.at(0).at(0).toString(), u"still there"_s);
    QCOMPARE(m_invoker->connections(), 1);
}

void TestRemoteDBusInvokerService::reportsDisconnectionBeforeItReconnects()
{
    connectChannel();
    QStringList events;
    connect(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected, this, [&] {
        events.append(u"disconnected, connections so far: %1"_s.arg(m_invoker->connections()));
    });
    connect(
        m_channel.get(), &RemoteDBusInvokerService::webSocketConnected, this, [&] { events.append(u"connected"_s); });

    m_invoker->dropClients();
    QTRY_COMPARE(events.size(), 2);
    QCOMPARE(events, QStringList({u"disconnected, connections so far: 1"_s, u"connected"_s}));

    QTRY_COMPARE(m_invoker->clients(), 1);
    m_channel->callDBusMethod(u"b"_s, u"s"_s, u"o"_s, u"i"_s, u"m"_s, {});
    QTRY_COMPARE(m_invoker->frames(), QStringList(u"b s o i m "_s));
}

// As when a message box about the lost connection is open: the machine comes up meanwhile, and its packages are right.
void TestRemoteDBusInvokerService::connectingAnewWhileTheEndIsReportedIsEnough()
{
    connectChannel();
    int disconnected = 0;
    bool connectedMeanwhile = false;
    connect(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected, this, [&] {
        if (++disconnected > 1)
            return;
        QSignalSpy connected(m_channel.get(), &RemoteDBusInvokerService::webSocketConnected);
        m_channel->connectToEmulator();
        connectedMeanwhile = connected.wait();
    });
    m_invoker->dropClients();
    QTRY_VERIFY(connectedMeanwhile);
    m_channel->callDBusMethod(u"b"_s, u"s"_s, u"o"_s, u"i"_s, u"m"_s, {});
    QTRY_COMPARE(m_invoker->frames(), QStringList(u"b s o i m "_s));
    QCOMPARE(m_invoker->connections(), 2);
    QCOMPARE(m_invoker->clients(), 1);
    QCOMPARE(disconnected, 1);
}

// The quickest of many, as the machine may be busy.
void TestRemoteDBusInvokerService::opensALostConnectionAtOnce()
{
    connectChannel();
    qint64 quickest = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 20; ++i) {
        QElapsedTimer timer;
        connect(
            m_channel.get(),
            &RemoteDBusInvokerService::webSocketDisconnected,
            this,
            [&timer] { timer.start(); },
            Qt::SingleShotConnection);
        QSignalSpy connected(m_channel.get(), &RemoteDBusInvokerService::webSocketConnected);
        m_invoker->dropClients();
        QVERIFY(connected.wait(30'000));
        quickest = std::min(quickest, timer.elapsed());
        QTRY_COMPARE(m_invoker->clients(), 1);
    }
    QCOMPARE_LT(quickest, 10);
}

// Each attempt returns to the event loop, so the stack does not grow, and a pause follows it: an emulator that is off
// must not cost a core.
void TestRemoteDBusInvokerService::keepsTryingAClosedPort()
{
    m_invoker->close();
    int attempts = 0;
    int nested = 0;
    int deepest = 0;
    connect(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected, this, [&] {
        ++attempts;
        deepest = std::max(deepest, ++nested);
    });
    // The counter of nested attempts is cleared by whatever comes from the loop itself.
    QObject loop;
    connect(
        m_channel.get(),
        &RemoteDBusInvokerService::webSocketDisconnected,
        &loop,
        [&] { nested = 0; },
        Qt::QueuedConnection);

    QElapsedTimer timer;
    timer.start();
    m_channel->connectToEmulator();
    QTRY_VERIFY_WITH_TIMEOUT(attempts >= 50, 30s);
    QCOMPARE_GE(timer.elapsed(), (attempts - 1) * 15); // 20 ms, of which a timer may fall short
    QCOMPARE_LE(deepest, 10);
}

void TestRemoteDBusInvokerService::keepsTryingAPortThatDropsConnections()
{
    m_invoker->close();
    QTcpServer server;
    int accepted = 0;
    connect(&server, &QTcpServer::newConnection, this, [&] {
        while (QTcpSocket *socket = server.nextPendingConnection()) {
            ++accepted;
            socket->abort();
            socket->deleteLater();
        }
    });
    QVERIFY(server.listen(QHostAddress::LocalHost, 5454));

    QSignalSpy connected(m_channel.get(), &RemoteDBusInvokerService::webSocketConnected);
    QSignalSpy disconnected(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected);
    m_channel->connectToEmulator();
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(accepted >= 20 && disconnected.count() >= 20, 30s);
    QCOMPARE_GE(timer.elapsed(), (accepted - 2) * 15);
    QCOMPARE(connected.count(), 0);
}

void TestRemoteDBusInvokerService::connectsOnceTheEmulatorIsThere()
{
    m_invoker->close();
    QSignalSpy connected(m_channel.get(), &RemoteDBusInvokerService::webSocketConnected);
    QSignalSpy disconnected(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected);
    m_channel->connectToEmulator();
    QTRY_VERIFY(disconnected.count() >= 3);
    QCOMPARE(connected.count(), 0);
    QVERIFY(m_invoker->listen(5454));
    QTRY_COMPARE(connected.count(), 1);
    QTRY_COMPARE(m_invoker->clients(), 1);
    QCOMPARE(m_invoker->connections(), 1);
}

void TestRemoteDBusInvokerService::canBeDestroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("never opened") << u"closed"_s;
    QTest::newRow("opening") << u"opening"_s;
    QTest::newRow("connected") << u"connected"_s;
    QTest::newRow("trying a closed port") << u"trying"_s;
    QTest::newRow("reporting its end") << u"reporting"_s;
}

void TestRemoteDBusInvokerService::canBeDestroyedInAnyState()
{
    QFETCH(QString, state);
    int connectionsBefore = 0;
    if (state == "opening"_L1) {
        m_channel->connectToEmulator();
    } else if (state == "connected"_L1) {
        connectChannel();
        connectionsBefore = 1;
    } else if (state == "trying"_L1) {
        m_invoker->close();
        QSignalSpy disconnected(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected);
        m_channel->connectToEmulator();
        QTRY_VERIFY(disconnected.count() >= 3);
    }

    if (state == "reporting"_L1) {
        connectChannel();
        connectionsBefore = 1;
        connect(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected, this, [this] { m_channel.reset(); });
        m_invoker->dropClients();
        QTRY_VERIFY(!m_channel);
        m_channel = std::make_unique<RemoteDBusInvokerService>();
    }

    int heard = 0;
    connect(m_channel.get(), &RemoteDBusInvokerService::webSocketDisconnected, this, [&] { ++heard; });
    m_channel.reset();
    QCOMPARE(heard, 0);

    // Nothing of it is left to connect again: whoever comes now is the next channel.
    if (state == "trying"_L1)
        QVERIFY(m_invoker->listen(5454));
    m_channel = std::make_unique<RemoteDBusInvokerService>();
    QSignalSpy connected(m_channel.get(), &RemoteDBusInvokerService::webSocketConnected);
    m_channel->connectToEmulator();
    QVERIFY(connected.wait());
    QTRY_COMPARE(m_invoker->clients(), 1);
    QCOMPARE(m_invoker->connections(), connectionsBefore + 1);
}

QTEST_GUILESS_MAIN(TestRemoteDBusInvokerService)

#include "tst_remotedbusinvokerservice.moc"
