// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote-dbus-invoker/protocol.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Emulator;

class tst_InvokerProtocol : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsSixFields();
    void argumentsMayBeEmpty();
    void argumentsKeepTheirBlanks();
    void acceptsNames_data();
    void acceptsNames();
    void refuses_data();
    void refuses();
    void formatsReplies_data();
    void formatsReplies();
    void formatsValues_data();
    void formatsValues();
};

void tst_InvokerProtocol::readsSixFields()
{
    const Request request = parseRequest(u"system ru.kelo.Service /ru/kelo/Object ru.kelo.Interface method int32:1"_s);
    QCOMPARE(request.error, QString());
    QCOMPARE(request.bus, u"system"_s);
    QCOMPARE(request.service, u"ru.kelo.Service"_s);
    QCOMPARE(request.path, u"/ru/kelo/Object"_s);
    QCOMPARE(request.interface, u"ru.kelo.Interface"_s);
    QCOMPARE(request.method, u"method"_s);
    QCOMPARE(request.arguments, "int32:1"_ba);
}

void tst_InvokerProtocol::argumentsMayBeEmpty()
{
    const Request request = parseRequest(u"system a.b / a.b startTrack "_s);
    QCOMPARE(request.error, QString());
    QCOMPARE(request.method, u"startTrack"_s);
    QCOMPARE(request.arguments, QByteArray());
}

void tst_InvokerProtocol::argumentsKeepTheirBlanks()
{
    QCOMPARE(parseRequest(u"system a.b / a.b m  int32:1  x "_s).arguments, " int32:1  x "_ba);
}

void tst_InvokerProtocol::acceptsNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a unique name") << u"system :1.42 / a.b m "_s;
    QTest::newRow("a dash in a service") << u"system a-b.c / a.b m "_s;
    QTest::newRow("digits after letters") << u"system a1.b2 /1/2 a1.b2 m3 "_s;
    QTest::newRow("underscores everywhere") << u"system _._ /_ _._ _ "_s;
}

void tst_InvokerProtocol::acceptsNames()
{
    QFETCH(QString, text);
    QCOMPARE(parseRequest(text).error, QString());
}

void tst_InvokerProtocol::refuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    const QString shape = u"A request has six fields with one blank between any two of them"_s;
    const auto service = [](const QString &name) { return u"\"%1\" is not a service name"_s.arg(name); };
    const auto path = [](const QString &name) { return u"\"%1\" is not an object path"_s.arg(name); };
    const auto interface = [](const QString &name) { return u"\"%1\" is not an interface name"_s.arg(name); };
    const auto method = [](const QString &name) { return u"\"%1\" is not a method name"_s.arg(name); };
    const QString longName = u"a."_s + QString(300, u'b');

    QTest::newRow("an empty frame") << QString() << shape;
    QTest::newRow("one word") << u"hello"_s << shape;
    QTest::newRow("five fields without the last blank") << u"system a.b / a.b m"_s << shape;
    QTest::newRow("an empty field among the names") << u"system  a.b / a.b m "_s << service({});
    QTest::newRow("a service without a dot") << u"system a / a.b m "_s << service(u"a"_s);
    QTest::newRow("a service that ends in a dot") << u"system a. / a.b m "_s << service(u"a."_s);
    QTest::newRow("a service that starts with a digit") << u"system 1.a / a.b m "_s << service(u"1.a"_s);
    QTest::newRow("a service beyond ASCII") << u"system a.é / a.b m "_s << service(u"a.é"_s);
    QTest::newRow("a service that is too long")
        << u"system %1 / a.b m "_s.arg(longName) << service(longName.first(256) + u"…"_s);
    QTest::newRow("a relative path") << u"system a.b a a.b m "_s << path(u"a"_s);
    QTest::newRow("a path that ends in a slash") << u"system a.b /a/ a.b m "_s << path(u"/a/"_s);
    QTest::newRow("a path with two slashes") << u"system a.b /a//b a.b m "_s << path(u"/a//b"_s);
    QTest::newRow("a path with a dash") << u"system a.b /a-b a.b m "_s << path(u"/a-b"_s);
    QTest::newRow("the bus library's own path")
        << u"system a.b /org/freedesktop/DBus/Local a.b m "_s << path(u"/org/freedesktop/DBus/Local"_s);
    QTest::newRow("an interface without a dot") << u"system a.b / a m "_s << interface(u"a"_s);
    QTest::newRow("an interface with a dash") << u"system a.b / a-b.c m "_s << interface(u"a-b.c"_s);
    QTest::newRow("the bus library's own interface")
        << u"system a.b / org.freedesktop.DBus.Local m "_s << interface(u"org.freedesktop.DBus.Local"_s);
    QTest::newRow("a method with a dot") << u"system a.b / a.b m.n "_s << method(u"m.n"_s);
    QTest::newRow("a method that starts with a digit") << u"system a.b / a.b 1m "_s << method(u"1m"_s);
    QTest::newRow("no method") << u"system a.b / a.b  "_s << method({});
    QTest::newRow("a line feed in a method") << u"system a.b / a.b m\n "_s << method(u"m\n"_s);
    QTest::newRow("a zero character in a method")
        << u"system a.b / a.b m"_s + QChar(0) + u' ' << method(u"m"_s + QChar(0));
}

