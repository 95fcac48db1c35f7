// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/emulationmanager.h"

#include "utils/recordinginvoker.h"
#include "utils/signallog.h"

#include <QMetaProperty>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::RecordingInvoker;
using TestUtils::SignalLog;

namespace {

class Manager : public EmulationManager
{
    Q_OBJECT

public:
    explicit Manager(QObject *parent = nullptr)
        : EmulationManager(parent)
    {
    }

    QString bus() const override { return u"system"_s; }
    QString dbusService() const override { return u"org.example.Service"_s; }
    QString dbusObject() const override { return u"/org/example/Object"_s; }
    QString dbusInterface() const override { return u"org.example.Interface"_s; }
    void processDBusMethodsReturnValues(const QList<QString> &replyFields) override
    {
        events.append(u"values:"_s + replyFields.join(u'|'));
    }

    QStringList events;
};

// What a manager does with a reply, in its order: returned values, then the text for the pages.
QStringList eventsOf(const QString &reply)
{
    RemoteDBusInvokerService channel;
    Manager manager;
    manager.setRdbusinvoker(&channel);
    QObject::connect(&manager, &EmulationManager::replyFromEmulatorReceived, &manager, [&](const QString &text) {
        manager.events.append(u"text:"_s + text);
    });
    Q_EMIT channel.replyReceived(reply);
    return manager.events;
}

} // namespace

class TestEmulationManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesItselfToQml();
    void startsWithoutChannel();
    void announcesItsChannel();
    void addressesCallsToItsService();
    void forwardsTheConnection();
    void handlesReply_data();
    void handlesReply();
    void handlesRandomReplies();
    void boundTwiceHearsEverythingTwice();
    void everyManagerHearsEveryReply();
    void earlierChannelsStayConnected();
    void outlivesItsChannel();
    void channelOutlivesIt();
};

void TestEmulationManager::describesItselfToQml()
{
    const QMetaObject &metaObject = EmulationManager::staticMetaObject;
    const QMetaProperty property = metaObject.property(metaObject.indexOfProperty("rdbusinvoker"));
    QVERIFY(property.isReadable() && property.isWritable());
    QCOMPARE(property.typeName(), "EmulationManagement::Internal::RemoteDBusInvokerService*");
    QCOMPARE(property.notifySignal().methodSignature(), "rdbusinvokerChanged()");
    QCOMPARE(metaObject.propertyCount() - metaObject.propertyOffset(), 1);
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        QCOMPARE(metaObject.method(i).methodType(), QMetaMethod::Signal);
        methods.append(QString::fromLatin1(metaObject.method(i).methodSignature()));
    }
    const QStringList expected{
        u"rdbusinvokerChanged()"_s, u"emulatorConnected()"_s, u"replyFromEmulatorReceived(QString)"_s};
    QCOMPARE(methods, expected);

    RemoteDBusInvokerService channel;
    Manager manager;
    QVERIFY(manager.setProperty("rdbusinvoker", QVariant::fromValue(&channel)));
    QCOMPARE(manager.property("rdbusinvoker").value<RemoteDBusInvokerService *>(), &channel);
}

void TestEmulationManager::startsWithoutChannel()
{
    Manager manager;
    QCOMPARE(manager.rdbusinvoker(), nullptr);
    manager.callDBusMethod(u"method"_s, u"int32:1"_s);
    manager.setRdbusinvoker(nullptr);
    manager.callDBusMethod(u"method"_s, {});
    QCOMPARE(manager.rdbusinvoker(), nullptr);
}

void TestEmulationManager::announcesItsChannel()
{
    RemoteDBusInvokerService channel;
    Manager manager;
    QSignalSpy changed(&manager, &EmulationManager::rdbusinvokerChanged);
    manager.setRdbusinvoker(&channel);
    QCOMPARE(manager.rdbusinvoker(), &channel);
    QCOMPARE(changed.count(), 1);
    manager.setRdbusinvoker(&channel); // the same again
    QCOMPARE(changed.count(), 2);
}

