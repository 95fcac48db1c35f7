// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <QAction>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// The IDE's settings ask for German.
class tst_Translation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLogged();
    void textsOfThePlugin();
    void textsOfTheView();
    void messages();
};

namespace {
const RegisterTest<tst_Translation> registration;
}

void tst_Translation::nothingIsLogged()
{
    for (const Message &message : recordedMessages())
        QVERIFY2(!message.text.contains("Failed to load translator"_L1), qUtf8Printable(message.text));
}

void tst_Translation::textsOfThePlugin()
{
    QCOMPARE(showViewAction()->text(), u"Emulationsverwaltung\u2026"_s);
    QCOMPARE(view()->title(), u"Emulationsverwaltung"_s);
}

void tst_Translation::textsOfTheView()
{
    const auto *button = view()->rootObject()->findChild<QQuickItem *>(u"sensorsValuesButton"_s);
    QVERIFY(button);
    QCOMPARE(button->property("text").toString(), u"Sensorwerte"_s);
}

void tst_Translation::messages()
{
    TestUtils::MessageBoxAnswerer user;
    user.click(QMessageBox::Ok);
    openView();
    QCOMPARE(user.seen().size(), 1);
    QCOMPARE(user.seen().constFirst().title, u"Emulationsverwaltungs-Plugin"_s);
    QVERIFY(user.seen().constFirst().text.contains("Velmo OS-Emulator"_L1));
}

#include "tst_translation.moc"
