// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The proxy itself: a fault that is not what its name says would prove nothing.

#include "robustness/faultproxy.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <array>
#include <cerrno>
#include <memory>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace Robustness;

Q_DECLARE_METATYPE(Robustness::Ending)
Q_DECLARE_METATYPE(Robustness::Direction)

namespace {

constexpr quint16 proxyPort = 5454;
constexpr quint16 emulatorPort = 1235;
constexpr int deadline = 30'000; // ms

// The system's own socket, which tells a FIN from a RST.
class PlainSocket
{
public:
    PlainSocket()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(proxyPort);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::connect(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    }
    ~PlainSocket() { ::close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(PlainSocket)

    void send(const QByteArray &bytes) { ::send(m_descriptor, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL); }

    // Reads what there is.
    void read()
    {
        std::array<char, 4096> buffer;
        const ssize_t size = ::recv(m_descriptor, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (size > 0)
            m_received.append(buffer.data(), size);
        m_closed = m_closed || size == 0;
        m_reset = m_reset || (size < 0 && errno == ECONNRESET);
    }

    QByteArray received()
    {
        read();
        return m_received;
    }
    bool isClosed()
    {
        read();
        return m_closed;
    }
    bool isReset()
    {
        read();
        return m_reset;
    }

private:
    int m_descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    QByteArray m_received;
    bool m_closed = false;
    bool m_reset = false;
};

} // namespace

class TestFaultProxy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void forwardsEverything_data();
    void forwardsEverything();
    void breaksAfterSoManyBytes_data();
    void breaksAfterSoManyBytes();
    void refusesWhenNobodyListens();

private:
    std::unique_ptr<QTcpServer> m_server;
    std::unique_ptr<FaultProxy> m_proxy;
};

void TestFaultProxy::init()
{
    m_proxy = std::make_unique<FaultProxy>(emulatorPort);
    QVERIFY(m_proxy->listen(proxyPort));
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(QHostAddress::LocalHost, emulatorPort));
}

void TestFaultProxy::forwardsEverything_data()
{
    QTest::addColumn<int>("bytesAtOnce");
    QTest::newRow("as fast as it can") << 0;
    QTest::newRow("byte by byte") << 1;
    QTest::newRow("a few at a time") << 7;
}

void TestFaultProxy::forwardsEverything()
{
    QFETCH(const int, bytesAtOnce);
    m_proxy->setBytesAtOnce(bytesAtOnce);
    PlainSocket plugin;
    QTRY_VERIFY_WITH_TIMEOUT(m_server->hasPendingConnections(), deadline);
    QTcpSocket *emulator = m_server->nextPendingConnection();

    const QByteArray up(2000, 'u');
    const QByteArray down(3000, 'd');
    plugin.send(up);
    emulator->write(down);
    QTRY_COMPARE_WITH_TIMEOUT(emulator->bytesAvailable(), up.size(), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(plugin.received().size(), down.size(), deadline);
    QCOMPARE(emulator->readAll(), up);
    QCOMPARE(plugin.received(), down);
    QCOMPARE(m_proxy->bytes(Direction::ToEmulator), up.size());
    QCOMPARE(m_proxy->bytes(Direction::ToPlugin), down.size());

    // The last words get through before the end.
    emulator->write("bye");
    emulator->disconnectFromHost();
    QTRY_VERIFY_WITH_TIMEOUT(plugin.isClosed(), deadline);
    QCOMPARE(plugin.received(), down + "bye");
    QCOMPARE(m_proxy->broken(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_proxy->open(), 0, deadline);
}

void TestFaultProxy::breaksAfterSoManyBytes_data()
{
    QTest::addColumn<Ending>("ending");
    QTest::addColumn<Direction>("direction");
    for (const auto &[name, ending] :
         {std::pair("FIN", Ending::Close), std::pair("RST", Ending::Reset), std::pair("silence", Ending::HalfOpen)}) {
        QTest::addRow("%s after bytes to the emulator", name) << ending << Direction::ToEmulator;
        QTest::addRow("%s after bytes to the plugin", name) << ending << Direction::ToPlugin;
    }
}

void TestFaultProxy::breaksAfterSoManyBytes()
{
    QFETCH(const Ending, ending);
    QFETCH(const Direction, direction);
    constexpr qint64 bytes = 10;
    m_proxy->setNextFault([&] { return Fault{.ending = ending, .direction = direction, .bytes = bytes}; });
    PlainSocket plugin;
    QTRY_VERIFY_WITH_TIMEOUT(m_server->hasPendingConnections(), deadline);
    QTcpSocket *emulator = m_server->nextPendingConnection();

    const QByteArray sent = "0123456789abcdef";
    if (direction == Direction::ToEmulator)
        plugin.send(sent);
    else
        emulator->write(sent);
    QTRY_COMPARE_WITH_TIMEOUT(m_proxy->broken(), 1, deadline);
    QCOMPARE(m_proxy->bytes(direction), bytes);

    switch (ending) {
    case Ending::Close:
        QTRY_VERIFY_WITH_TIMEOUT(plugin.isClosed(), deadline);
        QTRY_COMPARE_WITH_TIMEOUT(emulator->state(), QAbstractSocket::UnconnectedState, deadline);
        QCOMPARE(direction == Direction::ToEmulator ? emulator->readAll() : plugin.received(), sent.first(bytes));
        QVERIFY(!plugin.isReset());
        break;
    case Ending::Reset:
        QTRY_VERIFY_WITH_TIMEOUT(plugin.isReset() || plugin.isClosed(), deadline);
        QVERIFY(plugin.isReset());
        QTRY_COMPARE_WITH_TIMEOUT(emulator->state(), QAbstractSocket::UnconnectedState, deadline);
        break;
    case Ending::HalfOpen: {
        plugin.send("more");
        emulator->write("more");
        // Whatever this connection would do, it would do before a later one is through.
        PlainSocket later;
        QTRY_VERIFY_WITH_TIMEOUT(m_server->hasPendingConnections(), deadline);
        QVERIFY(!plugin.isClosed() && !plugin.isReset());
        QCOMPARE(emulator->state(), QAbstractSocket::ConnectedState);
        QCOMPARE(plugin.received() + emulator->readAll(), sent.first(bytes));
        m_proxy->breakAll(Ending::Reset);
        QTRY_VERIFY_WITH_TIMEOUT(plugin.isReset(), deadline);
        break;
    }
    }
}

void TestFaultProxy::refusesWhenNobodyListens()
{
    m_server->close();
    PlainSocket plugin;
    QTRY_VERIFY_WITH_TIMEOUT(plugin.isReset(), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(m_proxy->open(), 0, deadline);
}

QTEST_GUILESS_MAIN(TestFaultProxy)

#include "tst_faultproxy.moc"
