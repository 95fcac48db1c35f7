// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

namespace Tarn {
class Emulator;
class Sdk;
class VirtualMachine;
} // namespace Tarn

namespace TarnPlugin::Internal {

// What can be done with one emulator, which outlives the menu.
class EmulatorMenu : public QMenu
{
    Q_OBJECT

public:
    EmulatorMenu(Tarn::Emulator &emulator, Tarn::Sdk &sdk, QWidget *parent = nullptr);

    const Tarn::Emulator *emulator() const;

private:
    void showState();
    void offerDeviceModels();
    void reportError(const QString &error);

    Tarn::Emulator &m_emulator;
    Tarn::VirtualMachine &m_machine;
    Tarn::Sdk &m_sdk;
    QAction *m_start;
    QAction *m_shutDown;
    QAction *m_kill;
    QMenu *m_deviceModels;
    QActionGroup *m_deviceModelGroup = nullptr;
};

} // namespace TarnPlugin::Internal
