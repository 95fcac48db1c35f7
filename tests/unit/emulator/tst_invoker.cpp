// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <QWebSocket>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadline = 30'000; // ms

const QString sensorService = u"ru.kelo.SensorfwEmulationManagement"_s;
const QString positionService = u"ru.kelo.GeoclueEmulationManagement"_s;

QUrl invokerUrl()
{
    return QUrl(u"ws://127.0.0.1:"_s + qEnvironmentVariable("INVOKER_PORT"));
}

QString objectPath(const QString &service)
{
    return u'/' + QString(service).replace(u'.', u'/');
}

QString request(const QString &service, const QString &method, const QString &arguments = {})
{
    return QStringList{u"system"_s, service, objectPath(service), service, method, arguments}.join(u' ');
}

QVariant stateOf(const QString &service, const QString &name)
{
    QDBusMessage get =
        QDBusMessage::createMethodCall(service, objectPath(service), u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    get << service << name;
    const QDBusReply<QVariant> reply = QDBusConnection::systemBus().call(get);
    return reply.isValid() ? reply.value() : QVariant();
}

class Client
{
public:
    Client()
    {
        m_socket.setMaxAllowedIncomingMessageSize(64 * 1024 * 1024);
        m_socket.setMaxAllowedIncomingFrameSize(64 * 1024 * 1024);
        QSignalSpy connected(&m_socket, &QWebSocket::connected);
        m_socket.open(invokerUrl());
        connected.wait(deadline);
    }

    QWebSocket &socket() { return m_socket; }
    bool isConnected() const { return m_socket.state() == QAbstractSocket::ConnectedState; }

    // The one reply to one frame.
    QString ask(const QString &text)
    {
        return reply([&] { m_socket.sendTextMessage(text); });
    }

    template<typename Send>
    QString reply(Send send)
    {
        QSignalSpy replies(&m_socket, &QWebSocket::textMessageReceived);
        send();
        if (!replies.wait(deadline))
            return u"no reply"_s;
        return replies.constFirst().constFirst().toString();
    }

private:
    QWebSocket m_socket;
};

QList<QJsonObject> logEntries()
{
    QFile file(qEnvironmentVariable("INVOKER_LOG"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<QJsonObject> entries;
    while (!file.atEnd())
        entries.append(QJsonDocument::fromJson(file.readLine()).object());
    return entries;
}

bool logHas(const QString &event, const QString &text)
{
    const QList<QJsonObject> entries = logEntries();
    return std::ranges::any_of(entries, [&](const QJsonObject &entry) {
        return entry["event"_L1].toString() == event && entry["text"_L1].toString() == text;
    });
}

} // namespace

class tst_Invoker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    // First, while the log is short.
    void logsFrames();

    void callsSensorMethods_data();
    void callsSensorMethods();
    void callsPositionMethods_data();
    void callsPositionMethods();
    void answersEnabled();
    void announcesChanges();
    void playsTracks();
    void announcesThePositionsOfAPlayingTrack();
    void carriesLongTracks();

    void reportsErrors_data();
    void reportsErrors();
    void refusesBinaryFrames();
    void closesOnInvalidUtf8();
    void answersTenMegabytes();
    void refusesOriginsOfTheWeb();

    void survivesADisconnectionDuringACall();
    void survivesGarbageInsteadOfAHandshake();
    void servesManyClients();
    void answersBurstsInOrder();
    void answersWhenTheServiceHasDied();
};

void tst_Invoker::initTestCase()
{
    QVERIFY(!qEnvironmentVariableIsEmpty("INVOKER_PORT"));
    QVERIFY(!qEnvironmentVariableIsEmpty("INVOKER_LOG"));
    QVERIFY(QDBusConnection::systemBus().isConnected());
}

void tst_Invoker::callsSensorMethods_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("replyArguments");
    QTest::addColumn<QVariantMap>("state");

    const auto row = [](const char *method, const QString &arguments, const QString &texts, const QVariantMap &state) {
        QTest::newRow(method) << QString::fromLatin1(method) << arguments << texts << state;
    };
    row("setAccelerometerValues",
        u"int32:1 int32:-2 int32:3"_s,
        u"1|-2|3"_s,
        {{u"accelerometerX"_s, 1}, {u"accelerometerY"_s, -2}, {u"accelerometerZ"_s, 3}});
    row("setAccelerometerX", u"int32:11"_s, u"11"_s, {{u"accelerometerX"_s, 11}});
    row("setAccelerometerY", u"int32:12"_s, u"12"_s, {{u"accelerometerY"_s, 12}});
    row("setAccelerometerZ", u"int32:13"_s, u"13"_s, {{u"accelerometerZ"_s, 13}});
    row("setAlsValue", u"int32:2500"_s, u"2500"_s, {{u"als"_s, 2500}});
    row("setGyroscopeValues",
        u"double:0.5 double:-1.25 double:1.14592"_s,
        u"0.5|-1.25|1.14592"_s,
        {{u"gyroscopeX"_s, 0.5}, {u"gyroscopeY"_s, -1.25}, {u"gyroscopeZ"_s, 1.14592}});
    row("setGyroscopeX", u"double:2.5"_s, u"2.5"_s, {{u"gyroscopeX"_s, 2.5}});
    row("setGyroscopeY", u"double:3.5"_s, u"3.5"_s, {{u"gyroscopeY"_s, 3.5}});
    row("setGyroscopeZ", u"double:4.5"_s, u"4.5"_s, {{u"gyroscopeZ"_s, 4.5}});
    row("setMagnetometerValues",
        u"double:4.3e-05 double:0 double:-1e-06"_s,
        u"4.3e-05|0|-1e-06"_s,
        {{u"magnetometerX"_s, 4.3e-05}, {u"magnetometerY"_s, 0.0}, {u"magnetometerZ"_s, -1e-06}});
    row("setMagnetometerX", u"double:1e-05"_s, u"1e-05"_s, {{u"magnetometerX"_s, 1e-05}});
    row("setMagnetometerY", u"double:2e-05"_s, u"2e-05"_s, {{u"magnetometerY"_s, 2e-05}});
    row("setMagnetometerZ", u"double:3e-05"_s, u"3e-05"_s, {{u"magnetometerZ"_s, 3e-05}});
    row("setMagnetometerCalibrationLevel", u"int32:2"_s, u"2"_s, {{u"magnetometerCalibrationLevel"_s, 2}});
    row("setProximitySensorValue", u"int32:10"_s, u"10"_s, {{u"proximity"_s, 10}});
    row("setTapSensorValue", u"int32:-1"_s, u"-1"_s, {{u"tap"_s, -1}});
    row("disableSensor",
        u"string:tap"_s,
        u"tap"_s,
        {{u"enabledSensors"_s,
          QStringList{
              u"accelerometer"_s,
              u"als"_s,
              u"compass"_s,
              u"gyroscope"_s,
              u"magnetometer"_s,
              u"orientation"_s,
              u"proximity"_s}}});
    row("enableSensor",
        u"string:tap"_s,
        u"tap"_s,
        {{u"enabledSensors"_s,
          QStringList{
              u"accelerometer"_s,
              u"als"_s,
              u"compass"_s,
              u"gyroscope"_s,
              u"magnetometer"_s,
              u"orientation"_s,
              u"proximity"_s,
              u"tap"_s}}});
}

