// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Texts of any kind against ranges of any kind: what the validator accepts is a number of the range, and what it
// refuses is not.

#include "sensors/textfielddoublevalidator.h"

#include "fuzz/fuzzer.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QString anyInput(Fuzz::Input &input)
{
    switch (input.number(4)) {
    case 0:
        return QString::number(input.anyDouble(), 'g', input.number(18));
    case 1:
        return QString::number(input.anyDouble(), 'f', input.number(8));
    case 2:
        return input.text(u"-+.0159eE ,naif"_s, 12);
    default:
        return input.anyText(40);
    }
}

QString check(Fuzz::Input &input)
{
    double bottom = input.anyDouble();
    double top = input.anyDouble();
    int decimals = input.chance(90) ? input.number(8) : input.anyInt();
    QString text = anyInput(input);
    if (const std::optional<QString> sample = input.sample()) { // the range, the decimals and the text, one a line
        bottom = sample->section(u'\n', 0, 0).toDouble();
        top = sample->section(u'\n', 1, 1).toDouble();
        decimals = sample->section(u'\n', 2, 2).toInt();
        text = sample->section(u'\n', 3, 3);
    }
    const TextFieldDoubleValidator validator(bottom, top, decimals);
    QString validated = text;
    int position = input.number(5);
    const int positionBefore = position;
    const QValidator::State state = validator.validate(validated, position);
    const QString described = u"\"%1\" in %2 to %3 with %4 decimals"_s.arg(text).arg(bottom).arg(top).arg(decimals);

    if (validated != text || position != positionBefore)
        return u"the input was changed: "_s + described;
    if ((state == QValidator::Intermediate) != (text.isEmpty() || text == "-"_L1))
        return u"intermediate or not: "_s + described;
    if (state == QValidator::Intermediate)
        return {};

    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    const bool inRange = isNumber && !(value < bottom) && value <= top;
    const qsizetype point = text.indexOf(u'.');
    const bool tooLong = point >= 0 && (decimals == 0 || text.size() - point - 1 > decimals);
    if ((state == QValidator::Acceptable) != (inRange && !tooLong))
        return u"acceptable or not: "_s + described;
    return {};
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return Fuzz::run("fuzz_validator", check);
}
