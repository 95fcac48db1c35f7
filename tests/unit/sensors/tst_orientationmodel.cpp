// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/orientationmodel.h"

#include "utils/signallog.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

using Orientation = QOrientationReading::Orientation;

namespace {

// A vector of one g in thousandths, tilted by an angle from lying flat.
double along(double degrees)
{
    return 1000 * std::sin(degrees * std::numbers::pi / 180);
}

double upwards(double degrees)
{
    return 1000 * std::cos(degrees * std::numbers::pi / 180);
}

} // namespace

class TestOrientationModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsUndefinedWithFaceUp();
    void describesItselfToQml();
    void announcesEveryChangeAndEveryRepetition();
    void returnsToDefaults();
    void followsAcceleration_data();
    void followsAcceleration();
    void keepsTheFaceOfABriefAcceleration_data();
    void keepsTheFaceOfABriefAcceleration();
    void announcesEachComputationOnce();
    void calculatesFaceWithoutAnnouncing_data();
    void calculatesFaceWithoutAnnouncing();
    void calculatesRotationAngle_data();
    void calculatesRotationAngle();
    void choosesTheEdgeByTheSign_data();
    void choosesTheEdgeByTheSign();
    void agreesWithAngles();
};

void TestOrientationModel::startsUndefinedWithFaceUp()
{
    QCOMPARE(OrientationModel::thresholdPortrait, 20);
    QCOMPARE(OrientationModel::thresholdLandscape, 25);
    const OrientationModel model(nullptr);
    QCOMPARE(model.orientation(), QOrientationReading::Undefined);
    QCOMPARE(model.topEdgeOrientation(), int(QOrientationReading::Undefined));
    QCOMPARE(model.faceOrientation(), int(QOrientationReading::FaceUp));
    QCOMPARE(model.name(), u"orientation"_s);
}

void TestOrientationModel::describesItselfToQml()
{
    const QMetaObject &metaObject = OrientationModel::staticMetaObject;
    const QMetaProperty property = metaObject.property(metaObject.indexOfProperty("orientation"));
    QVERIFY(property.isReadable() && property.isWritable());
    QCOMPARE(property.metaType(), QMetaType::fromType<Orientation>());
    QCOMPARE(property.notifySignal().methodSignature(), "orientationChanged()");

    const QMetaEnum modes = QMetaEnum::fromType<OrientationModel::OrientationMode>();
    QVERIFY(modes.isScoped());
    QCOMPARE(modes.keyCount(), 2);
    QCOMPARE(modes.keyToValue("Portrait"), 0);
    QCOMPARE(modes.keyToValue("Landscape"), 1);
}

void TestOrientationModel::announcesEveryChangeAndEveryRepetition()
{
    OrientationModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setOrientation(QOrientationReading::LeftUp);
    model.setOrientation(QOrientationReading::LeftUp);
    QVERIFY(model.setProperty("orientation", QVariant::fromValue(QOrientationReading::TopUp)));
    QCOMPARE(log.entries(), QStringList({u"orientation=LeftUp"_s, u"orientation=LeftUp"_s, u"orientation=TopUp"_s}));
}

void TestOrientationModel::returnsToDefaults()
{
    OrientationModel model(nullptr);
    model.setOrientation(0, 0, -1000);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(log.entries(), QStringList(u"orientation=FaceUp"_s));
    QCOMPARE(model.topEdgeOrientation(), int(QOrientationReading::Undefined));
    QCOMPARE(model.faceOrientation(), int(QOrientationReading::FaceUp));
}