void tst_Invoker::callsSensorMethods()
{
    QFETCH(QString, method);
    QFETCH(QString, arguments);
    QFETCH(QString, replyArguments);
    QFETCH(QVariantMap, state);

    Client client;
    QCOMPARE(client.ask(request(sensorService, method, arguments)), u"%1:%2:::"_s.arg(method, replyArguments));
    for (const auto &[name, value] : state.asKeyValueRange())
        QCOMPARE(stateOf(sensorService, name), value);
}

void tst_Invoker::callsPositionMethods_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("replyArguments");
    QTest::addColumn<QVariantMap>("state");

    const auto row = [](const char *method, const QString &arguments, const QString &texts, const QVariantMap &state) {
        QTest::newRow(method) << QString::fromLatin1(method) << arguments << texts << state;
    };
    row("setPosition",
        u"double:59.9386300 double:-30.3141300 double:-12.50"_s,
        u"59.9386300|-30.3141300|-12.50"_s,
        {{u"latitude"_s, 59.93863}, {u"longitude"_s, -30.31413}, {u"altitude"_s, -12.5}});
    row("setLatitude", u"double:-33.8688000"_s, u"-33.8688000"_s, {{u"latitude"_s, -33.8688}});
    row("setLongitude", u"double:151.2093000"_s, u"151.2093000"_s, {{u"longitude"_s, 151.2093}});
    row("setAltitude", u"double:58.00"_s, u"58.00"_s, {{u"altitude"_s, 58.0}});
    row("setTrackLooped", u"boolean:1"_s, u"1"_s, {{u"trackLooped"_s, true}});
    row("setTrackIntervalMode", u"boolean:1"_s, u"1"_s, {{u"trackIntervalMode"_s, true}});
    row("setTrackSpeed", u"int32:3"_s, u"3"_s, {{u"trackSpeed"_s, 3}});
    row("loadTrack",
        u"array:array:double:1,2,3,0;4,5,6,60000;7,8,9,60000"_s,
        u"1,2,3,0;4,5,6,60000;7,8,9,60000"_s,
        {{u"trackLength"_s, 3}, {u"trackIndex"_s, 0}, {u"trackState"_s, u"stopped"_s}});
    row("goToPositionOnTrack",
        u"int32:1"_s,
        u"1"_s,
        {{u"trackIndex"_s, 1}, {u"latitude"_s, 4.0}, {u"longitude"_s, 5.0}, {u"altitude"_s, 6.0}});
    row("startTrack", {}, {}, {{u"trackState"_s, u"playing"_s}});
    row("pauseTrack", {}, {}, {{u"trackState"_s, u"paused"_s}, {u"trackIndex"_s, 1}});
    row("stopTrack", {}, {}, {{u"trackState"_s, u"stopped"_s}, {u"trackIndex"_s, 0}});
}