void tst_InvokerProtocol::refuses()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    QCOMPARE(parseRequest(text).error, error);
}

void tst_InvokerProtocol::formatsReplies_data()
{
    QTest::addColumn<Reply>("reply");
    QTest::addColumn<QString>("frame");

    QTest::newRow("nothing but the method") << Reply{u"startTrack"_s, {}, {}, {}, {}} << u"startTrack::::"_s;
    QTest::newRow("a returned value") << Reply{u"enabled"_s, {u"tap"_s}, u"true"_s, {}, {}} << u"enabled:tap:true::"_s;
    QTest::newRow("several arguments") << Reply{u"m"_s, {u"1"_s, u"2"_s, u"3"_s}, {}, {}, {}} << u"m:1|2|3:::"_s;
    QTest::newRow("an error") << Reply{u"m"_s, {}, {}, u"a.b.Failed"_s, u"boom"_s} << u"m:::a.b.Failed:boom"_s;
    QTest::newRow("colons become look-alikes in every field")
        << Reply{u"m:"_s, {u"a:b"_s}, u"x:y"_s, u"n:"_s, u"no: never"_s} << u"m꞉:a꞉b:x꞉y:n꞉:no꞉ never"_s;
    QTest::newRow("bars inside an argument become broken ones")
        << Reply{u"m"_s, {u"a|b"_s, u"c"_s}, {}, {}, {}} << u"m:a¦b|c:::"_s;
}

void tst_InvokerProtocol::formatsReplies()
{
    QFETCH(Reply, reply);
    QFETCH(QString, frame);
    const QString formatted = formatReply(reply);
    QCOMPARE(formatted, frame);
    QCOMPARE(formatted.split(u':').size(), 5);
}

void tst_InvokerProtocol::formatsValues_data()
{
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << QVariantList{} << QString();
    QTest::newRow("true") << QVariantList{true} << u"true"_s;
    QTest::newRow("false") << QVariantList{false} << u"false"_s;
    QTest::newRow("a whole number") << QVariantList{-5} << u"-5"_s;
    QTest::newRow("a byte is a number") << QVariantList{QVariant::fromValue(uchar(65))} << u"65"_s;
    QTest::newRow("a fraction in its shortest form") << QVariantList{4.3e-05} << u"4.3e-05"_s;
    QTest::newRow("a precise fraction") << QVariantList{1.1459155902616465} << u"1.1459155902616465"_s;
    QTest::newRow("a string") << QVariantList{u"text"_s} << u"text"_s;
    QTest::newRow("a list of strings") << QVariantList{QStringList{u"a"_s, u"b"_s}} << u"a,b"_s;
    QTest::newRow("an object path") << QVariantList{QVariant::fromValue(QDBusObjectPath(u"/a/b"_s))} << u"/a/b"_s;
    QTest::newRow("a variant") << QVariantList{QVariant::fromValue(QDBusVariant(7))} << u"7"_s;
    QTest::newRow("several values") << QVariantList{1, true, u"x"_s} << u"1|true|x"_s;
}

void tst_InvokerProtocol::formatsValues()
{
    QFETCH(QVariantList, values);
    QFETCH(QString, text);
    QCOMPARE(formatValues(values), text);
}

QTEST_GUILESS_MAIN(tst_InvokerProtocol)

#include "tst_invokerprotocol.moc"
