// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/magnetometermodel.h"

#include "utils/signallog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestMagnetometerModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void announcesEveryCalibrationLevel();
    void returnsToDefaultsComponentByComponent();
};

void TestMagnetometerModel::startsWithDefaults()
{
    QCOMPARE(MagnetometerModel::defaultXValue, 4.3e-05);
    QCOMPARE(MagnetometerModel::defaultCalibLevel, 0);
    const MagnetometerModel model(nullptr);
    QCOMPARE(model.x(), 4.3e-05);
    QCOMPARE(model.y(), 0.0);
    QCOMPARE(model.z(), 0.0);
    QCOMPARE(model.calibrationLevel(), 0);
    QCOMPARE(model.name(), u"magnetometer"_s);
}

void TestMagnetometerModel::announcesEveryCalibrationLevel()
{
    MagnetometerModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setCalibrationLevel(3);
    model.setCalibrationLevel(3);
    QVERIFY(model.setProperty("calibrationLevel", 1));
    QCOMPARE(log.entries(), QStringList({u"calibrationLevel=3"_s, u"calibrationLevel=3"_s, u"calibrationLevel=1"_s}));
}

void TestMagnetometerModel::returnsToDefaultsComponentByComponent()
{
    MagnetometerModel model(nullptr);
    model.setValues(1, 2, 3);
    model.setCalibrationLevel(3);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(log.entries(), QStringList({u"x=4.3e-05"_s, u"y=0"_s, u"z=0"_s, u"calibrationLevel=0"_s}));
}

QTEST_APPLESS_MAIN(TestMagnetometerModel)

#include "tst_magnetometermodel.moc"