void tst_Invoker::callsPositionMethods()
{
    QFETCH(QString, method);
    QFETCH(QString, arguments);
    QFETCH(QString, replyArguments);
    QFETCH(QVariantMap, state);

    Client client;
    QCOMPARE(client.ask(request(positionService, method, arguments)), u"%1:%2:::"_s.arg(method, replyArguments));
    for (const auto &[name, value] : state.asKeyValueRange())
        QCOMPARE(stateOf(positionService, name), value);
}

void tst_Invoker::answersEnabled()
{
    Client client;
    client.ask(request(sensorService, u"disableSensor"_s, u"string:compass"_s));
    QCOMPARE(client.ask(request(sensorService, u"enabled"_s, u"string:compass"_s)), u"enabled:compass:false::"_s);
    client.ask(request(sensorService, u"enableSensor"_s, u"string:compass"_s));
    QCOMPARE(client.ask(request(sensorService, u"enabled"_s, u"string:compass"_s)), u"enabled:compass:true::"_s);
}

class PropertyListener : public QObject
{
    Q_OBJECT

public:
    bool listenTo(const QString &service)
    {
        return QDBusConnection::systemBus().connect(
            service,
            objectPath(service),
            u"org.freedesktop.DBus.Properties"_s,
            u"PropertiesChanged"_s,
            this,
            SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    }

    QVariantMap last;
    QList<QVariantMap> changes;

public Q_SLOTS:
    void onPropertiesChanged(const QString &, const QVariantMap &changed, const QStringList &)
    {
        last.insert(changed);
        changes.append(changed);
    }
};

void tst_Invoker::announcesChanges()
{
    PropertyListener listener;
    QVERIFY(listener.listenTo(sensorService));
    Client client;
    client.ask(request(sensorService, u"setAlsValue"_s, u"int32:77"_s));
    QTRY_COMPARE_WITH_TIMEOUT(listener.last[u"als"_s], QVariant(77), deadline);
}

void tst_Invoker::playsTracks()
{
    Client client;
    client.ask(request(positionService, u"setTrackLooped"_s, u"boolean:0"_s));
    client.ask(request(positionService, u"setTrackIntervalMode"_s, u"boolean:0"_s));
    client.ask(request(positionService, u"setTrackSpeed"_s, u"int32:2"_s));
    client.ask(request(positionService, u"loadTrack"_s, u"array:array:double:1,2,3,0;4,5,6,20;7,8,9,20"_s));
    QCOMPARE(client.ask(request(positionService, u"startTrack"_s)), u"startTrack::::"_s);
    QTRY_COMPARE_WITH_TIMEOUT(stateOf(positionService, u"trackIndex"_s), QVariant(2), deadline);
    QCOMPARE(stateOf(positionService, u"latitude"_s), QVariant(7.0));
    QCOMPARE(stateOf(positionService, u"trackState"_s), QVariant(u"stopped"_s));
}

// Whoever follows the position on the bus hears of every point that is passed, not only of calls.
void tst_Invoker::announcesThePositionsOfAPlayingTrack()
{
    PropertyListener listener;
    QVERIFY(listener.listenTo(positionService));
    Client client;
    client.ask(request(positionService, u"setTrackLooped"_s, u"boolean:0"_s));
    client.ask(request(positionService, u"setTrackIntervalMode"_s, u"boolean:0"_s));
    client.ask(request(positionService, u"setTrackSpeed"_s, u"int32:1"_s));
    client.ask(request(positionService, u"loadTrack"_s, u"array:array:double:10,11,12,0;20,21,22,20;30,31,32,20"_s));
    client.ask(request(positionService, u"startTrack"_s));
    QTRY_COMPARE_WITH_TIMEOUT(listener.last[u"trackIndex"_s], QVariant(2), deadline);
    QCOMPARE(listener.last[u"latitude"_s], QVariant(30.0));
    QCOMPARE(listener.last[u"longitude"_s], QVariant(31.0));
    QCOMPARE(listener.last[u"altitude"_s], QVariant(32.0));
    QTRY_COMPARE_WITH_TIMEOUT(listener.last[u"trackState"_s], QVariant(u"stopped"_s), deadline);
}

void tst_Invoker::carriesLongTracks()
{
    constexpr int points = 500'000;
    QString track = u"array:array:double:"_s;
    for (int i = 0; i < points; ++i)
        track += u"%1%2,30.3141300,12.50,1000"_s.arg(i ? u";"_s : QString()).arg(i % 90);
    Client client;
    const QString reply = client.ask(request(positionService, u"loadTrack"_s, track));
    QVERIFY2(reply.startsWith(u"loadTrack:0,30.3141300,12.50,1000;"_s), qPrintable(reply.left(200)));
    QVERIFY2(reply.endsWith(u":::"_s), qPrintable(reply.right(200)));
    QVERIFY(reply.size() < 1000);
    QCOMPARE(stateOf(positionService, u"trackLength"_s), QVariant(points));
}

void tst_Invoker::reportsErrors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("error");