void TestOrientationModel::followsAcceleration_data()
{
    QTest::addColumn<QList<double>>("acceleration");
    QTest::addColumn<Orientation>("orientation");
    QTest::addColumn<Orientation>("topEdge");
    QTest::addColumn<Orientation>("face");

    using enum Orientation;
    const auto row = [](const char *name,
                        double x,
                        double y,
                        double z,
                        Orientation orientation,
                        Orientation topEdge,
                        Orientation face) {
        QTest::newRow(name) << QList<double>{x, y, z} << orientation << topEdge << face;
    };
    row("top edge up", 0, 100, 0, TopUp, TopUp, FaceUp);
    row("top edge down", 0, -100, 0, TopDown, TopDown, FaceUp);
    row("left edge up", -100, 0, 0, LeftUp, LeftUp, FaceUp);
    row("right edge up", 100, 0, 0, RightUp, RightUp, FaceUp);
    row("face up", 0, 0, 300, FaceUp, Undefined, FaceUp);
    row("face down", 0, 0, -300, FaceDown, Undefined, FaceDown);
    row("a light push down is not yet face down", 0, 0, -299, FaceUp, Undefined, FaceUp);
    row("a light push down is not yet face down, fractions count", 0, 0, -299.999, FaceUp, Undefined, FaceUp);
    row("on its face, leaning on an edge, is face up", 500, 0, -1000, RightUp, RightUp, FaceUp);
    row("landscape wins over portrait", 100, 100, 0, RightUp, RightUp, FaceUp);
    row("25 degrees to the right are not landscape", along(25), 0, upwards(25), FaceUp, Undefined, FaceUp);
    row("nor 25.4", along(25.4), 0, upwards(25.4), FaceUp, Undefined, FaceUp);
    row("25.6 are", along(25.6), 0, upwards(25.6), RightUp, RightUp, FaceUp);
    row("26 degrees to the right are landscape", along(26), 0, upwards(26), RightUp, RightUp, FaceUp);
    row("25 degrees to the left are not landscape", -along(25), 0, upwards(25), FaceUp, Undefined, FaceUp);
    row("26 degrees to the left are landscape", -along(26), 0, upwards(26), LeftUp, LeftUp, FaceUp);
    row("20 degrees forward are not portrait", 0, along(20), upwards(20), FaceUp, Undefined, FaceUp);
    row("nor 20.4", 0, along(20.4), upwards(20.4), FaceUp, Undefined, FaceUp);
    row("20.6 are", 0, along(20.6), upwards(20.6), TopUp, TopUp, FaceUp);
    row("21 degrees forward are portrait", 0, along(21), upwards(21), TopUp, TopUp, FaceUp);
    row("20 degrees backward are not portrait", 0, -along(20), upwards(20), FaceUp, Undefined, FaceUp);
    row("21 degrees backward are portrait", 0, -along(21), upwards(21), TopDown, TopDown, FaceUp);
    row("25 degrees to the right leave room for portrait", along(25), along(30), upwards(30), TopUp, TopUp, FaceUp);
    row("no acceleration keeps the face", 0, 0, 0, FaceUp, Undefined, FaceUp);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    row("numbers that are none keep the face", nan, nan, nan, FaceUp, Undefined, FaceUp);
}

void TestOrientationModel::followsAcceleration()
{
    QFETCH(QList<double>, acceleration);
    QFETCH(Orientation, topEdge);
    QFETCH(Orientation, face);

    OrientationModel model(nullptr);
    model.setOrientation(acceleration.at(0), acceleration.at(1), acceleration.at(2));
    QTEST(model.orientation(), "orientation");
    QCOMPARE(model.topEdgeOrientation(), int(topEdge));
    QCOMPARE(model.faceOrientation(), int(face));
}

void TestOrientationModel::keepsTheFaceOfABriefAcceleration_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::addColumn<Orientation>("orientation");
    QTest::newRow("below 300 upwards it stays face down") << -300.0 << 299.0 << QOrientationReading::FaceDown;
    QTest::newRow("from 300 upwards it is face up") << -300.0 << 300.0 << QOrientationReading::FaceUp;
    QTest::newRow("below 300 downwards it stays face up") << 300.0 << -299.0 << QOrientationReading::FaceUp;
    QTest::newRow("without acceleration it stays face down") << -1000.0 << 0.0 << QOrientationReading::FaceDown;
}

void TestOrientationModel::keepsTheFaceOfABriefAcceleration()
{
    QFETCH(double, first);
    QFETCH(double, second);
    OrientationModel model(nullptr);
    model.setOrientation(0, 0, first);
    model.setOrientation(0, 0, second);
    QTEST(model.orientation(), "orientation");
}

void TestOrientationModel::announcesEachComputationOnce()
{
    OrientationModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setOrientation(0, 0, -1000);
    model.setOrientation(0, 0, -1000);
    model.setOrientation(0, 100, 0);
    model.setOrientation(0, 0, 0);
    QCOMPARE(
        log.entries(),
        QStringList(
            {u"orientation=FaceDown"_s, u"orientation=FaceDown"_s, u"orientation=TopUp"_s, u"orientation=FaceDown"_s}));
}

void TestOrientationModel::calculatesFaceWithoutAnnouncing_data()
{
    QTest::addColumn<double>("z");
    QTest::addColumn<Orientation>("topEdge");
    QTest::addColumn<Orientation>("face");
    using enum Orientation;
    QTest::newRow("down, no edge") << -300.0 << Undefined << FaceDown;
    QTest::newRow("down, on an edge") << -300.0 << TopUp << FaceUp;
    QTest::newRow("down, but lightly") << -299.9 << Undefined << FaceUp;
    QTest::newRow("up") << 300.0 << Undefined << FaceUp;
}

void TestOrientationModel::calculatesFaceWithoutAnnouncing()
{
    QFETCH(double, z);
    QFETCH(Orientation, topEdge);
    QFETCH(Orientation, face);
    OrientationModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.calculateFaceOrientation(z, topEdge);
    QCOMPARE(model.faceOrientation(), int(face));
    model.calculateTopEdgeOrientation(0, 100, 0);
    QCOMPARE(model.topEdgeOrientation(), int(QOrientationReading::TopUp));
    QCOMPARE(model.orientation(), QOrientationReading::Undefined);
    QCOMPARE(log.entries(), QStringList());
}

