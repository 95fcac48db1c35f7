// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/magneticfieldmodel.h"

#include "utils/signallog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestMagneticFieldModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void returnsToDefaultsComponentByComponent();
    void addsNoPropertiesOfItsOwn();
};

void TestMagneticFieldModel::startsWithDefaults()
{
    const MagneticFieldModel model(nullptr);
    QCOMPARE(model.x(), 0.0);
    QCOMPARE(model.y(), 5.95);
    QCOMPARE(model.z(), -48.76);
    QCOMPARE(model.name(), u"magneticField"_s);
    QCOMPARE(MagneticFieldModel::defaultYValue, 5.95);
    QCOMPARE(MagneticFieldModel::defaultZValue, -48.76);
}

void TestMagneticFieldModel::returnsToDefaultsComponentByComponent()
{
    MagneticFieldModel model(nullptr);
    model.setValues(1, 2, 3);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(log.entries(), QStringList({u"x=0"_s, u"y=5.95"_s, u"z=-48.76"_s}));
}

void TestMagneticFieldModel::addsNoPropertiesOfItsOwn()
{
    const QMetaObject &metaObject = MagneticFieldModel::staticMetaObject;
    QCOMPARE(metaObject.className(), "EmulationManagement::Internal::MagneticFieldModel");
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
    QCOMPARE(metaObject.propertyOffset(), 1 + 3); // objectName, x, y, z
}

QTEST_APPLESS_MAIN(TestMagneticFieldModel)

#include "tst_magneticfieldmodel.moc"
