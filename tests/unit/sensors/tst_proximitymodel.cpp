// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/proximitymodel.h"

#include "utils/signallog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestProximityModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void announcesEveryChangeAndEveryRepetition();
    void returnsToDefaults();
    void isWritableByProperty();
};

void TestProximityModel::startsWithDefaults()
{
    QCOMPARE(ProximityModel::defaultReflectance, 5);
    const ProximityModel model(nullptr);
    QCOMPARE(model.reflectance(), ProximityModel::defaultReflectance);
    QCOMPARE(model.name(), u"proximity"_s);
}

void TestProximityModel::announcesEveryChangeAndEveryRepetition()
{
    ProximityModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setReflectance(10);
    model.setReflectance(10);
    QCOMPARE(model.reflectance(), 10);
    QCOMPARE(log.entries(), QStringList({u"reflectance=10"_s, u"reflectance=10"_s}));
}

void TestProximityModel::returnsToDefaults()
{
    ProximityModel model(nullptr);
    model.setReflectance(10);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(model.reflectance(), ProximityModel::defaultReflectance);
    QCOMPARE(log.entries(), QStringList(u"reflectance=5"_s));
}

void TestProximityModel::isWritableByProperty()
{
    ProximityModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    QVERIFY(model.setProperty("reflectance", int(10)));
    QCOMPARE(model.property("reflectance").toInt(), int(10));
    QCOMPARE(log.entries(), QStringList(u"reflectance=10"_s));
}

QTEST_APPLESS_MAIN(TestProximityModel)

#include "tst_proximitymodel.moc"
