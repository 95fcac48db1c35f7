// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/dbusarguments.h"

#include <QLocale>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

class TestDBusArguments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void int32_data();
    void int32();
    void boolean();
    void string();
    void real_data();
    void real();
    void realWithDecimals_data();
    void realWithDecimals();
    void numbersAreThoseOfQString_data();
    void numbersAreThoseOfQString();
    void joined();
    void ignoresTheLocale();
};

void TestDBusArguments::int32_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << u"int32:0"_s;
    QTest::newRow("no group separators") << 1234567 << u"int32:1234567"_s;
    QTest::newRow("a minus for negatives") << -1 << u"int32:-1"_s;
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << u"int32:-2147483648"_s;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << u"int32:2147483647"_s;
}

void TestDBusArguments::int32()
{
    QFETCH(int, value);
    QTEST(DBusArguments::int32(value), "text");
}

void TestDBusArguments::boolean()
{
    QCOMPARE(DBusArguments::boolean(true), u"boolean:1"_s);
    QCOMPARE(DBusArguments::boolean(false), u"boolean:0"_s);
}

void TestDBusArguments::string()
{
    QCOMPARE(DBusArguments::string(u"accelerometer"_s), u"string:accelerometer"_s);
    QCOMPARE(DBusArguments::string(QString()), u"string:"_s);
    QCOMPARE(DBusArguments::string(u"%1:\"%2\"\u00e4"_s), u"string:%1:\"%2\"\u00e4"_s);
}

void TestDBusArguments::real_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole numbers have no point") << 1.0 << u"double:1"_s;
    QTest::newRow("six significant digits") << 1.23456789 << u"double:1.23457"_s;
    QTest::newRow("trailing zeros are dropped") << 1.5 << u"double:1.5"_s;
    QTest::newRow("the default of the magnetometer") << 4.3e-05 << u"double:4.3e-05"_s;
    QTest::newRow("the default of the gyroscope") << 1.1459155902616465 << u"double:1.14592"_s;
    QTest::newRow("0.0001 is not small enough for an exponent") << 0.0001 << u"double:0.0001"_s;
    QTest::newRow("0.00001 is") << 0.00001 << u"double:1e-05"_s;
    QTest::newRow("a million has an exponent") << 1e6 << u"double:1e+06"_s;
    QTest::newRow("a number with seven digits has an exponent") << 1234567.0 << u"double:1.23457e+06"_s;
    QTest::newRow("six digits have none") << 999999.0 << u"double:999999"_s;
    QTest::newRow("rounded up into an exponent") << 999999.5 << u"double:1e+06"_s;
    QTest::newRow("a tie is rounded away from zero") << 100000.5 << u"double:100001"_s;
    QTest::newRow("a negative tie too") << -100000.5 << u"double:-100001"_s;
    QTest::newRow("three digits of exponent") << 1e-300 << u"double:1e-300"_s;
    QTest::newRow("largest") << std::numeric_limits<double>::max() << u"double:1.79769e+308"_s;
    QTest::newRow("zero") << 0.0 << u"double:0"_s;
    QTest::newRow("negative zero has no minus") << -0.0 << u"double:0"_s;
    QTest::newRow("not a number is 0") << std::numeric_limits<double>::quiet_NaN() << u"double:0"_s;
    QTest::newRow("infinity is 0") << std::numeric_limits<double>::infinity() << u"double:0"_s;
    QTest::newRow("negative infinity is 0") << -std::numeric_limits<double>::infinity() << u"double:0"_s;
}

void TestDBusArguments::real()
{
    QFETCH(double, value);
    QTEST(DBusArguments::real(value), "text");
}

void TestDBusArguments::realWithDecimals_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::newRow("a latitude has seven decimals") << 55.75 << 7 << u"double:55.7500000"_s;
    QTest::newRow("an altitude has two") << 100.0 << 2 << u"double:100.00"_s;
    QTest::newRow("no exponent and no group separators") << 1234567890.0 << 2 << u"double:1234567890.00"_s;
    QTest::newRow("a tie is rounded away from zero") << 0.125 << 2 << u"double:0.13"_s;
    QTest::newRow("a negative tie too") << -0.125 << 2 << u"double:-0.13"_s;
    QTest::newRow("a negative number that rounds to zero keeps its minus") << -0.001 << 2 << u"double:-0.00"_s;
    QTest::newRow("negative zero has no minus") << -0.0 << 2 << u"double:0.00"_s;
    QTest::newRow("not a number is 0") << std::numeric_limits<double>::quiet_NaN() << 7 << u"double:0.0000000"_s;
    QTest::newRow("infinity is 0") << std::numeric_limits<double>::infinity() << 2 << u"double:0.00"_s;
}

void TestDBusArguments::realWithDecimals()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QTEST(DBusArguments::real(value, decimals), "text");
}

// Most numbers are written by a way of our own, which must not show.
void TestDBusArguments::numbersAreThoseOfQString_data()
{
    QTest::addColumn<int>("decimals");
    for (int decimals = 0; decimals < 10; ++decimals)
        QTest::addRow("%d decimals", decimals) << decimals;
}

void TestDBusArguments::numbersAreThoseOfQString()
{
    QFETCH(int, decimals);
    std::mt19937_64 random(20261121U + unsigned(decimals));
    std::uniform_real_distribution<double> exponent(-10, 16);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    const double unit = std::pow(10.0, -decimals);
    for (int i = 0; i < 20'000; ++i) {
        const double number = mantissa(random) * std::pow(10.0, exponent(random));
        const double rounded = std::round(number / unit) * unit;
        const double tie = (std::floor(number / unit) + 0.5) * unit;
        for (const double value :
             {number, rounded, tie, std::nextafter(tie, 0), std::nextafter(tie, 1e300), std::floor(number)}) {
            QCOMPARE(DBusArguments::real(value, decimals), u"double:%1"_s.arg(value, 0, 'f', decimals));
            QCOMPARE(DBusArguments::real(value), u"double:%1"_s.arg(value));
        }
    }
}

void TestDBusArguments::joined()
{
    QCOMPARE(DBusArguments::joined({}), QString());
    QCOMPARE(DBusArguments::joined({u"int32:1"_s}), u"int32:1"_s);
    QCOMPARE(
        DBusArguments::joined({DBusArguments::int32(1), DBusArguments::real(2.5), DBusArguments::boolean(true)}),
        u"int32:1 double:2.5 boolean:1"_s);
}

void TestDBusArguments::ignoresTheLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QStringList texts = {
        DBusArguments::int32(1234567), DBusArguments::real(1234.5), DBusArguments::real(1234567.25, 2)};
    QLocale::setDefault(before);
    QCOMPARE(texts, QStringList({u"int32:1234567"_s, u"double:1234.5"_s, u"double:1234567.25"_s}));
}

QTEST_GUILESS_MAIN(TestDBusArguments)

#include "tst_dbusarguments.moc"
