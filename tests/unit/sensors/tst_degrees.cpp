// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/degrees.h"

#include <QTest>

#include <limits>

using namespace EmulationManagement::Internal;

class TestDegrees : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rounds_data();
    void rounds();
};

void TestDegrees::rounds_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<int>("rounded");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("below the half, towards zero") << 25.499999999 << 25;
    QTest::newRow("the half, away from zero") << 25.5 << 26;
    QTest::newRow("an even half too") << 24.5 << 25;
    QTest::newRow("a negative half, away from zero") << -25.5 << -26;
    QTest::newRow("above a negative half, towards zero") << -25.499999999 << -25;
    QTest::newRow("half a degree") << 0.5 << 1;
    QTest::newRow("minus half a degree") << -0.5 << -1;
    QTest::newRow("negative zero") << -0.0 << 0;
    QTest::newRow("an angle that does not exist") << std::numeric_limits<double>::quiet_NaN() << 0;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << 0;
}

void TestDegrees::rounds()
{
    QFETCH(double, degrees);
    QTEST(roundedDegrees(degrees), "rounded");
}

QTEST_APPLESS_MAIN(TestDegrees)

#include "tst_degrees.moc"
