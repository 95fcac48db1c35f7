// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
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
    void textsOfTheSdk();
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

void tst_Translation::textsOfTheSdk()
{
    const QMenu *menu = Core::ActionManager::actionContainer("Vok.Tools.Menu")->menu();
    const auto texts = [menu] {
        QStringList texts;
        for (const QAction *action : menu->actions())
            texts.append(action->text());
        return texts;
    };
    QTRY_VERIFY_WITH_TIMEOUT(texts().contains(u"Keine Emulatoren"_s), 30'000);
    // A library that the plugin brings along.
    QCOMPARE(
        QCoreApplication::translate("Tarn::Internal::Hypervisor", "There is no connection to the hypervisor."),
        u"Es gibt keine Verbindung zum Hypervisor."_s);
}

#include "tst_translation.moc"
