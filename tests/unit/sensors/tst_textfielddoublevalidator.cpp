// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sensors/textfielddoublevalidator.h"

#include <QLocale>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(QValidator::State)

namespace {

QValidator::State stateOf(const TextFieldDoubleValidator &validator, QString input)
{
    int position = 0;
    return validator.validate(input, position);
}

// The rules one by one, in their order.
QValidator::State stateByRules(const QString &input, double bottom, double top, int decimals)
{
    if (input.size() == 0)
        return QValidator::Intermediate;
    if (input.size() == 1 && input.front() == u'-')
        return QValidator::Intermediate;
    const QStringList parts = input.split(u'.');
    if (parts.size() > 1) {
        if (decimals == 0)
            return QValidator::Invalid;
        const QString afterFirstPoint = input.mid(parts.constFirst().size() + 1);
        if (afterFirstPoint.size() > decimals)
            return QValidator::Invalid;
    }
    bool parsed = false;
    const double value = input.toDouble(&parsed);
    if (!parsed || value < bottom)
        return QValidator::Invalid;
    if (value <= top)
        return QValidator::Acceptable;
    return QValidator::Invalid;
}

} // namespace

class TestTextFieldDoubleValidator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesItsRangeFromTheConstructor();
    void startsUnlimited();
    void judges_data();
    void judges();
    void leavesInputAlone();
    void ignoresTheLocale();
    void followsTheRulesForEveryShortText_data();
    void followsTheRulesForEveryShortText();
};

void TestTextFieldDoubleValidator::takesItsRangeFromTheConstructor()
{
    QObject parent;
    const auto *validator = new TextFieldDoubleValidator(-3, 3.5, 2, &parent);
    QCOMPARE(validator->bottom(), -3.0);
    QCOMPARE(validator->top(), 3.5);
    QCOMPARE(validator->decimals(), 2);
    QCOMPARE(validator->parent(), &parent);
}

void TestTextFieldDoubleValidator::startsUnlimited()
{
    QObject parent;
    const auto *validator = new TextFieldDoubleValidator(&parent);
    QCOMPARE(validator->parent(), &parent);
    QCOMPARE(stateOf(*validator, u"-1e300"_s), QValidator::Acceptable);
    QCOMPARE(stateOf(*validator, u"1e300"_s), QValidator::Acceptable);
}

void TestTextFieldDoubleValidator::judges_data()
{
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QValidator::State>("state");

    const auto row =
        [](const char *name, double bottom, double top, int decimals, const QString &input, QValidator::State state) {
            QTest::newRow(name) << bottom << top << decimals << input << state;
        };
    const auto accelerometer = [&](const char *name, const QString &input, QValidator::State state) {
        row(name, -3, 3, 3, input, state);
    };
    accelerometer("nothing typed yet", u""_s, QValidator::Intermediate);
    accelerometer("a minus alone may become a number", u"-"_s, QValidator::Intermediate);
    accelerometer("a plus alone may not", u"+"_s, QValidator::Invalid);
    accelerometer("a number in the range", u"1.5"_s, QValidator::Acceptable);
    accelerometer("the bottom", u"-3"_s, QValidator::Acceptable);
    accelerometer("the top", u"3.000"_s, QValidator::Acceptable);
    accelerometer("below the bottom is refused at once", u"-3.001"_s, QValidator::Invalid);
    accelerometer("above the top is refused at once", u"4"_s, QValidator::Invalid);
    accelerometer("three decimals", u"0.123"_s, QValidator::Acceptable);
    accelerometer("a fourth decimal is refused", u"0.0001"_s, QValidator::Invalid);
    accelerometer("a point at the end", u"1."_s, QValidator::Acceptable);
    accelerometer("a point at the start", u".5"_s, QValidator::Acceptable);
    accelerometer("a point alone is no number", u"."_s, QValidator::Invalid);
    accelerometer("two points", u"1.2.3"_s, QValidator::Invalid);
    accelerometer("a comma is no decimal separator", u"1,5"_s, QValidator::Invalid);
    accelerometer("letters", u"abc"_s, QValidator::Invalid);
    accelerometer("an exponent", u"1e0"_s, QValidator::Acceptable);
    accelerometer("an exponent out of the range", u"1e2"_s, QValidator::Invalid);
    accelerometer("an unfinished exponent", u"1e"_s, QValidator::Invalid);
    accelerometer("characters after the point are counted, not digits", u"0.1e-1"_s, QValidator::Invalid);
    accelerometer("an exponent counts as decimals", u"0.1e"_s, QValidator::Invalid);
    accelerometer("a plus sign", u"+1"_s, QValidator::Acceptable);
    accelerometer("blanks around", u" 1 "_s, QValidator::Acceptable);
    accelerometer("blanks alone", u" "_s, QValidator::Invalid);
    accelerometer("blanks count as decimals", u"1.25  "_s, QValidator::Invalid);
    accelerometer("not a number", u"nan"_s, QValidator::Invalid);
    accelerometer("infinity", u"inf"_s, QValidator::Invalid);
    accelerometer("negative zero", u"-0"_s, QValidator::Acceptable);
    accelerometer("other digits", u"\u0661"_s, QValidator::Invalid);
    accelerometer("a hundred thousand digits", QString(100000, u'1'), QValidator::Invalid);
    row("a whole number where no decimals are allowed", 0, 359, 0, u"359"_s, QValidator::Acceptable);
    row("a point where no decimals are allowed", 0, 359, 0, u"1."_s, QValidator::Invalid);
    row("a minus alone, even above a bottom of zero", 0, 359, 0, u"-"_s, QValidator::Intermediate);
    row("any point where decimals are negative", -3, 3, -1, u"1."_s, QValidator::Invalid);
    row("no point where decimals are negative", -3, 3, -1, u"1"_s, QValidator::Acceptable);
    row("too small while typing is refused as well", 10, 20, 0, u"1"_s, QValidator::Invalid);
}

