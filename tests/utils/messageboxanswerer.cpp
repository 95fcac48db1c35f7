// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/messageboxanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QTest>

#include <chrono>

namespace TestUtils {

using namespace std::chrono_literals;

MessageBoxAnswerer::MessageBoxAnswerer(QObject *parent)
    : QObject(parent)
{
    m_timer.callOnTimeout(this, &MessageBoxAnswerer::look);
    m_timer.start(5ms);
}

void MessageBoxAnswerer::click(QMessageBox::StandardButton button)
{
    answer([button](QMessageBox *box) {
        QAbstractButton *widget = box->button(button);
        if (widget)
            QTest::mouseClick(widget, Qt::LeftButton);
        else
            box->done(-1); // what was seen tells the test
    });
}

void MessageBoxAnswerer::pressEscape()
{
    answer([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
}

void MessageBoxAnswerer::answer(const Answer &answer)
{
    m_answers.push(answer);
}

void MessageBoxAnswerer::look()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible() || box == m_answered)
        return;
    m_answered = box;

    const QCheckBox *checkBox = box->checkBox();
    m_seen.append(SeenMessageBox{
        .title = box->windowTitle(),
        .text = box->text(),
        .textFormat = box->textFormat(),
        .informativeText = box->informativeText(),
        .buttons = box->standardButtons(),
        .icon = box->icon(),
        .flags = box->windowFlags(),
        .parent = box->parentWidget(),
        .checkBoxVisible = checkBox && checkBox->isVisible(),
        .checkBoxText = checkBox ? checkBox->text() : QString(),
    });

    if (m_answers.empty()) {
        box->done(-1);
        return;
    }
    const Answer answer = m_answers.front();
    m_answers.pop();
    answer(box);
}

} // namespace TestUtils
