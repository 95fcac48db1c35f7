// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/positionmodel.h"

#include "utils/signallog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestPositionModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtZero();
    void announcesEveryChangeAndEveryRepetition();
    void setsValuesInOrder();
    void isWritableByProperty();
};

void TestPositionModel::startsAtZero()
{
    const PositionModel model;
    QCOMPARE(model.latitude(), 0.0);
    QCOMPARE(model.longitude(), 0.0);
    QCOMPARE(model.altitude(), 0.0);
}

void TestPositionModel::announcesEveryChangeAndEveryRepetition()
{
    PositionModel model;
    SignalLog log;
    log.watch(&model);
    model.setLatitude(1.5);
    model.setLatitude(1.5);
    model.setLongitude(-2.5);
    model.setLongitude(-2.5);
    model.setAltitude(3.5);
    model.setAltitude(3.5);
    QCOMPARE(
        log.entries(),
        QStringList(
            {u"latitude=1.5"_s,
             u"latitude=1.5"_s,
             u"longitude=-2.5"_s,
             u"longitude=-2.5"_s,
             u"altitude=3.5"_s,
             u"altitude=3.5"_s}));
}

void TestPositionModel::setsValuesInOrder()
{
    PositionModel model;
    SignalLog log;
    log.watch(&model);
    QVERIFY(QMetaObject::invokeMethod(&model, "setValues", 59.93863, 30.31413, -12.5));
    QCOMPARE(log.entries(), QStringList({u"latitude=59.93863"_s, u"longitude=30.31413"_s, u"altitude=-12.5"_s}));
}

void TestPositionModel::isWritableByProperty()
{
    PositionModel model;
    SignalLog log;
    log.watch(&model);
    for (const char *name : {"latitude", "longitude", "altitude"}) {
        QVERIFY(model.setProperty(name, 0.25));
        QCOMPARE(model.property(name).toDouble(), 0.25);
        QCOMPARE(log.takeEntries(), QStringList(QLatin1StringView(name) + u"=0.25"_s));
    }
}

QTEST_APPLESS_MAIN(TestPositionModel)

#include "tst_positionmodel.moc"
