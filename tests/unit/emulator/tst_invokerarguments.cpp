// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote-dbus-invoker/arguments.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Emulator;

using Track = QList<QList<double>>;

class tst_InvokerArguments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void keepsTexts();
    void shortensLongTexts();
    void longTracksTakeTimeInProportion();
    void refusesWhatNoBusCarries();
};

void tst_InvokerArguments::reads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVariantList>("values");

    const auto track = [](const Track &points) { return QVariant::fromValue(points); };
    QTest::newRow("nothing is no arguments") << QByteArray() << QVariantList{};
    QTest::newRow("a whole number") << QByteArray("int32:42") << QVariantList{42};
    QTest::newRow("a negative whole number") << QByteArray("int32:-1") << QVariantList{-1};
    QTest::newRow("the largest whole number") << QByteArray("int32:2147483647") << QVariantList{2147483647};
    QTest::newRow("the smallest whole number") << QByteArray("int32:-2147483648") << QVariantList{-2147483647 - 1};
    QTest::newRow("a number in exponent form") << QByteArray("double:4.3e-05") << QVariantList{4.3e-05};
    QTest::newRow("a large exponent with a sign") << QByteArray("double:2.5e+06") << QVariantList{2.5e+06};
    QTest::newRow("a number with fixed decimals") << QByteArray("double:-33.8688000") << QVariantList{-33.8688};
    QTest::newRow("a number without a point") << QByteArray("double:0") << QVariantList{0.0};
    QTest::newRow("true") << QByteArray("boolean:1") << QVariantList{true};
    QTest::newRow("false") << QByteArray("boolean:0") << QVariantList{false};
    QTest::newRow("a string") << QByteArray("string:accelerometer") << QVariantList{u"accelerometer"_s};
    QTest::newRow("an empty string") << QByteArray("string:") << QVariantList{QString()};
    QTest::newRow("a string with colons") << QByteArray("string:a:b:") << QVariantList{u"a:b:"_s};
    QTest::newRow("a string beyond ASCII") << QByteArray("string:\xd0\x9a") << QVariantList{u"К"_s};
    QTest::newRow("three whole numbers") << QByteArray("int32:1 int32:-2 int32:3") << QVariantList{1, -2, 3};
    QTest::newRow("mixed types keep their order")
        << QByteArray("string:x boolean:1 double:0.5 int32:7") << QVariantList{u"x"_s, true, 0.5, 7};
    QTest::newRow("an empty track") << QByteArray("array:array:double:") << QVariantList{track({})};
    QTest::newRow("a track of one point") << QByteArray("array:array:double:59.9386300,30.3141300,12.50,0")
                                          << QVariantList{track({{59.93863, 30.31413, 12.5, 0}})};
    QTest::newRow("a track of two points")
        << QByteArray("array:array:double:59.9386300,30.3141300,12.50,0;59.9386400,30.3141400,13.00,1000")
        << QVariantList{track({{59.93863, 30.31413, 12.5, 0}, {59.93864, 30.31414, 13, 1000}})};
    QTest::newRow("inner arrays of different lengths")
        << QByteArray("array:array:double:1;2,3") << QVariantList{track({{1}, {2, 3}})};
    QTest::newRow("an array beside other values")
        << QByteArray("int32:1 array:array:double:1 int32:2") << QVariantList{1, track({{1}}), 2};
}

void tst_InvokerArguments::reads()
{
    QFETCH(QByteArray, text);
    QFETCH(QVariantList, values);

    const Arguments arguments = parseArguments(text);
    QCOMPARE(arguments.error, QString());
    QCOMPARE(arguments.values.size(), values.size());
    for (qsizetype i = 0; i < values.size(); ++i) {
        QCOMPARE(arguments.values[i].metaType(), values[i].metaType());
        if (values[i].metaType() == QMetaType::fromType<Track>())
            QCOMPARE(arguments.values[i].value<Track>(), values[i].value<Track>());
        else
            QCOMPARE(arguments.values[i], values[i]);
    }
}