    const QString invalidRequest = u"ru.kelo.RemoteDBusInvoker.Error.InvalidRequest"_s;
    const QString invalidArguments = u"ru.kelo.RemoteDBusInvoker.Error.InvalidArguments"_s;
    const QString unknownMethod = u"org.freedesktop.DBus.Error.UnknownMethod"_s;
    const QString positionError = positionService + u".Error."_s;
    const QString als = u"setAlsValue"_s;
    const QString object = objectPath(sensorService);

    QTest::newRow("an empty frame") << QString() << QString() << invalidRequest;
    QTest::newRow("too few fields") << u"system a.b /"_s << QString() << invalidRequest;
    QTest::newRow("no blank after the method")
        << request(positionService, u"stopTrack"_s).trimmed() << QString() << invalidRequest;
    QTest::newRow("an invalid path") << u"system a.b path a.b m "_s << QString() << invalidRequest;
    QTest::newRow("an invalid interface") << u"system a.b / a m "_s << QString() << invalidRequest;
    QTest::newRow("a bad number") << request(sensorService, als, u"int32:x"_s) << als << invalidArguments;
    QTest::newRow("a type that is unknown") << request(sensorService, als, u"int16:1"_s) << als << invalidArguments;
    QTest::newRow("an unknown bus")
        << QString(request(sensorService, als, u"int32:1"_s)).replace(u"system"_s, u"town"_s) << als
        << u"ru.kelo.RemoteDBusInvoker.Error.UnknownBus"_s;
    QTest::newRow("a session bus that is not there")
        << QString(request(sensorService, als, u"int32:1"_s)).replace(u"system"_s, u"session"_s) << als
        << u"ru.kelo.RemoteDBusInvoker.Error.BusUnavailable"_s;
    QTest::newRow("an unknown service") << u"system ru.kelo.Nobody /ru ru.kelo.Nobody m "_s << u"m"_s
                                        << u"org.freedesktop.DBus.Error.ServiceUnknown"_s;
    QTest::newRow("an unknown object") << u"system %1 /nowhere %1 m "_s.arg(sensorService) << u"m"_s
                                       << u"org.freedesktop.DBus.Error.UnknownObject"_s;
    QTest::newRow("an unknown interface")
        << u"system %1 %2 ru.kelo.Other setAlsValue int32:1"_s.arg(sensorService, object) << als
        << u"org.freedesktop.DBus.Error.UnknownInterface"_s;
    QTest::newRow("an unknown method") << request(sensorService, u"setNothing"_s) << u"setNothing"_s << unknownMethod;
    QTest::newRow("a wrong type") << request(sensorService, als, u"double:1"_s) << als << unknownMethod;
    QTest::newRow("too many arguments") << request(sensorService, als, u"int32:1 int32:2"_s) << als << unknownMethod;
    QTest::newRow("too few arguments") << request(sensorService, als) << als << unknownMethod;
    QTest::newRow("an unknown sensor") << request(sensorService, u"enabled"_s, u"string:nose"_s) << u"enabled"_s
                                       << sensorService + u".Error.UnknownSensor"_s;
    QTest::newRow("a speed of zero") << request(positionService, u"setTrackSpeed"_s, u"int32:0"_s) << u"setTrackSpeed"_s
                                     << positionError + u"InvalidArguments"_s;
    QTest::newRow("a point beyond the track") << request(positionService, u"goToPositionOnTrack"_s, u"int32:1000000"_s)
                                              << u"goToPositionOnTrack"_s << positionError + u"InvalidArguments"_s;
    QTest::newRow("a point before the track") << request(positionService, u"goToPositionOnTrack"_s, u"int32:-1"_s)
                                              << u"goToPositionOnTrack"_s << positionError + u"InvalidArguments"_s;
    QTest::newRow("a point of three numbers") << request(positionService, u"loadTrack"_s, u"array:array:double:1,2,3"_s)
                                              << u"loadTrack"_s << positionError + u"InvalidArguments"_s;
}

