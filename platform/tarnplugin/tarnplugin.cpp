// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tarnplugin.h"

#include "emulatormenu.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/coreconstants.h>
#include <coreplugin/icore.h>
#include <coreplugin/messagemanager.h>
#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>
#include <utils/qtcsettings.h>

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace Tarn::Internal {

namespace {

constexpr char menuId[] = "Vok.Tools.Menu";
constexpr char connectionUriKey[] = "Tarn/ConnectionUri";
constexpr char embedRootKey[] = "Tarn/EmbedRoot";

// Errors go to the IDE's messages and pop them up; a box would come in between what the user does.
void showError(const QString &text)
{
    Core::MessageManager::writeDisrupting(text);
}

} // namespace

TarnPlugin::TarnPlugin() = default;
TarnPlugin::~TarnPlugin() = default;

bool TarnPlugin::initialize([[maybe_unused]] const QStringList &arguments, [[maybe_unused]] QString *errorString)
{
    createMenu();
    createSdk();
    return true;
}

void TarnPlugin::createMenu()
{
    // Others add their entries to this menu. Whoever asks for it first makes it; its title is given here alone.
    Core::ActionContainer *container = Core::ActionManager::createMenu(menuId);
    container->setOnAllDisabledBehavior(Core::ActionContainer::Show);
    m_menu = container->menu();
    m_menu->setTitle(Sdk::osVariant());
    Core::ActionManager::actionContainer(Core::Constants::M_TOOLS)->addMenu(container);

    m_menu->addSeparator();
    m_status = m_menu->addAction(QString());
    m_status->setEnabled(false);
    m_reconnect = m_menu->addAction(tr("Look for Emulators Again"), this, [this] {
        m_sdk->reconnect();
        updateStatus();
    });
}

void TarnPlugin::createSdk()
{
    const Utils::QtcSettings *settings = Core::ICore::settings();
    m_sdk = std::make_unique<Sdk>(ConnectionSettings{
        .uri = settings->value(connectionUriKey).toString(),
        .embedRoot = settings->value(embedRootKey).toString(),
        .deviceModelDirectory = QCoreApplication::applicationDirPath(),
    });
    connect(m_sdk.get(), &Sdk::emulatorAdded, this, [this](int index) { addEmulator(Sdk::emulators().at(index)); });
    connect(m_sdk.get(), &Sdk::aboutToRemoveEmulator, this, [this](int index) {
        removeEmulator(Sdk::emulators().at(index));
    });
    connect(m_sdk.get(), &Sdk::connected, this, &TarnPlugin::updateStatus);
    connect(m_sdk.get(), &Sdk::connectionFailed, this, [this](const QString &error) {
        updateStatus();
        showError(error);
    });
    updateStatus();
}

void TarnPlugin::addEmulator(Emulator *emulator)
{
    auto *menu = new EmulatorMenu(emulator, m_menu);
    m_menu->addMenu(menu);
    m_emulatorMenus.insert(emulator, menu);
    connect(emulator->virtualMachine(), &VirtualMachine::errorOccurred, this, [emulator](const QString &error) {
        showError(tr("%1: %2").arg(emulator->name(), error));
    });
    updateStatus();
}

void TarnPlugin::removeEmulator(Emulator *emulator)
{
    delete m_emulatorMenus.take(emulator);
    updateStatus();
}

void TarnPlugin::updateStatus()
{
    const bool failed = !m_sdk->connectionError().isEmpty();
    m_status->setVisible(m_emulatorMenus.isEmpty());
    m_status->setText(
        failed                     ? tr("Emulators cannot be listed")
            : m_sdk->isConnected() ? tr("No emulator")
                                   : tr("Looking for emulators…"));
    m_reconnect->setVisible(failed);
}

} // namespace Tarn::Internal
