// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/intxyzmodel.h"

#include "utils/signallog.h"

#include <QMetaProperty>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

namespace {

class Model : public IntXYZModel
{
public:
    Model()
        : IntXYZModel(1, 2, 3, nullptr)
    {
    }

    void setDefaultValues() override {}
    QString name() const override { return u"model"_s; }
};

} // namespace

class TestIntXYZModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheGivenComponents();
    void announcesEveryChangeAndEveryRepetition();
    void setsAllComponentsInOrder();
    void isSetThroughItsBase();
    void declaresItsProperties();
};

void TestIntXYZModel::startsWithTheGivenComponents()
{
    const Model model;
    QCOMPARE(model.x(), 1);
    QCOMPARE(model.y(), 2);
    QCOMPARE(model.z(), 3);
}

void TestIntXYZModel::announcesEveryChangeAndEveryRepetition()
{
    Model model;
    SignalLog log;
    log.watch(&model);
    model.setX(10);
    model.setX(10);
    model.setY(-20);
    model.setZ(2147483647);
    model.setZ(2147483647);
    QCOMPARE(log.entries(), QStringList({u"x=10"_s, u"x=10"_s, u"y=-20"_s, u"z=2147483647"_s, u"z=2147483647"_s}));
}

void TestIntXYZModel::setsAllComponentsInOrder()
{
    Model model;
    SignalLog log;
    log.watch(&model);
    model.setValues(10, -20, 2147483647);
    QCOMPARE(log.entries(), QStringList({u"x=10"_s, u"y=-20"_s, u"z=2147483647"_s}));
}

void TestIntXYZModel::isSetThroughItsBase()
{
    Model model;
    SignalLog log;
    log.watch(&model);
    XYZModel<int> &base = model;
    base.setX(10);
    base.setY(-20);
    base.setZ(2147483647);
    QCOMPARE(log.entries(), QStringList({u"x=10"_s, u"y=-20"_s, u"z=2147483647"_s}));
    const SensorModel &sensor = model;
    QCOMPARE(sensor.name(), u"model"_s);
}

void TestIntXYZModel::declaresItsProperties()
{
    const QMetaObject &metaObject = IntXYZModel::staticMetaObject;
    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        QVERIFY(property.isReadable() && property.isWritable());
        properties.append(u"%1 %2 %3"_s.arg(
            QLatin1StringView(property.typeName()),
            QLatin1StringView(property.name()),
            QLatin1StringView(property.notifySignal().methodSignature())));
    }
    QCOMPARE(properties, QStringList({u"int x xChanged()"_s, u"int y yChanged()"_s, u"int z zChanged()"_s}));
    QCOMPARE(metaObject.superClass(), &SensorModel::staticMetaObject);
}

QTEST_APPLESS_MAIN(TestIntXYZModel)

#include "tst_intxyzmodel.moc"