void tst_Invoker::reportsErrors()
{
    QFETCH(QString, text);
    QFETCH(QString, item);
    QFETCH(QString, error);

    Client client;
    const QStringList fields = client.ask(text).split(u':');
    QCOMPARE(fields.size(), 5);
    QCOMPARE(fields[0], item);
    QCOMPARE(fields[2], QString());
    QCOMPARE(fields[3], error);
    QVERIFY(!fields[4].isEmpty());

    // The connection has come to no harm.
    QCOMPARE(client.ask(request(sensorService, u"setAlsValue"_s, u"int32:1"_s)), u"setAlsValue:1:::"_s);
}

void tst_Invoker::refusesBinaryFrames()
{
    Client client;
    const QString reply = client.reply(
        [&] { client.socket().sendBinaryMessage(request(sensorService, u"setAlsValue"_s, u"int32:1"_s).toUtf8()); });
    QCOMPARE(reply, u":::ru.kelo.RemoteDBusInvoker.Error.InvalidRequest:A request is a text frame"_s);
    QVERIFY(client.isConnected());
}

void tst_Invoker::closesOnInvalidUtf8()
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, quint16(invokerUrl().port()));
    QVERIFY(socket.waitForConnected(deadline));
    socket.write("GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                 "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\nSec-WebSocket-Version: 13\r\n\r\n");
    QTRY_VERIFY_WITH_TIMEOUT(socket.peek(4096).contains("\r\n\r\n"), deadline);
    QVERIFY(socket.readAll().startsWith("HTTP/1.1 101"));

    // A final text frame of two bytes, masked with zeros, that are no UTF-8.
    socket.write(QByteArray("\x81\x82\0\0\0\0\xff\xfe", 8));
    // The protocol asks for a close frame with the code 1007.
    QTRY_VERIFY_WITH_TIMEOUT(socket.bytesAvailable() >= 4, deadline);
    const QByteArray frame = socket.readAll();
    QCOMPARE(quint8(frame[0]), quint8(0x88));
    QCOMPARE(quint8(frame[2]) * 256 + quint8(frame[3]), 1007);

    Client client;
    QCOMPARE(client.ask(request(sensorService, u"setAlsValue"_s, u"int32:1"_s)), u"setAlsValue:1:::"_s);
}

