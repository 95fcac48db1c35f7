// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/tracktablemodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace {

QList<TrackPoint> points(int count, int first = 0)
{
    QList<TrackPoint> list;
    for (int i = first; i < first + count; ++i) {
        TrackPoint point;
        point.latitude = 48.1173 + i;
        point.longitude = -11.5166667;
        point.altitude = 1250.5;
        point.time = 1000.0 * i;
        point.interval = 1000;
        point.index = i;
        list.append(point);
    }
    return list;
}

TrackPoint pointAt(double altitude)
{
    TrackPoint point;
    point.altitude = altitude;
    return point;
}

QStringList cells(const TrackTableModel &model, int row)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

} // namespace

class TestTrackTableModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst();
    void appendsRows();
    void clears();
    void hasTitles();
    void knowsItsBounds();
    void rowsCarryTheTitles();
    void pointsForThePlayer();
    void altitudesForThePlayer_data();
    void altitudesForThePlayer();
    void textsAndNumbersOfThePlayerAgree();
};

void TestTrackTableModel::isEmptyAtFirst()
{
    TrackTableModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 5);
    QSignalSpy changes(&model, &TrackTableModel::rowCountChanged);
    model.clear();
    model.appendPoints({});
    QCOMPARE(changes.size(), 0);
}

void TestTrackTableModel::appendsRows()
{
    TrackTableModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy changes(&model, &TrackTableModel::rowCountChanged);
    model.appendPoints(points(2));
    model.appendPoints(points(1, 2));
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.property("rowCount"), 3);
    QCOMPARE(changes.size(), 2);
    QCOMPARE(cells(model, 0), QStringList({u"0"_s, u"00:00:00.0"_s, u"48.1173000"_s, u"-11.5166667"_s, u"1,250.50"_s}));
    QCOMPARE(cells(model, 2), QStringList({u"2"_s, u"00:00:02.0"_s, u"50.1173000"_s, u"-11.5166667"_s, u"1,250.50"_s}));
}

void TestTrackTableModel::clears()
{
    TrackTableModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.appendPoints(points(3));
    QSignalSpy changes(&model, &TrackTableModel::rowCountChanged);
    model.clear();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(changes.size(), 1);
}

void TestTrackTableModel::hasTitles()
{
    const TrackTableModel model;
    const QStringList titles{u"No."_s, u"Time"_s, u"Latitude"_s, u"Longitude"_s, u"Altitude"_s};
    QCOMPARE(model.columnTitles(), titles);
    for (int column = 0; column < titles.size(); ++column)
        QCOMPARE(model.headerData(column, Qt::Horizontal), titles.at(column));
}

void TestTrackTableModel::knowsItsBounds()
{
    TrackTableModel model;
    model.appendPoints(points(1));
    for (const int column : {-1, 5})
        QCOMPARE(model.headerData(column, Qt::Horizontal).toString(), QString());
    QVERIFY(!model.headerData(0, Qt::Vertical).isValid());
    QVERIFY(!model.data({}).isValid());
    QVERIFY(!model.data(model.index(0, 0), Qt::DecorationRole).isValid());
    for (const int row : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QVERIFY(model.getRow(row).isEmpty());
        QCOMPARE(model.playerTrackPoint(row).latitude(), u"0.0000000"_s);
    }
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
}

void TestTrackTableModel::rowsCarryTheTitles()
{
    TrackTableModel model;
    model.appendPoints(points(3));
    const QVariantMap row{
        {u"No."_s, 1},
        {u"Time"_s, u"00:00:01.0"_s},
        {u"Latitude"_s, u"49.1173000"_s},
        {u"Longitude"_s, u"-11.5166667"_s},
        {u"Altitude"_s, u"1,250.50"_s},
    };
    QCOMPARE(model.getRow(1), row);
    QCOMPARE(model.firstRows(2), QVariantList({model.getRow(0), row}));
    QCOMPARE(model.firstRows(9).size(), 3);
    QCOMPARE(model.firstRows(-1).size(), 0);
}

void TestTrackTableModel::pointsForThePlayer()
{
    TrackTableModel model;
    model.appendPoints(points(2));
    const QVariantList list = TrackTableModel::playerTrackPoints(points(2));
    QCOMPARE(list.size(), 2);
    const auto point = list.at(1).value<PlayerTrackPoint>();
    QCOMPARE(point.latitude(), u"49.1173000"_s);
    QCOMPARE(point.longitude(), u"-11.5166667"_s);
    QCOMPARE(point.altitude(), u"1,250.50"_s);
    QCOMPARE(point.interval(), 1000);
    QCOMPARE(model.playerTrackPoint(1).latitude(), point.latitude());
}

void TestTrackTableModel::altitudesForThePlayer_data()
{
    QTest::addColumn<double>("altitude");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("usual") << 12.5 << u"12.50"_s << 12.5;
    QTest::newRow("below the sea") << -12.5 << u"-12.50"_s << -12.5;
    QTest::newRow("the shortcut's last") << 998.99 << u"998.99"_s << 998.99;
    QTest::newRow("behind it") << 999.5 << u"999.50"_s << 999.5;
    QTest::newRow("the last without a group") << -999.99 << u"-999.99"_s << -999.99;
    QTest::newRow("rounded into a group") << 999.996 << u"1,000.00"_s << 0.0;
    QTest::newRow("the first with a group") << 1000.0 << u"1,000.00"_s << 0.0;
    QTest::newRow("a negative group") << -1000.0 << u"-1,000.00"_s << 0.0;
    QTest::newRow("huge") << 1e20 << u"100,000,000,000,000,000,000.00"_s << 0.0;
}

void TestTrackTableModel::altitudesForThePlayer()
{
    QFETCH(const double, altitude);
    const PlayerTrackPoint point(pointAt(altitude));
    QTEST(point.altitude(), "text");
    QTEST(point.altitudeNumber(), "number");
}

// Where the text is not made at all, its number must be the same.
void TestTrackTableModel::textsAndNumbersOfThePlayerAgree()
{
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> degrees(-200, 200);
    std::uniform_real_distribution<double> metres(-1100, 1100);
    for (int i = 0; i < 20'000; ++i) {
        TrackPoint point;
        point.latitude = std::round(degrees(random) * 1e7) / 1e7;
        point.longitude = std::round(degrees(random) * 1e7) / 1e7;
        point.altitude = std::round(metres(random) * 1e2) / 1e2;
        const PlayerTrackPoint player(point);
        QCOMPARE(player.latitudeNumber(), player.latitude().toDouble());
        QCOMPARE(player.longitudeNumber(), player.longitude().toDouble());
        QCOMPARE(player.altitudeNumber(), player.altitude().toDouble());
    }
}

QTEST_GUILESS_MAIN(TestTrackTableModel)

#include "tst_tracktablemodel.moc"
