// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmeatime.h"

#include <QDateTime>
#include <QTest>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

// The points in time are written in UTC, so that no conversion of ours says what is right.
class TestNmeaTime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsTheZone_data();
    void knowsTheZone();
    void measuresRealTime_data();
    void measuresRealTime();
    void countsYearsInLocalTime();
    void cleanup();

private:
    static void setZone(const QByteArray &zone);
};

static qint64 utc(const QString &text)
{
    return QDateTime::fromString(text + u'Z', Qt::ISODateWithMs).toMSecsSinceEpoch();
}

void TestNmeaTime::setZone(const QByteArray &zone)
{
    qputenv("TZ", zone);
    tzset();
}

void TestNmeaTime::cleanup()
{
    setZone("UTC");
}

void TestNmeaTime::knowsTheZone_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("expected");

    const QString noon = u"2024-06-15T12:00:00"_s;
    const QByteArray berlin = "Europe/Berlin";
    QTest::newRow("UTC") << "UTC"_ba << noon << QString() << u"010203.5"_s << u"2024-06-15T01:02:03.500"_s;
    QTest::newRow("summer time") << berlin << noon << QString() << u"010203"_s << u"2024-06-14T23:02:03"_s;
    QTest::newRow("winter time") << berlin << noon << u"100124"_s << u"010203"_s << u"2010-02-10T00:02:03"_s;
    QTest::newRow("today is tomorrow in the east")
        << "Asia/Kathmandu"_ba << u"2024-06-15T20:00:00"_s << QString() << u"000000"_s << u"2024-06-15T18:15:00"_s;
    QTest::newRow("today is yesterday in the west")
        << "America/St_Johns"_ba << u"2024-06-15T01:00:00"_s << QString() << u"000000"_s << u"2024-06-14T02:30:00"_s;
    QTest::newRow("before the clocks go forward")
        << berlin << u"2024-03-31T10:00:00"_s << QString() << u"015959"_s << u"2024-03-31T00:59:59"_s;
    QTest::newRow("after the clocks went forward")
        << berlin << u"2024-03-31T10:00:00"_s << QString() << u"030000"_s << u"2024-03-31T01:00:00"_s;
    QTest::newRow("before the clocks go back")
        << berlin << u"2024-10-27T10:00:00"_s << QString() << u"015959"_s << u"2024-10-26T23:59:59"_s;
    QTest::newRow("after the clocks went back")
        << berlin << u"2024-10-27T10:00:00"_s << QString() << u"030000"_s << u"2024-10-27T02:00:00"_s;
    QTest::newRow("summer time of half an hour")
        << "Australia/Lord_Howe"_ba << u"2024-01-15T02:00:00"_s << QString() << u"120000"_s << u"2024-01-15T01:00:00"_s;
    QTest::newRow("winter time of half an hour less")
        << "Australia/Lord_Howe"_ba << u"2024-06-15T02:00:00"_s << QString() << u"120000"_s << u"2024-06-15T01:30:00"_s;
    QTest::newRow("Ramadan") << "Africa/Casablanca"_ba << u"2024-03-20T12:00:00"_s << QString() << u"120000"_s
                             << u"2024-03-20T12:00:00"_s;
    QTest::newRow("after Ramadan") << "Africa/Casablanca"_ba << u"2024-04-20T12:00:00"_s << QString() << u"120000"_s
                                   << u"2024-04-20T11:00:00"_s;
    QTest::newRow("a date of long ago") << berlin << noon << u"310524"_s << u"123519"_s << u"1931-07-01T11:35:19"_s;
}

void TestNmeaTime::knowsTheZone()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QString, now);
    QFETCH(const QString, date);
    QFETCH(const QString, time);
    QFETCH(const QString, expected);

    setZone(zone);
    QCOMPARE(qint64(NmeaClock(double(utc(now))).parseDateFromNmea(date, time, {})), utc(expected));
}

void TestNmeaTime::measuresRealTime_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("seconds");

    const QByteArray berlin = "Europe/Berlin";
    QTest::newRow("a day like any other") << berlin << u"2024-06-15T12:00:00"_s << u"013000"_s << u"033000"_s << 7200;
    QTest::newRow("the clocks go forward") << berlin << u"2024-03-31T12:00:00"_s << u"013000"_s << u"033000"_s << 3600;
    QTest::newRow("the clocks go back") << berlin << u"2024-10-27T12:00:00"_s << u"013000"_s << u"033000"_s << 10800;
    QTest::newRow("the next midnight is 23 hours away")
        << berlin << u"2024-03-31T12:00:00"_s << u"000001"_s << u"000000"_s << 23 * 3600 - 1;
    QTest::newRow("the next midnight is 25 hours away")
        << berlin << u"2024-10-27T12:00:00"_s << u"000001"_s << u"000000"_s << 25 * 3600 - 1;
    QTest::newRow("half an hour forward")
        << "Australia/Lord_Howe"_ba << u"2024-10-06T00:00:00"_s << u"013000"_s << u"033000"_s << 5400;
    QTest::newRow("into the leap day") << berlin << u"2024-02-28T12:00:00"_s << u"235959"_s << u"000001"_s << 2;
    QTest::newRow("into the new year") << berlin << u"2024-12-31T12:00:00"_s << u"235959"_s << u"000001"_s << 2;
}

void TestNmeaTime::measuresRealTime()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QString, now);
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QFETCH(const int, seconds);

    setZone(zone);
    NmeaClock clock(double(utc(now)));
    const double first = clock.parseDateFromNmea({}, before, {});
    QCOMPARE(qint64(clock.parseDateFromNmea({}, after, first) - first), seconds * 1000LL);
}

void TestNmeaTime::countsYearsInLocalTime()
{
    setZone("Asia/Kathmandu");
    NmeaClock lastSecond(double(utc(u"2024-12-31T18:14:59"_s)));
    QCOMPARE(qint64(lastSecond.parseDateFromNmea(u"250024", u"000000", {})), utc(u"1925-01-24T18:30:00"_s));
    NmeaClock firstSecond(double(utc(u"2024-12-31T18:15:00"_s)));
    QCOMPARE(qint64(firstSecond.parseDateFromNmea(u"250024", u"000000", {})), utc(u"2025-01-24T18:15:00"_s));
}

QTEST_APPLESS_MAIN(TestNmeaTime)

#include "tst_nmeatime.moc"