void TestOrientationModel::calculatesRotationAngle_data()
{
    QTest::addColumn<QList<double>>("acceleration");
    QTest::addColumn<int>("landscape");
    QTest::addColumn<int>("portrait");
    QTest::newRow("flat") << QList<double>{0, 0, 1000} << 0 << 0;
    QTest::newRow("pure x") << QList<double>{1, 0, 0} << 90 << 0;
    QTest::newRow("pure negative x") << QList<double>{-1, 0, 0} << -90 << 0;
    QTest::newRow("pure y") << QList<double>{0, 1, 0} << 0 << 90;
    QTest::newRow("pure negative y") << QList<double>{0, -1, 0} << 0 << -90;
    QTest::newRow("half right") << QList<double>{1, 0, 1} << 45 << 0;
    QTest::newRow("the sign of z does not matter") << QList<double>{1, 0, -1} << 45 << 0;
    QTest::newRow("27 degrees") << QList<double>{500, 0, -1000} << 27 << 0;
    QTest::newRow("rounded away from zero") << QList<double>{-along(26.6), 0, upwards(26.6)} << -27 << 0;
    QTest::newRow("in space") << QList<double>{1, 1, 1} << 35 << 35;
    QTest::newRow("nowhere") << QList<double>{0, 0, 0} << 0 << 0;
}

void TestOrientationModel::calculatesRotationAngle()
{
    QFETCH(QList<double>, acceleration);
    OrientationModel model(nullptr);
    const auto angle = [&](OrientationModel::OrientationMode mode) {
        return model.calculateRotationAngle(acceleration.at(0), acceleration.at(1), acceleration.at(2), mode);
    };
    QTEST(angle(OrientationModel::OrientationMode::Landscape), "landscape");
    QTEST(angle(OrientationModel::OrientationMode::Portrait), "portrait");
    QTEST(angle(static_cast<OrientationModel::OrientationMode>(7)), "portrait");
}

void TestOrientationModel::choosesTheEdgeByTheSign_data()
{
    QTest::addColumn<int>("angle");
    QTest::addColumn<Orientation>("landscape");
    QTest::addColumn<Orientation>("portrait");
    using enum Orientation;
    QTest::newRow("-90") << -90 << LeftUp << TopDown;
    QTest::newRow("-1") << -1 << LeftUp << TopDown;
    QTest::newRow("0 counts as negative") << 0 << LeftUp << TopDown;
    QTest::newRow("1") << 1 << RightUp << TopUp;
    QTest::newRow("90") << 90 << RightUp << TopUp;
}

void TestOrientationModel::choosesTheEdgeByTheSign()
{
    QFETCH(int, angle);
    QFETCH(Orientation, landscape);
    QFETCH(Orientation, portrait);
    const OrientationModel model(nullptr);
    QCOMPARE(model.rotateToLandscape(angle), int(landscape));
    QCOMPARE(model.rotateToPortrait(angle), int(portrait));
}

// The same rules by angles between the acceleration and the axes, over random vectors away from the thresholds.
void TestOrientationModel::agreesWithAngles()
{
    using enum Orientation;
    QRandomGenerator random(6);
    OrientationModel model(nullptr);
    Orientation face = FaceUp;
    int compared = 0;
    for (int i = 0; i < 200000; ++i) {
        const auto component = [&] { return double(random.bounded(-1200, 1201)); };
        const double x = component();
        const double y = component();
        const double z = component();
        const double length = std::hypot(x, y, z);
        if (length == 0)
            continue;
        const double landscape = std::asin(x / length) * 180 / std::numbers::pi;
        const double portrait = std::asin(y / length) * 180 / std::numbers::pi;
        if (std::abs(std::abs(landscape) - 25.5) < 1e-6 || std::abs(std::abs(portrait) - 20.5) < 1e-6)
            continue;

        Orientation edge = Undefined;
        if (std::abs(landscape) > 25.5)
            edge = landscape < 0 ? LeftUp : RightUp;
        else if (std::abs(portrait) > 20.5)
            edge = portrait < 0 ? TopDown : TopUp;
        if (std::abs(z) >= 300)
            face = z < 0 && edge == Undefined ? FaceDown : FaceUp;

        model.setOrientation(x, y, z);
        QCOMPARE(model.topEdgeOrientation(), int(edge));
        QCOMPARE(model.faceOrientation(), int(face));
        QCOMPARE(model.orientation(), edge == Undefined ? face : edge);
        ++compared;
    }
    QCOMPARE_GE(compared, 190000);
}

QTEST_APPLESS_MAIN(TestOrientationModel)

#include "tst_orientationmodel.moc"
