// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/compassmodel.h"

#include "utils/signallog.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

namespace {

constexpr double fieldStrength = 4.358898943540674e-05;

// The heading before rounding, by plane geometry: sines and cosines come from the sides of triangles.
// Not a number where there is no heading.
long double heading(long double ax, long double ay, long double az, long double mx, long double my, long double mz)
{
    const long double acrossPitch = std::hypot(ax, az);
    const long double length = std::hypot(acrossPitch, ay);
    const long double sinRoll = ax / acrossPitch;
    const long double cosRoll = -az / acrossPitch;
    const long double sinPitch = -ay / length;
    const long double cosPitch = acrossPitch / length;
    const long double bx = (mx * sinRoll + mz * cosRoll) * sinPitch + my * cosPitch;
    const long double by = mz * sinRoll - mx * cosRoll;
    return 360.0L - std::atan2(by, bx) * 180.0L / std::numbers::pi_v<long double>;
}

} // namespace

class TestCompassModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtZero();
    void announcesEveryChangeAndEveryRepetition();
    void returnsToDefaults();
    void calculatesAzimuth_data();
    void calculatesAzimuth();
    void readsTheAngleOfAFlatDevice();
    void agreesWithGeometry();
    void staysInTheCircle();
};

void TestCompassModel::startsAtZero()
{
    const CompassModel model(nullptr);
    QCOMPARE(model.azimuth(), 0);
    QCOMPARE(model.calibrationLevel(), 0);
    QCOMPARE(model.name(), u"compass"_s);
}

void TestCompassModel::announcesEveryChangeAndEveryRepetition()
{
    CompassModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setAzimuth(359);
    model.setAzimuth(359);
    model.setCalibrationLevel(2);
    model.setCalibrationLevel(2);
    QVERIFY(model.setProperty("azimuth", 1));
    QVERIFY(model.setProperty("calibrationLevel", 3));
    QCOMPARE(
        log.entries(),
        QStringList(
            {u"azimuth=359"_s,
             u"azimuth=359"_s,
             u"calibrationLevel=2"_s,
             u"calibrationLevel=2"_s,
             u"azimuth=1"_s,
             u"calibrationLevel=3"_s}));
}

void TestCompassModel::returnsToDefaults()
{
    CompassModel model(nullptr);
    model.setCalibrationLevel(3);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(log.entries(), QStringList({u"azimuth=270"_s, u"calibrationLevel=0"_s}));
}

void TestCompassModel::calculatesAzimuth_data()
{
    QTest::addColumn<QList<int>>("acceleration");
    QTest::addColumn<QList<double>>("field");
    QTest::addColumn<int>("azimuth");

    const QList<double> defaultField{4.3e-05, 0, 0};
    QTest::newRow("the defaults") << QList<int>{0, 0, 1000} << defaultField << 270;
    QTest::newRow("upright, top edge up") << QList<int>{0, 100, 0} << defaultField << 270;
    QTest::newRow("upright, top edge down") << QList<int>{0, -100, 0} << defaultField << 270;
    QTest::newRow("face down") << QList<int>{0, 0, -300} << defaultField << 90;
    QTest::newRow("no acceleration, no heading") << QList<int>{0, 0, 0} << defaultField << 0;
    QTest::newRow("neither acceleration nor field") << QList<int>{0, 0, 0} << QList<double>{0, 0, 0} << 0;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("a field that is not a number") << QList<int>{0, 0, 1000} << QList<double>{nan, 0, 0} << 0;
    QTest::newRow("an infinite field") << QList<int>{1, 2, 3} << QList<double>{infinity, -infinity, infinity} << 0;
}

void TestCompassModel::calculatesAzimuth()
{
    QFETCH(QList<int>, acceleration);
    QFETCH(QList<double>, field);
    QTEST(
        CompassModel::calculateAzimuth(
            acceleration.at(0), acceleration.at(1), acceleration.at(2), field.at(0), field.at(1), field.at(2)),
        "azimuth");
}

void TestCompassModel::readsTheAngleOfAFlatDevice()
{
    for (int angle = -359; angle <= 720; ++angle) {
        const double radians = -angle * std::numbers::pi / 180;
        const int azimuth = CompassModel::calculateAzimuth(
            0, 0, 1000, fieldStrength * std::sin(radians), fieldStrength * std::cos(radians), 0);
        QCOMPARE(azimuth, ((angle % 360) + 360) % 360);
    }
}

void TestCompassModel::agreesWithGeometry()
{
    QRandomGenerator random(270);
    for (int i = 0; i < 200000; ++i) {
        const int range = i % 2 ? 3000 : 5; // small numbers make axes and zeros
        const auto component = [&] { return random.bounded(-range, range + 1); };
        const auto fieldComponent = [&] { return (random.generateDouble() - 0.5) * 1e-4; };
        const int ax = component();
        const int ay = component();
        const int az = component();
        const double mx = fieldComponent();
        const double my = fieldComponent();
        const double mz = fieldComponent();
        const int azimuth = CompassModel::calculateAzimuth(ax, ay, az, mx, my, mz);

        // With ax and az zero the roll is that of a negated zero: half a turn.
        const long double expected =
            ax == 0 && az == 0 && ay != 0 ? heading(0, ay, 1e-12L, mx, my, mz) : heading(ax, ay, az, mx, my, mz);
        if (std::isnan(expected)) {
            QCOMPARE(azimuth, 0);
            continue;
        }
        const long double difference = std::remainder(expected - azimuth, 360.0L);
        QVERIFY2(
            std::abs(difference) < 0.5L + 1e-6L,
            qPrintable(u"(%1, %2, %3) (%4, %5, %6): %7, expected %8"_s.arg(ax)
                           .arg(ay)
                           .arg(az)
                           .arg(mx)
                           .arg(my)
                           .arg(mz)
                           .arg(azimuth)
                           .arg(double(expected))));
    }
}

void TestCompassModel::staysInTheCircle()
{
    QRandomGenerator random(359);
    const auto any = [&] { return int(random.generate()); };
    for (int i = 0; i < 100000; ++i) {
        const int azimuth = CompassModel::calculateAzimuth(any(), any(), any(), any(), any(), any());
        QVERIFY(azimuth >= 0 && azimuth < 360);
    }
}

QTEST_APPLESS_MAIN(TestCompassModel)

#include "tst_compassmodel.moc"