void tst_InvokerArguments::refuses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const QByteArray &text, const QString &error) {
        QTest::newRow(name) << text << error;
    };
    const QString notWhole = u"\"%1\" is not a whole number of 32 bits"_s;
    const QString notNumber = u"\"%1\" is not a number"_s;
    row("a value without a type", "42", u"\"42\" is not a type, a colon and a value"_s);
    row("a blank alone", " ", u"\"\" is not a type, a colon and a value"_s);
    row("two blanks between values", "int32:1  int32:2", u"\"\" is not a type, a colon and a value"_s);
    row("a blank before the values", " int32:1", u"\"\" is not a type, a colon and a value"_s);
    row("a blank after the values", "int32:1 ", u"\"\" is not a type, a colon and a value"_s);
    row("a blank inside a string", "string:a b", u"\"b\" is not a type, a colon and a value"_s);
    row("an unknown type", "int64:1", u"The type \"int64\" is unknown"_s);
    row("a type in capitals", "INT32:1", u"The type \"INT32\" is unknown"_s);
    row("no type before the colon", ":1", u"The type \"\" is unknown"_s);
    row("an array of whole numbers", "array:array:int32:1", u"The type \"array\" is unknown"_s);
    row("a flat array", "array:double:1", u"The type \"array\" is unknown"_s);
    row("no number", "int32:", notWhole.arg(u""));
    row("letters for a number", "int32:one", notWhole.arg(u"one"));
    row("a fraction for a whole number", "int32:1.0", notWhole.arg(u"1.0"));
    row("a plus sign", "int32:+1", notWhole.arg(u"+1"));
    row("hexadecimal digits", "int32:0x10", notWhole.arg(u"0x10"));
    row("a whole number just too large", "int32:2147483648", notWhole.arg(u"2147483648"));
    row("a whole number just too small", "int32:-2147483649", notWhole.arg(u"-2147483649"));
    row("a whole number with a tab", "int32:1\t", notWhole.arg(u"1\t"));
    row("a decimal comma", "double:1,5", notNumber.arg(u"1,5"));
    row("a plus before a fraction", "double:+1.5", notNumber.arg(u"+1.5"));
    row("an empty fraction", "double:", notNumber.arg(u""));
    row("not a number", "double:nan", notNumber.arg(u"nan"));
    row("infinity", "double:inf", notNumber.arg(u"inf"));
    row("negative infinity", "double:-infinity", notNumber.arg(u"-infinity"));
    row("a number beyond range", "double:1e999", notNumber.arg(u"1e999"));
    row("an exponent without digits", "double:1e", notNumber.arg(u"1e"));
    row("a truth value as a word", "boolean:true", u"\"true\" is neither 0 nor 1"_s);
    row("a truth value beyond one", "boolean:2", u"\"2\" is neither 0 nor 1"_s);
    row("no truth value", "boolean:", u"\"\" is neither 0 nor 1"_s);
    row("a zero character", QByteArray("string:a\0b", 10), u"A string holds a zero character"_s);
    row("a track that ends in a separator",
        "array:array:double:1,2,3,4;",
        u"\"\" is not a number in item 1 of an array"_s);
    row("a track with an empty point", "array:array:double:1;;2", u"\"\" is not a number in item 1 of an array"_s);
    row("a point that ends in a comma", "array:array:double:1,", u"\"\" is not a number in item 0 of an array"_s);
    row("a letter in a track", "array:array:double:1,2;3,x", u"\"x\" is not a number in item 1 of an array"_s);
    row("infinity in a track", "array:array:double:inf", u"\"inf\" is not a number in item 0 of an array"_s);
    row("an error after good values", "int32:1 int32:x", notWhole.arg(u"x"));
}

void tst_InvokerArguments::refuses()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);

    const Arguments arguments = parseArguments(text);
    QCOMPARE(arguments.error, error);
    QVERIFY(arguments.values.isEmpty());
    QVERIFY(arguments.texts.isEmpty());
}

void tst_InvokerArguments::keepsTexts()
{
    QCOMPARE(parseArguments("string:tap boolean:1 double:0.50").texts, QStringList({u"tap"_s, u"1"_s, u"0.50"_s}));
}

void tst_InvokerArguments::shortensLongTexts()
{
    const QString text = parseArguments("string:" + QByteArray(1000, 'a')).texts.constFirst();
    QCOMPARE(text, QString(256, u'a') + u"…"_s);
    const QString error = parseArguments("int32:" + QByteArray(10'000'000, 'a')).error;
    QVERIFY2(error.size() < 400, qPrintable(error));
}

void tst_InvokerArguments::longTracksTakeTimeInProportion()
{
    const auto parseTime = [](int points) {
        QByteArray text = "array:array:double:";
        for (int i = 0; i < points; ++i)
            text += QByteArrayView(i ? ";" : "").toByteArray() + "59.9386300,30.3141300,12.50,1000";
        qint64 best = std::numeric_limits<qint64>::max();
        for (int run = 0; run < 3; ++run) {
            QElapsedTimer timer;
            timer.start();
            const Arguments arguments = parseArguments(text);
            best = std::min(best, timer.nsecsElapsed());
            if (arguments.values.size() != 1 || arguments.values.constFirst().value<Track>().size() != points)
                return qint64(-1);
        }
        return best;
    };
    const qint64 small = parseTime(20'000);
    const qint64 large = parseTime(200'000);
    QVERIFY(small > 0);
    QVERIFY(large > 0);
    // Ten times the points; a quadratic parser would take a hundred times as long.
    QVERIFY2(large < 40 * small, qPrintable(u"%1 ns, then %2 ns"_s.arg(small).arg(large)));
}

void tst_InvokerArguments::refusesWhatNoBusCarries()
{
    QByteArray text = "array:array:double:1,2,3,4";
    text.reserve(9 * 1'000'000);
    for (int i = 1; i < 1'000'000; ++i)
        text += ";1,2,3,4";
    QCOMPARE(parseArguments(text).error, u"The arguments are too large for the bus"_s);
    QCOMPARE(
        parseArguments("string:" + QByteArray(40 * 1024 * 1024, 'a')).error,
        u"The arguments are too large for the bus"_s);
}

QTEST_GUILESS_MAIN(tst_InvokerArguments)

#include "tst_invokerarguments.moc"
