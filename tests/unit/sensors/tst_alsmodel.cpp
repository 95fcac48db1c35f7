// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/alsmodel.h"

#include "utils/signallog.h"

#include <QMetaEnum>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestAlsModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void announcesEveryChangeAndEveryRepetition();
    void returnsToDefaults();
    void isWritableByProperty();
    void namesLightLevelsByTheirLux();
};

void TestAlsModel::startsWithDefaults()
{
    QCOMPARE(AlsModel::defaultLux, 100);
    const AlsModel model(nullptr);
    QCOMPARE(model.lux(), AlsModel::defaultLux);
    QCOMPARE(model.name(), u"als"_s);
}

void TestAlsModel::announcesEveryChangeAndEveryRepetition()
{
    AlsModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setLux(2500);
    model.setLux(2500);
    QCOMPARE(model.lux(), 2500);
    QCOMPARE(log.entries(), QStringList({u"lux=2500"_s, u"lux=2500"_s}));
}

void TestAlsModel::returnsToDefaults()
{
    AlsModel model(nullptr);
    model.setLux(2500);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(model.lux(), AlsModel::defaultLux);
    QCOMPARE(log.entries(), QStringList(u"lux=100"_s));
}

void TestAlsModel::isWritableByProperty()
{
    AlsModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    QVERIFY(model.setProperty("lux", int(2500)));
    QCOMPARE(model.property("lux").toInt(), int(2500));
    QCOMPARE(log.entries(), QStringList(u"lux=2500"_s));
}

void TestAlsModel::namesLightLevelsByTheirLux()
{
    const QMetaEnum metaEnum = QMetaEnum::fromType<AlsModel::LightLevel>();
    QVERIFY(metaEnum.isScoped());
    QStringList entries;
    for (int i = 0; i < metaEnum.keyCount(); ++i)
        entries.append(u"%1=%2"_s.arg(QLatin1StringView(metaEnum.key(i))).arg(metaEnum.value(i)));
    QCOMPARE(
        entries,
        QStringList(
            {u"Undefined=-1"_s, u"Dark=0"_s, u"Twilight=10"_s, u"Light=80"_s, u"Bright=400"_s, u"Sunny=2500"_s}));
}

QTEST_APPLESS_MAIN(TestAlsModel)

#include "tst_alsmodel.moc"
