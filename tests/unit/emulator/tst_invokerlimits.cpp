// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <QWebSocket>

#include <csignal>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 60'000; // ms

const QString positionService = u"ru.kelo.GeoclueEmulationManagement"_s;

quint16 invokerPort()
{
    return quint16(qEnvironmentVariableIntValue("INVOKER_PORT"));
}

QString request(const QString &method, const QString &arguments = {})
{
    const QString path = u'/' + QString(positionService).replace(u'.', u'/');
    return QStringList{u"system"_s, positionService, path, positionService, method, arguments}.join(u' ');
}

std::unique_ptr<QWebSocket> connected(quint16 port = invokerPort())
{
    auto socket = std::make_unique<QWebSocket>();
    QSignalSpy connected(socket.get(), &QWebSocket::connected);
    socket->open(QUrl(u"ws://127.0.0.1:%1"_s.arg(port)));
    if (connected.isEmpty() && !connected.wait(deadline))
        return {};
    return socket;
}

QString ask(QWebSocket &socket, const QString &text)
{
    QSignalSpy replies(&socket, &QWebSocket::textMessageReceived);
    socket.sendTextMessage(text);
    return replies.wait(deadline) ? replies.constFirst().constFirst().toString() : u"no reply"_s;
}

bool isRefusal(const QString &reply)
{
    return reply.split(u':').value(3) == "ru.kelo.RemoteDBusInvoker.Error.TooManyCalls"_L1;
}

// A service that hangs for as long as this lives.
class Hang
{
public:
    Hang()
        : m_process(pid_t(QDBusConnection::systemBus().interface()->servicePid(positionService).value()))
    {
        ::kill(m_process, SIGSTOP);
    }
    ~Hang() { ::kill(m_process, SIGCONT); }
    Q_DISABLE_COPY_MOVE(Hang)

private:
    pid_t m_process;
};

} // namespace