void tst_Invoker::answersTenMegabytes()
{
    constexpr qsizetype size = 10 * 1024 * 1024;
    Client client;
    for (const QChar filler : {QChar(u'a'), QChar(u' '), QChar(u':')}) {
        const QStringList fields = client.ask(QString(size, filler)).split(u':');
        QCOMPARE(fields.size(), 5);
        QCOMPARE(fields[3], u"ru.kelo.RemoteDBusInvoker.Error.InvalidRequest"_s);
    }
    const QString reply = client.ask(request(sensorService, u"enableSensor"_s, u"string:"_s + QString(size, u':')));
    QCOMPARE(reply.split(u':').size(), 5);
    QCOMPARE(reply.split(u':')[3], sensorService + u".Error.UnknownSensor"_s);
}

void tst_Invoker::refusesOriginsOfTheWeb()
{
    QWebSocket page(u"https://example.org"_s);
    QSignalSpy disconnected(&page, &QWebSocket::disconnected);
    QSignalSpy connected(&page, &QWebSocket::connected);
    page.open(invokerUrl());
    QVERIFY(disconnected.wait(deadline));
    QCOMPARE(connected.count(), 0);

    QWebSocket local(u"http://localhost:1234"_s);
    QSignalSpy localConnected(&local, &QWebSocket::connected);
    local.open(invokerUrl());
    QVERIFY(localConnected.wait(deadline));
}

void tst_Invoker::logsFrames()
{
    const QString text = u"not a request: \"quoted\", back\\slash,\nline, Кириллица "_s;
    QString reply;
    {
        Client client;
        reply = client.ask(text);
    }
    QVERIFY(logHas(u"text"_s, text));
    QVERIFY(logHas(u"reply"_s, reply));
    const int client = logEntries().constLast()["client"_L1].toInt();
    const auto countOf = [client](const QString &event) {
        const QList<QJsonObject> entries = logEntries();
        return std::ranges::count_if(entries, [&](const QJsonObject &entry) {
            return entry["client"_L1].toInt() == client && entry["event"_L1].toString() == event;
        });
    };
    QCOMPARE(countOf(u"connected"_s), 1);
    QTRY_COMPARE_WITH_TIMEOUT(countOf(u"disconnected"_s), 1, deadline);
}

void tst_Invoker::survivesADisconnectionDuringACall()
{
    for (int i = 0; i < 20; ++i) {
        Client client;
        for (int call = 0; call < 50; ++call)
            client.socket().sendTextMessage(
                request(sensorService, u"setProximitySensorValue"_s, u"int32:%1"_s.arg(call)));
        client.socket().flush();
        client.socket().abort();
    }
    Client client;
    QCOMPARE(client.ask(request(sensorService, u"setAlsValue"_s, u"int32:5"_s)), u"setAlsValue:5:::"_s);
}

