// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/testregistry.h"
#include "unit/platform/fakesshserver.h"
#include "unit/platform/testhypervisor.h"
#include "utils/messageboxanswerer.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/dialogs/ioptionspage.h>
#include <coreplugin/icore.h>
#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>
#include <utils/qtcsettings.h>

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;
using Tarn::Sdk;
using Tarn::VirtualMachine;
using TestUtils::MessageBoxAnswerer;

namespace {

constexpr int longTime = 30'000; // ms

QMenu *velmoMenu()
{
    const Core::ActionContainer *container = Core::ActionManager::actionContainer("Vok.Tools.Menu");
    return container ? container->menu() : nullptr;
}

// What a user sees of a menu.
QStringList entries(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible() && !action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

QStringList enabledEntries(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible() && !action->isSeparator() && action->isEnabled())
            texts.append(action->text());
    }
    return texts;
}

// The first entry whose text begins so.
QAction *entry(const QMenu *menu, const QString &start)
{
    for (QAction *action : menu->actions()) {
        if (action->isVisible() && action->text().startsWith(start))
            return action;
    }
    return nullptr;
}

QMenu *submenu(const QMenu *menu, const QString &start)
{
    const QAction *action = entry(menu, start);
    return action ? action->menu() : nullptr;
}

QStringList emulatorEntries()
{
    QStringList texts = entries(velmoMenu());
    texts.removeIf([](const QString &text) { return !text.endsWith(u')'); });
    return texts;
}

} // namespace

