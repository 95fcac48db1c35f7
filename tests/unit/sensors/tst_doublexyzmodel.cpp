// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/doublexyzmodel.h"

#include "utils/signallog.h"

#include <QMetaProperty>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

namespace {

class Model : public DoubleXYZModel
{
public:
    Model()
        : DoubleXYZModel(1, 2, 3, nullptr)
    {
    }

    void setDefaultValues() override {}
    QString name() const override { return u"model"_s; }
};

} // namespace

class TestDoubleXYZModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheGivenComponents();
    void announcesEveryChangeAndEveryRepetition();
    void setsAllComponentsInOrder();
    void isSetThroughItsBase();
    void declaresItsProperties();
};

void TestDoubleXYZModel::startsWithTheGivenComponents()
{
    const Model model;
    QCOMPARE(model.x(), 1);
    QCOMPARE(model.y(), 2);
    QCOMPARE(model.z(), 3);
}

void TestDoubleXYZModel::announcesEveryChangeAndEveryRepetition()
{
    Model model;
    SignalLog log;
    log.watch(&model);
    model.setX(0.1);
    model.setX(0.1);
    model.setY(-20.5);
    model.setZ(4.3e-05);
    model.setZ(4.3e-05);
    QCOMPARE(log.entries(), QStringList({u"x=0.1"_s, u"x=0.1"_s, u"y=-20.5"_s, u"z=4.3e-05"_s, u"z=4.3e-05"_s}));
}

void TestDoubleXYZModel::setsAllComponentsInOrder()
{
    Model model;
    SignalLog log;
    log.watch(&model);
    model.setValues(0.1, -20.5, 4.3e-05);
    QCOMPARE(log.entries(), QStringList({u"x=0.1"_s, u"y=-20.5"_s, u"z=4.3e-05"_s}));
}

void TestDoubleXYZModel::isSetThroughItsBase()
{
    Model model;
    SignalLog log;
    log.watch(&model);
    XYZModel<double> &base = model;
    base.setX(0.1);
    base.setY(-20.5);
    base.setZ(4.3e-05);
    QCOMPARE(log.entries(), QStringList({u"x=0.1"_s, u"y=-20.5"_s, u"z=4.3e-05"_s}));
    const SensorModel &sensor = model;
    QCOMPARE(sensor.name(), u"model"_s);
}

void TestDoubleXYZModel::declaresItsProperties()
{
    const QMetaObject &metaObject = DoubleXYZModel::staticMetaObject;
    QStringList properties;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        QVERIFY(property.isReadable() && property.isWritable());
        properties.append(u"%1 %2 %3"_s.arg(
            QLatin1StringView(property.typeName()),
            QLatin1StringView(property.name()),
            QLatin1StringView(property.notifySignal().methodSignature())));
    }
    QCOMPARE(properties, QStringList({u"double x xChanged()"_s, u"double y yChanged()"_s, u"double z zChanged()"_s}));
    QCOMPARE(metaObject.superClass(), &SensorModel::staticMetaObject);
}

QTEST_APPLESS_MAIN(TestDoubleXYZModel)

#include "tst_doublexyzmodel.moc"