// What a client can make the invoker keep.
class tst_InvokerLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesTooManyClients()
    {
        std::vector<std::unique_ptr<QWebSocket>> clients;
        for (int i = 0; i < 100; ++i)
            clients.push_back(connected());
        for (const auto &client : clients)
            QVERIFY(client && client->isValid());

        const auto last = connected();
        QVERIFY(last);
        QTRY_COMPARE_WITH_TIMEOUT(last->state(), QAbstractSocket::UnconnectedState, deadline);
        QCOMPARE(last->closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
        QCOMPARE(last->closeReason(), u"There are too many clients"_s);

        // One that leaves makes room for another.
        clients.front()->close();
        QTRY_COMPARE_WITH_TIMEOUT(clients.front()->state(), QAbstractSocket::UnconnectedState, deadline);
        QTRY_VERIFY_WITH_TIMEOUT(isServed(), deadline);
    }

    void acceptsAgainWhenThereAreDescriptors()
    {
        constexpr quint16 port = 5455;
        QProcess invoker;
        invoker.start(
            u"sh"_s,
            {u"-c"_s,
             u"ulimit -n 20; exec \"$0\" --address 127.0.0.1 --port \"$1\""_s,
             QStringLiteral(INVOKER_PROGRAM),
             QString::number(port)});
        QVERIFY(invoker.waitForStarted());
        const auto end = qScopeGuard([&] {
            invoker.kill();
            invoker.waitForFinished();
        });
        QTRY_VERIFY_WITH_TIMEOUT(isListening(port), deadline);

        // It finds them all at once, and more than it has descriptors for.
        QCOMPARE(::kill(pid_t(invoker.processId()), SIGSTOP), 0);
        std::vector<std::unique_ptr<QTcpSocket>> sockets;
        for (int i = 0; i < 25; ++i) {
            sockets.push_back(std::make_unique<QTcpSocket>());
            sockets.back()->connectToHost(u"127.0.0.1"_s, port);
            QVERIFY(sockets.back()->waitForConnected(deadline));
        }
        QCOMPARE(::kill(pid_t(invoker.processId()), SIGCONT), 0);
        QByteArray output;
        QTRY_VERIFY2_WITH_TIMEOUT(
            (output += invoker.readAllStandardError()).contains("Clients cannot be accepted"),
            output.constData(),
            deadline);

        sockets.clear();
        QTRY_VERIFY_WITH_TIMEOUT(isServed(port), deadline);
    }

    void disconnectsAClientThatDoesNotRead()
    {
        QTcpSocket socket;
        socket.setReadBufferSize(4096);
        socket.connectToHost(u"127.0.0.1"_s, invokerPort());
        QVERIFY(socket.waitForConnected(deadline));
        socket.write("GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                     "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\nSec-WebSocket-Version: 13\r\n\r\n");
        QTRY_VERIFY_WITH_TIMEOUT(socket.peek(4096).contains("\r\n\r\n"), deadline);

        // Final text frames of no length, masked with zeros; each has an answer of a hundred bytes.
        const QByteArray frames = QByteArray("\x81\x80\0\0\0\0", 6).repeated(400'000);
        QSignalSpy disconnected(&socket, &QTcpSocket::disconnected);
        QSignalSpy failed(&socket, &QTcpSocket::errorOccurred);
        socket.write(frames);
        // Whoever does not read hears of the end only when writing.
        const auto isDisconnected = [&] {
            if (socket.isOpen())
                socket.write(frames.first(6));
            return !failed.isEmpty() || !disconnected.isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isDisconnected(), deadline);
        QVERIFY(isServed());
    }

    void boundsTheNumberOfWaitingCalls()
    {
        constexpr int most = 10'000 + 50; // those that wait, and those that are open
        constexpr int more = 20;
        {
            const Hang hang;
            const auto client = connected();
            QVERIFY(client);
            QSignalSpy replies(client.get(), &QWebSocket::textMessageReceived);
            for (int i = 0; i < most + more; ++i)
                client->sendTextMessage(request(u"stopTrack"_s));
            QTRY_COMPARE_WITH_TIMEOUT(replies.size(), more, deadline);
            for (const QList<QVariant> &reply : replies)
                QVERIFY2(isRefusal(reply.constFirst().toString()), qPrintable(reply.constFirst().toString()));

            // Calls of a client that has gone leave their place to others.
            client->abort();
            const auto next = connected();
            QVERIFY(next);
            QSignalSpy nextReplies(next.get(), &QWebSocket::textMessageReceived);
            QTRY_VERIFY_WITH_TIMEOUT(isServed(), deadline);
            next->sendTextMessage(request(u"stopTrack"_s));
            next->sendTextMessage(u"last"_s);
            QVERIFY(nextReplies.wait(deadline));
            QVERIFY(nextReplies.constFirst().constFirst().toString().contains("InvalidRequest"_L1));
        }
        QTRY_VERIFY_WITH_TIMEOUT(isServed(), deadline);
        QCOMPARE(ask(*connected(), request(u"stopTrack"_s)), u"stopTrack::::"_s);
    }

    void boundsTheSizeOfWaitingCalls()
    {
        {
            const Hang hang;
            const auto client = connected();
            QVERIFY(client);
            QSignalSpy replies(client.get(), &QWebSocket::textMessageReceived);
            for (int i = 0; i < 6; ++i)
                client->sendTextMessage(request(u"loadTrack"_s, hugeTrack()));
            QTRY_COMPARE_WITH_TIMEOUT(replies.size(), 1, deadline);
            QVERIFY(isRefusal(replies.constFirst().constFirst().toString()));
        }
        QTRY_COMPARE_WITH_TIMEOUT(ask(*connected(), request(u"stopTrack"_s)), u"stopTrack::::"_s, deadline);
    }

    void givesBackTheRoomOfClientsThatHaveLeft_data()
    {
        QTest::addColumn<int>("openCalls"); // made before those that take all the room
        QTest::addColumn<bool>("goesOn");
        QTest::newRow("their calls wait, and the service still hangs") << 50 << false;
        QTest::newRow("their calls wait, and the service goes on") << 50 << true;
        QTest::newRow("their calls are on their way, and the service goes on") << 0 << true;
    }

    void givesBackTheRoomOfClientsThatHaveLeft()
    {
        QFETCH(const int, openCalls);
        QFETCH(const bool, goesOn);
        auto hang = std::make_unique<Hang>();
        {
            const auto client = connected();
            QVERIFY(client);
            QSignalSpy replies(client.get(), &QWebSocket::textMessageReceived);
            for (int i = 0; i < openCalls; ++i)
                client->sendTextMessage(request(u"stopTrack"_s));
            for (int i = 0; i < 6; ++i) // one more than there is room for
                client->sendTextMessage(request(u"loadTrack"_s, hugeTrack()));
            QTRY_COMPARE_WITH_TIMEOUT(replies.size(), 1, deadline);
            QVERIFY(isRefusal(replies.constFirst().constFirst().toString()));
            client->abort();
        }
        if (goesOn) {
            hang.reset();
            QTRY_COMPARE_WITH_TIMEOUT(ask(*connected(), request(u"stopTrack"_s)), u"stopTrack::::"_s, deadline);
            hang = std::make_unique<Hang>();
        }
        QVERIFY(isServed()); // so the end of the one that left has been seen

        const auto next = connected();
        QVERIFY(next);
        QSignalSpy replies(next.get(), &QWebSocket::textMessageReceived);
        for (int i = 0; i < 4; ++i)
            next->sendTextMessage(request(u"loadTrack"_s, hugeTrack()));
        next->sendTextMessage(u"last"_s);
        QVERIFY(replies.wait(deadline));
        QVERIFY2(
            replies.constFirst().constFirst().toString().contains("InvalidRequest"_L1),
            qPrintable(replies.constFirst().constFirst().toString()));

        hang.reset();
        QTRY_COMPARE_WITH_TIMEOUT(replies.size(), 5, deadline);
        for (const QList<QVariant> &reply : replies)
            QVERIFY(!isRefusal(reply.constFirst().toString()));
    }

private:
    // 13 MB in the invoker, which has room for five of them.
    static QString hugeTrack()
    {
        return u"array:array:double:"_s + u"1.0,2.0,3.0,100000000;"_s.repeated(300'000) + u"1,2,3,4"_s;
    }

    static bool isListening(quint16 port)
    {
        QFile connections(u"/proc/net/tcp"_s);
        if (!connections.open(QIODevice::ReadOnly))
            return false;
        return connections.readAll().contains(
            ":%1 00000000:0000 0A "_ba.replace("%1", QByteArray::number(port, 16).toUpper()));
    }

    static bool isServed(quint16 port = invokerPort())
    {
        QWebSocket socket;
        QSignalSpy replies(&socket, &QWebSocket::textMessageReceived);
        QObject::connect(&socket, &QWebSocket::connected, &socket, [&socket] { socket.sendTextMessage(u"x"_s); });
        socket.open(QUrl(u"ws://127.0.0.1:%1"_s.arg(port)));
        return replies.wait(2000);
    }
};

QTEST_GUILESS_MAIN(tst_InvokerLimits)

#include "tst_invokerlimits.moc"
