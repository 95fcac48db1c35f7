// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolsmenu.h"

#include "emulatormenu.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/coreconstants.h>
#include <coreplugin/messagemanager.h>

#include <QMenu>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace TarnPlugin::Internal {

namespace {

constexpr char menuId[] = "Vok.Tools.Menu";

// A tool tip takes what looks like markup for it.
QString asWritten(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

// Another plugin may have created the menu already, and put it in its place; its title is ours in any case.
QMenu *toolsMenu()
{
    const bool isNew = !Core::ActionManager::actionContainer(menuId);
    Core::ActionContainer *container = Core::ActionManager::createMenu(menuId);
    container->menu()->setTitle(Tarn::Sdk::osVariant());
    if (isNew)
        Core::ActionManager::actionContainer(Core::Constants::M_TOOLS)->addMenu(container);
    return container->menu();
}

} // namespace

ToolsMenu::ToolsMenu(Tarn::Sdk &sdk)
    : m_sdk(sdk)
    , m_menu(toolsMenu())
{
    m_end.setSeparator(true);
    m_status.setEnabled(false);
    m_menu->setToolTipsVisible(true); // the status has its reason there
    m_reconnect.setText(tr("Connect to the Emulators Again"));
    m_menu->addAction(&m_status);
    m_menu->addAction(&m_reconnect);
    m_menu->addAction(&m_end);

    connect(&m_reconnect, &QAction::triggered, &sdk, &Tarn::Sdk::reconnect);
    connect(&sdk, &Tarn::Sdk::emulatorAdded, this, &ToolsMenu::addEmulator);
    connect(&sdk, &Tarn::Sdk::aboutToRemoveEmulator, this, &ToolsMenu::removeEmulator);
    connect(&sdk, &Tarn::Sdk::deviceModelsChanged, this, &ToolsMenu::showStatus);
    connect(&sdk, &Tarn::Sdk::connected, this, &ToolsMenu::showStatus);
    connect(&sdk, &Tarn::Sdk::connectionFailed, this, [this](const QString &error) {
        Core::MessageManager::writeFlashing(error);
        showStatus();
    });
    for (int i = 0; i < Tarn::Sdk::emulators().size(); ++i)
        addEmulator(i);
    showStatus();
}

void ToolsMenu::addEmulator(int index)
{
    Tarn::Emulator *emulator = Tarn::Sdk::emulators().at(index);
    auto *menu = new EmulatorMenu(*emulator, m_sdk, m_menu);
    const auto menus = m_menu->findChildren<EmulatorMenu *>(Qt::FindDirectChildrenOnly);
    QAction *before = &m_end;
    if (Tarn::Emulator *next = Tarn::Sdk::emulators().value(index + 1)) {
        for (const EmulatorMenu *other : menus) {
            if (other->emulator() == next)
                before = other->menuAction();
        }
    }
    m_menu->insertMenu(before, menu);
    showStatus();
}

void ToolsMenu::removeEmulator(int index)
{
    const Tarn::Emulator *emulator = Tarn::Sdk::emulators().at(index);
    for (EmulatorMenu *menu : m_menu->findChildren<EmulatorMenu *>(Qt::FindDirectChildrenOnly)) {
        if (menu->emulator() == emulator)
            delete menu;
    }
}

void ToolsMenu::showStatus()
{
    const bool failed = !m_sdk.isConnected() && !m_sdk.connectionError().isEmpty();
    const bool none = Tarn::Sdk::emulators().isEmpty();
    if (failed)
        m_status.setText(tr("No connection to the emulators"));
    else if (!m_sdk.isConnected())
        m_status.setText(tr("Connecting to the emulators…"));
    else
        m_status.setText(tr("No emulators"));
    m_status.setToolTip(asWritten(m_sdk.connectionError()));
    m_status.setVisible(none);
    m_reconnect.setVisible(failed);
}

} // namespace TarnPlugin::Internal
