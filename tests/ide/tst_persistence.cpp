// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"

#include <coreplugin/icore.h>
#include <utils/qtcsettings.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// The sensors' values outlive the IDE. The second function runs in the IDE after the one of the first.
class tst_Persistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesAreChanged();
    void valuesWereStored();
};

namespace {

const RegisterTest<tst_Persistence> registration;

QVariant stored(const QByteArray &key)
{
    return Core::ICore::settings()->value(Utils::Key("emulationmanagement/" + key));
}

} // namespace

void tst_Persistence::valuesAreChanged()
{
    QVERIFY(!stored("accelerometer_x").isValid());
    QVERIFY(QMetaObject::invokeMethod(sensorsManager(), "setAccelerometerValues", -7, 8, 9));
    QVERIFY(QMetaObject::invokeMethod(sensorsManager(), "setGyroscopeX", 0.125));
    QVERIFY(!stored("accelerometer_x").isValid()); // only the end stores them
}

void tst_Persistence::valuesWereStored()
{
    QCOMPARE(stored("accelerometer_x").toInt(), -7);
    QCOMPARE(stored("accelerometer_y").toInt(), 8);
    QCOMPARE(stored("accelerometer_z").toInt(), 9);
    QCOMPARE(stored("gyroscope_x").toDouble(), 0.125);
    QCOMPARE(stored("als").toInt(), 100);
}

#include "tst_persistence.moc"
