// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/tapmodel.h"

#include "utils/signallog.h"

#include <QMetaEnum>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;
using TestUtils::SignalLog;

class TestTapModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithDefaults();
    void announcesEveryChangeAndEveryRepetition();
    void returnsToDefaults();
    void isWritableByProperty();
    void numbersDirectionsAsTheEmulatorDoes();
};

void TestTapModel::startsWithDefaults()
{
    const TapModel model(nullptr);
    QCOMPARE(model.tapDirection(), TapModel::TapDirection::Undefined);
    QCOMPARE(model.name(), u"tap"_s);
}

void TestTapModel::announcesEveryChangeAndEveryRepetition()
{
    TapModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    model.setTapDirection(TapModel::TapDirection::Z_Neg);
    model.setTapDirection(TapModel::TapDirection::Z_Neg);
    QCOMPARE(model.tapDirection(), TapModel::TapDirection::Z_Neg);
    QCOMPARE(log.entries(), QStringList({u"tapDirection=Z_Neg"_s, u"tapDirection=Z_Neg"_s}));
}

void TestTapModel::returnsToDefaults()
{
    TapModel model(nullptr);
    model.setTapDirection(TapModel::TapDirection::Z_Neg);
    SignalLog log;
    log.watch(&model);
    model.setDefaultValues();
    QCOMPARE(model.tapDirection(), TapModel::TapDirection::Undefined);
    QCOMPARE(log.entries(), QStringList(u"tapDirection=Undefined"_s));
}

void TestTapModel::isWritableByProperty()
{
    TapModel model(nullptr);
    SignalLog log;
    log.watch(&model);
    QVERIFY(model.setProperty("tapDirection", int(TapModel::TapDirection::Z_Neg)));
    QCOMPARE(model.property("tapDirection").toInt(), int(TapModel::TapDirection::Z_Neg));
    QCOMPARE(log.entries(), QStringList(u"tapDirection=Z_Neg"_s));
}

void TestTapModel::numbersDirectionsAsTheEmulatorDoes()
{
    const QMetaEnum metaEnum = QMetaEnum::fromType<TapModel::TapDirection>();
    QVERIFY(metaEnum.isScoped());
    QStringList entries;
    for (int i = 0; i < metaEnum.keyCount(); ++i)
        entries.append(u"%1=%2"_s.arg(QLatin1StringView(metaEnum.key(i))).arg(metaEnum.value(i)));
    QCOMPARE(
        entries,
        QStringList(
            {u"Undefined=-1"_s,
             u"X_Both=0"_s,
             u"Y_Both=1"_s,
             u"Z_Both=2"_s,
             u"X_Pos=3"_s,
             u"X_Neg=4"_s,
             u"Z_Neg=5"_s,
             u"Z_Pos=6"_s,
             u"Y_Pos=7"_s,
             u"Y_Neg=8"_s}));
}

QTEST_APPLESS_MAIN(TestTapModel)

#include "tst_tapmodel.moc"
