// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmealog.h"

#include <QElapsedTimer>
#include <QTest>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace EmulationManagement::Internal;

// The rules themselves are tested where the script is at hand that says them too; here is what a script does not
// promise.
class TestNmeaLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsPoints();
    void saysWhatIsWrong();
    void isStopped();
    void decidesHostileLinesSoon_data();
    void decidesHostileLinesSoon();
    void readsHostileFilesSoon_data();
    void readsHostileFilesSoon();
    void keepsNoMoreMemoryThanItsPointsNeed();
};

static const QString gga = u"$GPGGA,123519.25,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47"_s;
static const QString rmc = u"$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,310524,003.1,W*6A"_s;

void TestNmeaLog::readsPoints()
{
    const NmeaLog log = parseNmeaLog(gga + u'\n' + rmc + u'\n' + gga);
    const auto *points = std::get_if<QList<TrackPoint>>(&log);
    QVERIFY(points);
    TrackPoint expected;
    expected.latitude = 48.1173;
    expected.longitude = 11.5166667;
    expected.altitude = 545.4;
    expected.format = TrackPoint::Format::Gga;
    QCOMPARE(points->size(), 2);
    QVERIFY(points->at(0) == expected);
    expected.index = 1;
    QVERIFY(points->at(1) == expected);
    QCOMPARE(points->at(1).formatName(), u"$GPGGA"_s);
    QCOMPARE(points->at(1).timeString(), u"00:00:00.0"_s);
}

void TestNmeaLog::saysWhatIsWrong()
{
    const auto errorOf = [](const QString &text) {
        const NmeaLog log = parseNmeaLog(text);
        const auto *error = std::get_if<NmeaError>(&log);
        return error ? *error : NmeaError{.message = u"none"_s};
    };
    NmeaError error = errorOf({});
    QCOMPARE(error.kind, NmeaError::Kind::Syntax);
    QCOMPARE(error.message, u"NMEA file is empty"_s);
    QCOMPARE(error.incorrectLine, 0);
    error = errorOf(gga + u"\n\n$GPGGA"_s);
    QCOMPARE(error.kind, NmeaError::Kind::Syntax);
    QCOMPARE(error.message, u"Incorrect NMEA file"_s);
    QCOMPARE(error.incorrectLine, 2);
    error = errorOf(u"one\rtwo"_s);
    QCOMPARE(error.kind, NmeaError::Kind::Syntax);
    QCOMPARE(
        error.message, u"NMEA file has incorrect points format.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL."_s);
    QCOMPARE(error.incorrectLine, 2);
    error = errorOf(u"\r\n"_s);
    QCOMPARE(error.kind, NmeaError::Kind::Type);
    QCOMPARE(error.incorrectLine, 0);
}

void TestNmeaLog::isStopped()
{
    const QString text = (gga + u'\n').repeated(5000);
    std::stop_source stop;
    const NmeaLog whole = parseNmeaLog(text, currentTime(), stop.get_token());
    QCOMPARE(std::get<QList<TrackPoint>>(whole).size(), 5000);
    stop.request_stop();
    const NmeaLog stopped = parseNmeaLog(text, currentTime(), stop.get_token());
    QCOMPARE(std::get<QList<TrackPoint>>(stopped).size(), 0);
}

