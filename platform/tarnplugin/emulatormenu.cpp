// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "emulatormenu.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

#include <coreplugin/icore.h>
#include <coreplugin/messagemanager.h>

#include <QActionGroup>
#include <QMessageBox>

namespace TarnPlugin::Internal {

using Tarn::VirtualMachine;

namespace {

QString stateName(VirtualMachine::State state)
{
    switch (state) {
    case VirtualMachine::Off:
        return EmulatorMenu::tr("off");
    case VirtualMachine::Starting:
        return EmulatorMenu::tr("starting");
    case VirtualMachine::Running:
        return EmulatorMenu::tr("booting");
    case VirtualMachine::Stopping:
        return EmulatorMenu::tr("shutting down");
    case VirtualMachine::Connected:
        return EmulatorMenu::tr("running");
    }
    return {};
}

// In a menu, an ampersand marks the key of an entry.
QString menuText(QString text)
{
    return text.replace(u'&', QLatin1StringView("&&"));
}

} // namespace

EmulatorMenu::EmulatorMenu(Tarn::Emulator &emulator, Tarn::Sdk &sdk, QWidget *parent)
    : QMenu(parent)
    , m_emulator(emulator)
    , m_machine(*emulator.virtualMachine())
    , m_sdk(sdk)
    , m_start(addAction(tr("Start %1").arg(menuText(emulator.name())), &m_machine, &VirtualMachine::start))
    , m_shutDown(addAction(tr("Shut Down"), &m_machine, &VirtualMachine::shutDown))
    , m_kill(addAction(tr("Kill"), &m_machine, &VirtualMachine::kill))
{
    addSeparator();
    m_deviceModels = addMenu(tr("Device Model"));
    connect(&m_sdk, &Tarn::Sdk::deviceModelsChanged, this, &EmulatorMenu::offerDeviceModels);
    connect(&m_emulator, &Tarn::Emulator::deviceModelNameChanged, this, &EmulatorMenu::offerDeviceModels);
    connect(&m_machine, &VirtualMachine::stateChanged, this, &EmulatorMenu::showState);
    connect(&m_machine, &VirtualMachine::errorOccurred, this, &EmulatorMenu::reportError);
    showState();
    offerDeviceModels();
}

const Tarn::Emulator *EmulatorMenu::emulator() const
{
    return &m_emulator;
}

void EmulatorMenu::showState()
{
    const VirtualMachine::State state = m_machine.state();
    setTitle(tr("%1 (%2)", "emulator, state").arg(menuText(m_emulator.name()), stateName(state)));
    m_start->setEnabled(state == VirtualMachine::Off);
    m_shutDown->setEnabled(state == VirtualMachine::Running || state == VirtualMachine::Connected);
    m_kill->setEnabled(state != VirtualMachine::Off && state != VirtualMachine::Starting);
}

void EmulatorMenu::offerDeviceModels()
{
    m_deviceModels->clear();
    delete m_deviceModelGroup;
    m_deviceModelGroup = new QActionGroup(m_deviceModels);
    for (const Tarn::DeviceModel &model : m_sdk.deviceModels()) {
        QAction *action = m_deviceModels->addAction(
            menuText(model.name), &m_emulator, [this, model] { m_emulator.setDeviceModel(model.name); });
        action->setCheckable(true);
        action->setChecked(model == m_emulator.deviceModel());
        m_deviceModelGroup->addAction(action);
    }
    m_deviceModels->setEnabled(!m_deviceModels->isEmpty());
}

void EmulatorMenu::reportError(const QString &error)
{
    Core::MessageManager::writeSilently(error);
    auto *box = new QMessageBox(
        QMessageBox::Warning, tr("Velmo OS Emulator"), error, QMessageBox::Ok, Core::ICore::dialogParent());
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(false);
    box->show();
}

} // namespace TarnPlugin::Internal