/// The SDK's entries in the IDE: its menu, and its page among the preferences.
class tst_TarnPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTRY_VERIFY_WITH_TIMEOUT(Sdk::instance() && Sdk::instance()->isConnected(), longTime);
        m_hypervisor = std::make_unique<TestHypervisor>();
        QTRY_VERIFY_WITH_TIMEOUT(Sdk::emulators().isEmpty(), longTime);
    }

    void cleanup()
    {
        m_hypervisor.reset();
        QTRY_VERIFY_WITH_TIMEOUT(Sdk::emulators().isEmpty(), longTime);
    }

    void saysThatThereAreNoEmulators()
    {
        QCOMPARE(velmoMenu()->title(), u"Velmo OS"_s);
        QAction *status = entry(velmoMenu(), u"No emulators"_s);
        QVERIFY(status);
        QVERIFY(!status->isEnabled());
        QVERIFY(!entry(velmoMenu(), u"Connect to the Emulators Again"_s));

        define(u"emulator"_s);
        QTRY_COMPARE_WITH_TIMEOUT(emulatorEntries(), QStringList{u"emulator (off)"_s}, longTime);
        QVERIFY(!status->isVisible());
        m_hypervisor->undefine(u"emulator"_s);
        QTRY_VERIFY_WITH_TIMEOUT(status->isVisible(), longTime);
        QCOMPARE(emulatorEntries(), QStringList());
    }

    void listsEmulatorsByName()
    {
        define(u"middle"_s);
        QTRY_COMPARE_WITH_TIMEOUT(emulatorEntries(), QStringList{u"middle (off)"_s}, longTime);
        define(u"zebra"_s);
        define(u"antelope"_s);
        QTRY_COMPARE_WITH_TIMEOUT(
            emulatorEntries(), (QStringList{u"antelope (off)"_s, u"middle (off)"_s, u"zebra (off)"_s}), longTime);
        m_hypervisor->undefine(u"middle"_s);
        QTRY_COMPARE_WITH_TIMEOUT(emulatorEntries(), (QStringList{u"antelope (off)"_s, u"zebra (off)"_s}), longTime);
    }

    void showsAmpersandsOfNames()
    {
        define(u"phone & tablet"_s, DomainXml::defaultMetadata(u"Velmo &amp; Sons"_s));
        QTRY_COMPARE_WITH_TIMEOUT(emulatorEntries(), QStringList{u"phone && tablet (off)"_s}, longTime);
        QMenu *menu = submenu(velmoMenu(), u"phone"_s);
        QVERIFY(menu);
        QVERIFY(entry(menu, u"Start phone && tablet"_s));
        QCOMPARE(entries(submenu(menu, u"Device Model"_s)), QStringList{u"Velmo && Sons"_s});
    }

    void followsTheMachine()
    {
        const FakeSshServer server;
        DomainXml xml;
        xml.portForwards = DomainXml::portForward(u"tcp"_s, server.serverPort(), 22);
        m_hypervisor->define(xml);
        QTRY_COMPARE_WITH_TIMEOUT(emulatorEntries(), QStringList{u"emulator (off)"_s}, longTime);
        QMenu *menu = submenu(velmoMenu(), u"emulator"_s);
        const QString start = u"Start emulator"_s;
        const QString shutDown = u"Shut Down"_s;
        const QString kill = u"Kill"_s;
        const QString model = u"Device Model"_s;
        QCOMPARE(entries(menu), (QStringList{start, shutDown, kill, model}));
        QCOMPARE(enabledEntries(menu), (QStringList{start, model}));

        entry(menu, start)->trigger();
        QCOMPARE(menu->title(), u"emulator (starting)"_s);
        QCOMPARE(enabledEntries(menu), QStringList{model});
        QTRY_COMPARE_WITH_TIMEOUT(menu->title(), u"emulator (booting)"_s, longTime);
        QCOMPARE(enabledEntries(menu), (QStringList{shutDown, kill, model}));
        QTRY_COMPARE_WITH_TIMEOUT(menu->title(), u"emulator (running)"_s, longTime);
        QCOMPARE(enabledEntries(menu), (QStringList{shutDown, kill, model}));

        entry(menu, shutDown)->trigger();
        QCOMPARE(menu->title(), u"emulator (shutting down)"_s);
        QCOMPARE(enabledEntries(menu), (QStringList{kill, model}));
        QTRY_COMPARE_WITH_TIMEOUT(menu->title(), u"emulator (off)"_s, longTime);
        QCOMPARE(enabledEntries(menu), (QStringList{start, model}));

        m_hypervisor->start(u"emulator"_s);
        QTRY_VERIFY_WITH_TIMEOUT(entry(menu, kill)->isEnabled(), longTime);
        entry(menu, kill)->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(menu->title(), u"emulator (off)"_s, longTime);
    }

    void choosesADeviceModel()
    {
        define(u"first"_s, DomainXml::defaultMetadata(u"Velmo One"_s));
        define(u"second"_s, DomainXml::defaultMetadata(u"Velmo Two"_s));
        QTRY_COMPARE_WITH_TIMEOUT(Sdk::emulators().size(), 2, longTime);
        QMenu *menu = submenu(submenu(velmoMenu(), u"first"_s), u"Device Model"_s);
        QTRY_COMPARE_WITH_TIMEOUT(entries(menu), (QStringList{u"Velmo One"_s, u"Velmo Two"_s}), longTime);
        QVERIFY(entry(menu, u"Velmo One"_s)->isChecked());
        QVERIFY(!entry(menu, u"Velmo Two"_s)->isChecked());

        const Tarn::Emulator *first = Sdk::emulators().constFirst();
        entry(menu, u"Velmo Two"_s)->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(first->deviceModel().name, u"Velmo Two"_s, longTime);
        // Nobody has the other one any more.
        QTRY_COMPARE_WITH_TIMEOUT(entries(menu), QStringList{u"Velmo Two"_s}, longTime);
        QVERIFY(entry(menu, u"Velmo Two"_s)->isChecked());
    }

    void offersDeviceModelsOnceThereAreAny()
    {
        define(u"bare"_s, u"<velmo:emulator xmlns:velmo=\"urn:velmo:emulator:1\"/>"_s);
        QTRY_COMPARE_WITH_TIMEOUT(Sdk::emulators().size(), 1, longTime);
        const QMenu *menu = submenu(velmoMenu(), u"bare"_s);
        QVERIFY(!entry(menu, u"Device Model"_s)->isEnabled());
        define(u"other"_s);
        QTRY_VERIFY_WITH_TIMEOUT(entry(menu, u"Device Model"_s)->isEnabled(), longTime);
        const QMenu *models = submenu(menu, u"Device Model"_s);
        QCOMPARE(entries(models), QStringList{u"Velmo One"_s});
        QVERIFY(!entry(models, u"Velmo One"_s)->isChecked());
    }

    void showsErrorsInABox()
    {
        define(u"emulator"_s);
        m_hypervisor->start(u"emulator"_s);
        QTRY_VERIFY_WITH_TIMEOUT(
            Sdk::emulators().size() == 1 && !Sdk::emulators().constFirst()->virtualMachine()->isOff(), longTime);
        Sdk::emulators().constFirst()->virtualMachine()->addPortForwarding(
            u"<b>rule</b>"_s, u"<b>smoke</b>"_s, 1, 1, this, [](bool) {});
        QMessageBox *box = nullptr;
        const auto isShown = [&box] {
            for (QWidget *widget : QApplication::topLevelWidgets()) {
                auto *found = qobject_cast<QMessageBox *>(widget);
                if (found && found->isVisible())
                    box = found;
            }
            return box != nullptr;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isShown(), longTime);
        QCOMPARE(box->windowTitle(), u"Velmo OS Emulator"_s);
        QCOMPARE(box->text(), u"The protocol \"<b>smoke</b>\" cannot be forwarded."_s);
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QVERIFY(!box->isModal());
        const QPointer watched(box);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!watched, longTime);
    }

    void hasAPageAmongThePreferences()
    {
        Core::IOptionsPage *page = nullptr;
        for (Core::IOptionsPage *any : Core::IOptionsPage::allOptionsPages()) {
            if (any->id() == "Tarn.Emulators")
                page = any;
        }
        QVERIFY(page);
        QCOMPARE(page->displayName(), u"Velmo OS Emulators"_s);
        QCOMPARE(page->category(), Utils::Id("B.Core"));

        QWidget *widget = page->widget();
        QVERIFY(widget);
        QLineEdit *uri = nullptr;
        for (QLineEdit *field : widget->findChildren<QLineEdit *>()) {
            if (field->placeholderText() == "automatic"_L1)
                uri = field;
        }
        QVERIFY(uri);
        QCOMPARE(uri->text(), u"test:///default"_s);
        uri->clear();
        QTest::keyClicks(uri, u"qemu:///session"_s);
        MessageBoxAnswerer user;
        user.answer([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
        page->apply();
        QCOMPARE(user.seen().size(), 1);
        QCOMPARE(
            user.seen().constFirst().text, u"The connection to the emulators changes when the IDE is started again."_s);
        QCOMPARE(Core::ICore::settings()->value("Tarn/ConnectionUri"), QVariant(u"qemu:///session"_s));
        page->finish();
        QVERIFY(Sdk::instance()->isConnected());
    }

private:
    void define(const QString &name, const QString &metadata = DomainXml::defaultMetadata())
    {
        DomainXml xml;
        xml.name = name;
        xml.metadata = metadata;
        m_hypervisor->define(xml);
    }

    std::unique_ptr<TestHypervisor> m_hypervisor;
};

namespace {

const RegisterTest<tst_TarnPlugin> registration;

} // namespace

#include "tst_tarnplugin.moc"
