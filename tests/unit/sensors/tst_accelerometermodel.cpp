// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/accelerometermodel.h"

#include "utils/signallog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestAccelerometerModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void returnsToDefaultsComponentByComponent();
    void addsNoPropertiesOfItsOwn();
};

void TestAccelerometerModel::startsWithDefaults()
{
    const AccelerometerModel model(nullptr);
    QCOMPARE(model.x(), 0);
    QCOMPARE(model.y(), 0);
    QCOMPARE(model.z(), 1000);
    QCOMPARE(model.name(), u"accelerometer"_s);
    QCOMPARE(AccelerometerModel::defaultZValue, 1000);
    QCOMPARE(AccelerometerModel::gravityAccelEarth, 9.80665);
}

void TestAccelerometerModel::returnsToDefaultsComponentByComponent()
{
    AccelerometerModel model(nullptr);
    model.setValues(1, 2, 3);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(log.entries(), QStringList({u"x=0"_s, u"y=0"_s, u"z=1000"_s}));
}

void TestAccelerometerModel::addsNoPropertiesOfItsOwn()
{
    const QMetaObject &metaObject = AccelerometerModel::staticMetaObject;
    QCOMPARE(metaObject.className(), "EmulationManagement::Internal::AccelerometerModel");
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
    QCOMPARE(metaObject.propertyOffset(), 1 + 3); // objectName, x, y, z
}

QTEST_APPLESS_MAIN(TestAccelerometerModel)

#include "tst_accelerometermodel.moc"
