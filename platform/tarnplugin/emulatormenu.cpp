// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulatormenu.h"

#include <tarn/emulator.h>
#include <tarn/sdk.h>
#include <tarn/virtualmachine.h>

namespace Tarn::Internal {

namespace {

QString stateText(VirtualMachine::State state)
{
    switch (state) {
    case VirtualMachine::Off:
        return EmulatorMenu::tr("Off");
    case VirtualMachine::Starting:
        return EmulatorMenu::tr("Starting");
    case VirtualMachine::Running:
        return EmulatorMenu::tr("Booting");
    case VirtualMachine::Stopping:
        return EmulatorMenu::tr("Shutting down");
    case VirtualMachine::Connected:
        return EmulatorMenu::tr("Running");
    }
    return {};
}

} // namespace

EmulatorMenu::EmulatorMenu(Emulator *emulator, QWidget *parent)
    : QMenu(emulator->name(), parent)
    , m_emulator(emulator)
{
    VirtualMachine *machine = emulator->virtualMachine();

    m_state = addAction(QString());
    m_state->setEnabled(false);
    addSeparator();
    m_start = addAction(tr("Start"), machine, &VirtualMachine::start);
    m_shutDown = addAction(tr("Shut Down"), machine, &VirtualMachine::shutDown);
    m_kill = addAction(tr("Kill"), machine, &VirtualMachine::kill);
    addSeparator();
    m_deviceModels = addMenu(tr("Device Model"));

    connect(machine, &VirtualMachine::stateChanged, this, &EmulatorMenu::updateActions);
    connect(m_deviceModels, &QMenu::aboutToShow, this, &EmulatorMenu::updateDeviceModels);
    updateActions();
    updateDeviceModels();
}

void EmulatorMenu::updateActions()
{
    const VirtualMachine *machine = m_emulator->virtualMachine();
    m_state->setText(stateText(machine->state()));
    m_start->setEnabled(machine->isOff());
    m_shutDown->setEnabled(!machine->isOff());
    m_kill->setEnabled(!machine->isOff());
}

void EmulatorMenu::updateDeviceModels()
{
    const QString current = m_emulator->deviceModel().name;
    m_deviceModels->clear();
    const QList<DeviceModel> models = Sdk::instance()->deviceModels();
    for (const DeviceModel &model : models) {
        QAction *action = m_deviceModels->addAction(
            model.name, m_emulator, [emulator = m_emulator, model] { emulator->setDeviceModel(model.name); });
        action->setCheckable(true);
        action->setChecked(model.name == current);
    }
}

} // namespace Tarn::Internal