void TestEmulationManager::addressesCallsToItsService()
{
    RecordingInvoker invoker;
    QVERIFY(invoker.listen(5454));
    RemoteDBusInvokerService channel;
    Manager manager;
    manager.setRdbusinvoker(&channel);
    QSignalSpy connected(&manager, &EmulationManager::emulatorConnected);
    channel.connectToEmulator();
    QVERIFY(connected.wait());

    manager.callDBusMethod(u"withArguments"_s, u"int32:1 string:a"_s);
    manager.callDBusMethod(u"without"_s, {});
    QTRY_COMPARE(invoker.frames().size(), 2);
    QCOMPARE(
        invoker.frames(),
        QStringList(
            {u"system org.example.Service /org/example/Object org.example.Interface withArguments int32:1 string:a"_s,
             u"system org.example.Service /org/example/Object org.example.Interface without "_s}));
}

void TestEmulationManager::forwardsTheConnection()
{
    RemoteDBusInvokerService channel;
    Manager manager;
    manager.setRdbusinvoker(&channel);
    SignalLog log;
    log.watch(&manager);
    Q_EMIT channel.webSocketConnected();
    QCOMPARE(log.entries(), QStringList(u"emulatorConnected"_s));
    Q_EMIT channel.webSocketDisconnected();
    QCOMPARE(log.entries(), QStringList(u"emulatorConnected"_s));
}

void TestEmulationManager::handlesReply_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QStringList>("events");

    QTest::newRow("no error is OK, after the values") << u"a:b:c::"_s << QStringList{u"values:a|b|c||"_s, u"text:OK"_s};
    QTest::newRow("an error message without a name is OK")
        << u"a:b:c::boom"_s << QStringList{u"values:a|b|c||boom"_s, u"text:OK"_s};
    QTest::newRow("five empty fields are OK") << u"::::"_s << QStringList{u"values:||||"_s, u"text:OK"_s};
    QTest::newRow("an error is its name and its message")
        << u"a:b:c:org.freedesktop.DBus.Error.Failed:boom"_s
        << QStringList{u"text:org.freedesktop.DBus.Error.Failed boom"_s};
    QTest::newRow("an error without a message ends in a blank") << u"a:b:c:Error:"_s << QStringList{u"text:Error "_s};
    QTest::newRow("a blank is an error name") << u"a:b:c: :x"_s << QStringList{u"text:  x"_s};
    QTest::newRow("an error's name and message are filled in at once")
        << u"a:b:c:%2:boom"_s << QStringList{u"text:%2 boom"_s};
    QTest::newRow("a placeholder in the message is text")
        << u"a:b:c:Error:%1 %2"_s << QStringList{u"text:Error %1 %2"_s};
    QTest::newRow("four fields pass unchanged") << u"a:b:c:d"_s << QStringList{u"text:a:b:c:d"_s};
    QTest::newRow("six fields pass unchanged")
        << u"a:b:c:Error:see http://x"_s << QStringList{u"text:a:b:c:Error:see http://x"_s};
    QTest::newRow("the empty frame passes unchanged") << u""_s << QStringList{u"text:"_s};
    QTest::newRow("free text passes unchanged") << u"Invalid request"_s << QStringList{u"text:Invalid request"_s};
    QTest::newRow("a full-width colon separates nothing")
        << u"a\uff1ab:c:d:e"_s << QStringList{u"text:a\uff1ab:c:d:e"_s};
}

void TestEmulationManager::handlesReply()
{
    QFETCH(QString, reply);
    QTEST(eventsOf(reply), "events");
}

void TestEmulationManager::handlesRandomReplies()
{
    QRandomGenerator random(20250101);
    const QString alphabet = u":::ab% 1\n\u00e9"_s;
    for (int i = 0; i < 20000; ++i) {
        QString reply;
        const int length = random.bounded(12);
        for (int j = 0; j < length; ++j)
            reply += alphabet.at(random.bounded(int(alphabet.size())));

        // By its colons, without taking it apart.
        QList<qsizetype> colons;
        for (qsizetype at = reply.indexOf(u':'); at >= 0; at = reply.indexOf(u':', at + 1))
            colons.append(at);
        QStringList expected;
        if (colons.size() != 4) {
            expected = {u"text:"_s + reply};
        } else if (colons.at(3) == colons.at(2) + 1) {
            expected = {u"values:"_s + QString(reply).replace(u':', u'|'), u"text:OK"_s};
        } else {
            expected = {
                u"text:"_s + reply.sliced(colons.at(2) + 1, colons.at(3) - colons.at(2) - 1) + u' '
                + reply.sliced(colons.at(3) + 1)};
        }
        QCOMPARE(eventsOf(reply), expected);
    }
}

