// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/nmeaparsing.h"

#include <QJSEngine>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

// Takes tracks as C++ code does that scripts call.
class TrackTaker : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void take(const QList<EmulationManagement::Internal::TrackPoint> &points) { track = points; }

    QList<TrackPoint> track;
};

// What the functions answer is tested in QML; here is how tracks go through scripts.
class TestNmeaParsing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void handsOutReadablePoints();
    void passesTracksBackAsTheyAre();
    void pointsAreNotChanged();
    void throwsWhereScriptsCatch();

private:
    std::unique_ptr<QJSEngine> m_engine;
    TrackTaker *m_taker = nullptr;
};

void TestNmeaParsing::init()
{
    m_engine = std::make_unique<QJSEngine>();
    m_taker = new TrackTaker;
    m_engine->globalObject().setProperty(u"NmeaParsing"_s, m_engine->newQObject(new NmeaParsing));
    m_engine->globalObject().setProperty(u"taker"_s, m_engine->newQObject(m_taker));
    m_engine->globalObject().setProperty(
        u"log"_s, u"$GPGGA,123519,4807.038,N,01131.000,W,1,08,0.9,545.4,M,46.9,M,,*47\n"_s.repeated(1000));
}

void TestNmeaParsing::cleanup()
{
    m_engine.reset();
}

void TestNmeaParsing::handsOutReadablePoints()
{
    const QJSValue result = m_engine->evaluate(
        u"const points = NmeaParsing.loadNmeaLog(log);"
        "const point = points[999];"
        "[points.length, point.format, point.latitude, point.longitude, point.altitude, point.index, point.time,"
        " point.interval, point.timeString].join(' ')"_s);
    QCOMPARE(result.toString(), u"1000 $GPGGA 48.1173 -11.5166667 545.4 999 0 0 00:00:00.0"_s);
}

void TestNmeaParsing::passesTracksBackAsTheyAre()
{
    const QJSValue points =
        m_engine->evaluate(u"const points = NmeaParsing.loadNmeaLog(log); taker.take(points); points"_s);
    QVERIFY2(!points.isError(), qPrintable(points.toString()));
    QCOMPARE(m_taker->track.size(), 1000);
    // The very same memory: nothing was converted.
    const auto track = points.toVariant(QJSValue::RetainJSObjects).value<QList<TrackPoint>>();
    QCOMPARE(m_taker->track.constData(), track.constData());
}

void TestNmeaParsing::pointsAreNotChanged()
{
    m_engine->evaluate(u"points = NmeaParsing.loadNmeaLog(log); points[0].latitude = 5; points[0].time = 5;"_s);
    m_engine->evaluate(u"taker.take(points)"_s);
    QCOMPARE(m_taker->track.size(), 1000);
    QCOMPARE(m_taker->track.constFirst().latitude, 48.1173);
    QCOMPARE(m_taker->track.constFirst().time, 0.0);
}

void TestNmeaParsing::throwsWhereScriptsCatch()
{
    const QJSValue error = m_engine->evaluate(u"NmeaParsing.loadNmeaLog(log + '$GPGGA'); 'goes on'"_s);
    QCOMPARE(error.errorType(), QJSValue::SyntaxError);
    QCOMPARE(error.property(u"message"_s).toString(), u"Incorrect NMEA file"_s);
    QCOMPARE(error.property(u"incorrectLine"_s).toInt(), 1001);
    const QJSValue caught = m_engine->evaluate(
        u"let result; try { NmeaParsing.loadNmeaLog('\\n'); } catch (e) { result = [e.name, e.incorrectLine].join(); } result"_s);
    QCOMPARE(caught.toString(), u"TypeError,"_s);
}

QTEST_GUILESS_MAIN(TestNmeaParsing)

#include "tst_nmeaparsing.moc"
