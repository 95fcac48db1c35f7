// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "testsetup.h"

#include <QCheckBox>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTest>

using namespace Qt::StringLiterals;

void MessageBoxes::click(int button, bool tick)
{
    m_answerer.answer([button = QMessageBox::StandardButton(button), tick](QMessageBox *box) {
        if (tick)
            QTest::mouseClick(box->checkBox(), Qt::LeftButton, {}, QPoint(5, box->checkBox()->height() / 2));
        if (QAbstractButton *widget = box->button(button))
            QTest::mouseClick(widget, Qt::LeftButton);
        else
            box->done(-1); // what was seen tells the test
    });
}

QVariantList MessageBoxes::takeSeen()
{
    QVariantList result;
    for (const TestUtils::SeenMessageBox &box : m_answerer.seen()) {
        result.append(QVariantMap{
            {u"text"_s, box.text},
            {u"buttons"_s, int(box.buttons)},
            {u"checkBoxVisible"_s, box.checkBoxVisible},
        });
    }
    m_answerer.forget();
    return result;
}

void TestSetup::qmlEngineAvailable(QQmlEngine *engine)
{
    connect(engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError> &warnings) {
        m_warnings += int(warnings.size());
    });
    m_host.setTheme(u"flat-light"_s);
    m_host.setUp(engine->rootContext());
    engine->rootContext()->setContextProperty(u"host"_s, &m_host);
    engine->rootContext()->setContextProperty(u"invoker"_s, m_host.invoker());
    engine->rootContext()->setContextProperty(u"messageBoxes"_s, &m_messageBoxes);
}