// Each of these keeps a regular expression engine busy for longer than anybody waits, or fills its memory.
void TestNmeaLog::decidesHostileLinesSoon_data()
{
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("middle");
    QTest::addColumn<QString>("end");
    QTest::addColumn<bool>("correct");

    const QString rmcStart = u"$GPRMC,123519,A,"_s;
    const QString position = u"4807.038,N,01131.000,E,"_s;
    const QString ggaStart = u"$GPGGA,123519,"_s + position;
    QTest::newRow("RMC of commas") << rmcStart << u","_s << QString() << false;
    QTest::newRow("RMC of dates") << rmcStart << u"310524,"_s << QString() << false;
    QTest::newRow("RMC of positions") << rmcStart << position << QString() << false;
    QTest::newRow("RMC of positions and a date") << rmcStart << position << u",,310524,,"_s << true;
    QTest::newRow("RMC of half positions") << rmcStart << u"4807.038,N,"_s << QString() << false;
    QTest::newRow("RMC of latitudes") << rmcStart << u"4807.038,"_s << QString() << false;
    QTest::newRow("GGA of altitudes") << ggaStart << u"545.4,"_s << QString() << true;
    QTest::newRow("GGA of commas") << ggaStart << u","_s << QString() << false;
    QTest::newRow("a long latitude") << u"$GPWPL,"_s << u"1"_s << u".0,N,0.0,E,"_s << true;
    QTest::newRow("a long latitude without a point") << u"$GPWPL,"_s << u"1"_s << QString() << false;
    QTest::newRow("a long time") << u"$GPGLL,"_s + position + u"000000."_s << u"1"_s << QString() << true;
    QTest::newRow("a long name") << u"$GPWPL,"_s + position << u"\u0001\u2027\u202a"_s << QString() << true;
    QTest::newRow("a long unknown sentence") << u"$GPGSA"_s << u","_s << QString() << false;
}

void TestNmeaLog::decidesHostileLinesSoon()
{
    QFETCH(const QString, begin);
    QFETCH(const QString, middle);
    QFETCH(const QString, end);
    QFETCH(const bool, correct);

    const QString line = begin + middle.repeated(50'000'000 / middle.size()) + end;
    QElapsedTimer timer;
    timer.start();
    const NmeaLog log = parseNmeaLog(line);
    QCOMPARE_LT(timer.durationElapsed(), 30s); // well below a second, but ten with sanitizers on a busy machine
    QCOMPARE(std::holds_alternative<QList<TrackPoint>>(log), correct);
}

void TestNmeaLog::readsHostileFilesSoon_data()
{
    QTest::addColumn<QString>("text");

    constexpr qsizetype lines = 200'000;
    QTest::newRow("only line feeds") << QString(20'000'000, u'\n');
    QTest::newRow("only carriage returns") << QString(20'000'000, u'\r');
    QTest::newRow("short lines, no line feed") << u"a\r"_s.repeated(10'000'000);
    QTest::newRow("short lines, no carriage return") << u"a\n"_s.repeated(10'000'000);
    QTest::newRow("short lines, one carriage return at the end") << u"a\n"_s.repeated(10'000'000) + u'\r';
    QTest::newRow("separators in each line") << u"\u2028\n\u2029\r"_s.repeated(5'000'000);
    QString dates; // never the same day twice in a row
    for (int i = 0; i < lines; ++i) {
        dates +=
            u"$GPRMC,000000,A,4807.038,N,01131.000,E,022.4,084.4,%1,,\n"_s.arg(i * 3701 % 999'999, 6, 10, QChar(u'0'));
    }
    QTest::newRow("dates without order") << dates;
}

void TestNmeaLog::readsHostileFilesSoon()
{
    QFETCH(const QString, text);

    QElapsedTimer timer;
    timer.start();
    const NmeaLog log = parseNmeaLog(text);
    QCOMPARE_LT(timer.durationElapsed(), 10s);
    if (text.startsWith(u'$'))
        QCOMPARE(std::get<QList<TrackPoint>>(log).size(), 200'000);
    else
        QVERIFY(std::holds_alternative<NmeaError>(log));
}

void TestNmeaLog::keepsNoMoreMemoryThanItsPointsNeed()
{
    QCOMPARE_LE(sizeof(TrackPoint), 48u);
    const QString text = gga + u'\n' + (rmc + u'\n').repeated(9999);
    const NmeaLog log = parseNmeaLog(text);
    const auto *points = std::get_if<QList<TrackPoint>>(&log);
    QVERIFY(points);
    QCOMPARE(points->size(), 1);
    QCOMPARE_LE(points->capacity(), 10);
}

QTEST_APPLESS_MAIN(TestNmeaLog)

#include "tst_nmealog.moc"
