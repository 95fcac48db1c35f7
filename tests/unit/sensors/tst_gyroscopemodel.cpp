// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/gyroscopemodel.h"

#include "utils/signallog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestGyroscopeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void returnsToDefaultsComponentByComponent();
    void addsNoPropertiesOfItsOwn();
};

void TestGyroscopeModel::startsWithDefaults()
{
    const GyroscopeModel model(nullptr);
    QCOMPARE(model.x(), 0.0);
    QCOMPARE(model.y(), 0.0);
    QCOMPARE(model.z(), 1.1459155902616465);
    QCOMPARE(model.name(), u"gyroscope"_s);
    QCOMPARE(GyroscopeModel::defaultZValue, 1.1459155902616465);
}

void TestGyroscopeModel::returnsToDefaultsComponentByComponent()
{
    GyroscopeModel model(nullptr);
    model.setValues(1, 2, 3);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(log.entries(), QStringList({u"x=0"_s, u"y=0"_s, u"z=1.1459155902616465"_s}));
}

void TestGyroscopeModel::addsNoPropertiesOfItsOwn()
{
    const QMetaObject &metaObject = GyroscopeModel::staticMetaObject;
    QCOMPARE(metaObject.className(), "EmulationManagement::Internal::GyroscopeModel");
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
    QCOMPARE(metaObject.propertyOffset(), 1 + 3); // objectName, x, y, z
}

QTEST_APPLESS_MAIN(TestGyroscopeModel)

#include "tst_gyroscopemodel.moc"