void TestEmulationManager::boundTwiceHearsEverythingTwice()
{
    RemoteDBusInvokerService channel;
    Manager manager;
    manager.setRdbusinvoker(&channel);
    manager.setRdbusinvoker(&channel);
    QSignalSpy connected(&manager, &EmulationManager::emulatorConnected);
    QSignalSpy replies(&manager, &EmulationManager::replyFromEmulatorReceived);

    Q_EMIT channel.webSocketConnected();
    QCOMPARE(connected.count(), 2);
    Q_EMIT channel.replyReceived(u"a:b:c::"_s);
    QCOMPARE(replies, QList<QVariantList>({{u"OK"_s}, {u"OK"_s}}));
    QCOMPARE(manager.events, QStringList({u"values:a|b|c||"_s, u"values:a|b|c||"_s}));
}

void TestEmulationManager::everyManagerHearsEveryReply()
{
    RecordingInvoker invoker;
    QVERIFY(invoker.listen(5454));
    RemoteDBusInvokerService channel;
    Manager asking;
    Manager other;
    asking.setRdbusinvoker(&channel);
    other.setRdbusinvoker(&channel);
    QSignalSpy connected(&channel, &RemoteDBusInvokerService::webSocketConnected);
    channel.connectToEmulator();
    QVERIFY(connected.wait());

    QSignalSpy askingReplies(&asking, &EmulationManager::replyFromEmulatorReceived);
    QSignalSpy otherReplies(&other, &EmulationManager::replyFromEmulatorReceived);
    invoker.setAnswer(u"system org.example.Service /org/example/Object org.example.Interface get "_s, u"get::7::"_s);
    asking.callDBusMethod(u"get"_s, {});
    QTRY_COMPARE(otherReplies.count(), 1);
    QCOMPARE(askingReplies, QList<QVariantList>({{u"OK"_s}}));
    QCOMPARE(otherReplies, QList<QVariantList>({{u"OK"_s}}));
    QCOMPARE(other.events, QStringList(u"values:get||7||"_s));
}

void TestEmulationManager::earlierChannelsStayConnected()
{
    RemoteDBusInvokerService first;
    RemoteDBusInvokerService second;
    Manager manager;
    manager.setRdbusinvoker(&first);
    manager.setRdbusinvoker(&second);
    QSignalSpy replies(&manager, &EmulationManager::replyFromEmulatorReceived);
    Q_EMIT first.replyReceived(u"from the first"_s);
    Q_EMIT second.replyReceived(u"from the second"_s);
    QCOMPARE(replies, QList<QVariantList>({{u"from the first"_s}, {u"from the second"_s}}));
}

void TestEmulationManager::outlivesItsChannel()
{
    Manager manager;
    {
        RemoteDBusInvokerService channel;
        manager.setRdbusinvoker(&channel);
    }
    QCOMPARE(manager.rdbusinvoker(), nullptr);
    manager.callDBusMethod(u"method"_s, {});
}

void TestEmulationManager::channelOutlivesIt()
{
    RemoteDBusInvokerService channel;
    int heard = 0;
    {
        Manager manager;
        manager.setRdbusinvoker(&channel);
        connect(&manager, &EmulationManager::replyFromEmulatorReceived, this, [&] { ++heard; });
        Q_EMIT channel.replyReceived(u"x"_s);
    }
    Q_EMIT channel.replyReceived(u"y"_s);
    QCOMPARE(heard, 1);
}

QTEST_GUILESS_MAIN(TestEmulationManager)

#include "tst_emulationmanager.moc"