void tst_Invoker::survivesGarbageInsteadOfAHandshake()
{
    for (const QByteArray &garbage :
         {QByteArray("\0\xff\x01\x02", 4), QByteArray("GET / HTTP/1.1\r\n\r\n"), QByteArray(1024 * 1024, 'x')}) {
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.1"_s, quint16(invokerUrl().port()));
        QVERIFY(socket.waitForConnected(deadline));
        socket.write(garbage);
        socket.flush();
        socket.abort();
    }
    Client client;
    QCOMPARE(client.ask(request(sensorService, u"setAlsValue"_s, u"int32:6"_s)), u"setAlsValue:6:::"_s);
}

void tst_Invoker::servesManyClients()
{
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < 50; ++i)
        clients.push_back(std::make_unique<Client>());
    QStringList replies;
    for (const auto &client : clients) {
        QVERIFY(client->isConnected());
        connect(&client->socket(), &QWebSocket::textMessageReceived, this, [&](const QString &text) {
            replies.append(text);
        });
    }
    QStringList expected;
    for (int i = 0; i < 50; ++i) {
        clients[i]->socket().sendTextMessage(request(sensorService, u"setAlsValue"_s, u"int32:%1"_s.arg(i)));
        expected.append(u"setAlsValue:%1:::"_s.arg(i));
    }
    QTRY_COMPARE_WITH_TIMEOUT(replies.size(), 50, deadline);
    replies.sort();
    expected.sort();
    QCOMPARE(replies, expected);
}

void tst_Invoker::answersBurstsInOrder()
{
    constexpr int count = 2000;
    Client client;
    QStringList replies;
    connect(
        &client.socket(), &QWebSocket::textMessageReceived, this, [&](const QString &text) { replies.append(text); });
    QStringList expected;
    for (int i = 0; i < count; ++i) {
        client.socket().sendTextMessage(request(sensorService, u"setAccelerometerX"_s, u"int32:%1"_s.arg(i)));
        expected.append(u"setAccelerometerX:%1:::"_s.arg(i));
    }
    QTRY_COMPARE_WITH_TIMEOUT(replies.size(), count, deadline);
    QCOMPARE(replies, expected);
    QCOMPARE(stateOf(sensorService, u"accelerometerX"_s), QVariant(count - 1));
}

// Ends the position service for good, so it stands last.
void tst_Invoker::answersWhenTheServiceHasDied()
{
    QDBusConnectionInterface *bus = QDBusConnection::systemBus().interface();
    const QDBusReply<uint> process = bus->servicePid(positionService);
    QVERIFY(process.isValid());

    // The call reaches a stopped process, and is open when that dies.
    QCOMPARE(::kill(pid_t(process.value()), SIGSTOP), 0);
    Client client;
    QSignalSpy replies(&client.socket(), &QWebSocket::textMessageReceived);
    client.socket().sendTextMessage(request(positionService, u"stopTrack"_s));
    client.socket().sendTextMessage(request(sensorService, u"setAlsValue"_s, u"int32:8"_s));
    QVERIFY(replies.wait(deadline));
    QCOMPARE(replies.takeFirst().constFirst().toString(), u"setAlsValue:8:::"_s);

    QCOMPARE(::kill(pid_t(process.value()), SIGKILL), 0);
    QVERIFY(replies.count() > 0 || replies.wait(deadline));
    const QStringList fields = replies.constFirst().constFirst().toString().split(u':');
    QCOMPARE(fields.size(), 5);
    QCOMPARE(fields[0], u"stopTrack"_s);
    QCOMPARE(fields[3], u"org.freedesktop.DBus.Error.NoReply"_s);

    const QString reply = client.ask(request(positionService, u"stopTrack"_s));
    QCOMPARE(reply.split(u':').value(3), u"org.freedesktop.DBus.Error.ServiceUnknown"_s);
}

QTEST_GUILESS_MAIN(tst_Invoker)

#include "tst_invoker.moc"
