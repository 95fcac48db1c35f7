// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/emulatorfixture.h"
#include "ide/ide.h"
#include "ide/testregistry.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <extensionsystem/pluginmanager.h>
#include <utils/qtcsettings.h>

#include <QAction>
#include <QCoreApplication>
#include <QHash>
#include <QLocale>
#include <QMenu>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;

namespace {

struct Texts
{
    QString action;
    QString title;
    QString sensorsValuesButton;
    QString messageTitle;
    QString emulator; // as messages name it
    QString noEmulators;
    QString noConnection;
};

const QHash<QString, Texts> textsOfLanguages{
    {u"de"_s,
     {.action = u"Emulationsverwaltung…"_s,
      .title = u"Emulationsverwaltung"_s,
      .sensorsValuesButton = u"Sensorwerte"_s,
      .messageTitle = u"Emulationsverwaltungs-Plugin"_s,
      .emulator = u"Velmo OS-Emulator"_s,
      .noEmulators = u"Keine Emulatoren"_s,
      .noConnection = u"Es gibt keine Verbindung zum Hypervisor."_s}},
    {u"es"_s,
     {.action = u"Gestión de la emulación…"_s,
      .title = u"Gestión de la emulación"_s,
      .sensorsValuesButton = u"Valores de sensores"_s,
      .messageTitle = u"Complemento de gestión de la emulación"_s,
      .emulator = u"emulador de Velmo OS"_s,
      .noEmulators = u"No hay emuladores"_s,
      .noConnection = u"No hay conexión con el hipervisor."_s}},
    {u"ru"_s,
     {.action = u"Управление эмуляцией…"_s,
      .title = u"Управление эмуляцией"_s,
      .sensorsValuesButton = u"Показания датчиков"_s,
      .messageTitle = u"Модуль управления эмуляцией"_s,
      .emulator = u"эмулятор Velmo OS"_s,
      .noEmulators = u"Нет эмуляторов"_s,
      .noConnection = u"Нет соединения с гипервизором."_s}},
};

// That of the IDE's settings, otherwise that of the system.
QString language()
{
    const QString chosen = ExtensionSystem::PluginManager::settings()->value("General/OverrideLanguage").toString();
    return (chosen.isEmpty() ? QLocale() : QLocale(chosen)).name().section(u'_', 0, 0);
}

} // namespace

/// Somebody asks for a language that there is a translation for.
class tst_Translation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nothingIsLogged();
    void textsOfThePlugin();
    void textsOfTheView();
    void messages();
    void textsOfTheSdk();

private:
    Texts m_texts;
};

namespace {
const RegisterTest<tst_Translation> registration;
}

void tst_Translation::initTestCase()
{
    QVERIFY2(textsOfLanguages.contains(language()), qUtf8Printable(language()));
    m_texts = textsOfLanguages.value(language());
}

void tst_Translation::nothingIsLogged()
{
    for (const Message &message : recordedMessages())
        QVERIFY2(!message.text.contains("Failed to load translator"_L1), qUtf8Printable(message.text));
}

void tst_Translation::textsOfThePlugin()
{
    QCOMPARE(showViewAction()->text(), m_texts.action);
    QCOMPARE(view()->title(), m_texts.title);
}

void tst_Translation::textsOfTheView()
{
    const auto *button = view()->rootObject()->findChild<QQuickItem *>(u"sensorsValuesButton"_s);
    QVERIFY(button);
    QCOMPARE(button->property("text").toString(), m_texts.sensorsValuesButton);
}

void tst_Translation::messages()
{
    TestUtils::MessageBoxAnswerer user;
    user.click(QMessageBox::Ok);
    openView();
    QCOMPARE(user.seen().size(), 1);
    QCOMPARE(user.seen().constFirst().title, m_texts.messageTitle);
    QVERIFY(user.seen().constFirst().text.contains(m_texts.emulator));
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
    QTRY_VERIFY_WITH_TIMEOUT(texts().contains(m_texts.noEmulators), 30'000);
    // A library that the plugin brings along.
    QCOMPARE(
        QCoreApplication::translate("Tarn::Internal::Hypervisor", "There is no connection to the hypervisor."),
        m_texts.noConnection);
}

#include "tst_translation.moc"