void TestTextFieldDoubleValidator::judges()
{
    QFETCH(double, bottom);
    QFETCH(double, top);
    QFETCH(int, decimals);
    QFETCH(QString, input);
    QTEST(stateOf(TextFieldDoubleValidator(bottom, top, decimals), input), "state");
}

void TestTextFieldDoubleValidator::leavesInputAlone()
{
    const TextFieldDoubleValidator validator(-3, 3, 3);
    QString input = u" +1.5 "_s;
    int position = 2;
    QCOMPARE(validator.validate(input, position), QValidator::Acceptable);
    QCOMPARE(input, u" +1.5 "_s);
    QCOMPARE(position, 2);
}

void TestTextFieldDoubleValidator::ignoresTheLocale()
{
    TextFieldDoubleValidator validator(-3000, 3000, 3);
    validator.setLocale(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(stateOf(validator, u"1.5"_s), QValidator::Acceptable);
    QCOMPARE(stateOf(validator, u"1,5"_s), QValidator::Invalid);
    QCOMPARE(stateOf(validator, u"1.000,5"_s), QValidator::Invalid);
}

void TestTextFieldDoubleValidator::followsTheRulesForEveryShortText_data()
{
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");
    QTest::addColumn<int>("decimals");
    QTest::newRow("accelerometer") << -3.0 << 3.0 << 3;
    QTest::newRow("azimuth") << 0.0 << 359.0 << 0;
    QTest::newRow("one decimal, negative only") << -95.5 << -0.1 << 1;
    QTest::newRow("unlimited") << -std::numeric_limits<double>::infinity() << std::numeric_limits<double>::infinity()
                               << 1000;
    QTest::newRow("negative decimals") << -1e9 << 1e9 << -1;
}

void TestTextFieldDoubleValidator::followsTheRulesForEveryShortText()
{
    QFETCH(double, bottom);
    QFETCH(double, top);
    QFETCH(int, decimals);

    const TextFieldDoubleValidator validator(bottom, top, decimals);
    const QString alphabet = u"-+.0159e ,"_s;
    constexpr int longest = 6;
    int texts = 0;
    int acceptable = 0;
    for (int length = 0; length <= longest; ++length) {
        const int count = int(std::pow(alphabet.size(), length));
        QString text(length, u' ');
        for (int number = 0; number < count; ++number) {
            for (int i = 0, rest = number; i < length; ++i, rest /= int(alphabet.size()))
                text[i] = alphabet.at(rest % alphabet.size());
            const QValidator::State state = stateOf(validator, text);
            const QValidator::State expected = stateByRules(text, bottom, top, decimals);
            if (state != expected)
                QFAIL(qPrintable(u"\"%1\": %2 instead of %3"_s.arg(text).arg(state).arg(expected)));
            ++texts;
            if (state == QValidator::Acceptable)
                ++acceptable;
        }
    }
    QCOMPARE(texts, 1111111);
    QVERIFY(acceptable > 0);
}

QTEST_APPLESS_MAIN(TestTextFieldDoubleValidator)

#include "tst_textfielddoublevalidator.moc"
