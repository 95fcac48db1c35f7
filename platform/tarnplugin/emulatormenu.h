// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMenu>

namespace Tarn {
class Emulator;
}

namespace Tarn::Internal {

/// What a person does with one emulator. Its entries follow the virtual machine's state.
class EmulatorMenu final : public QMenu
{
    Q_OBJECT

public:
    /// \a emulator is not owned and must outlive the menu.
    explicit EmulatorMenu(Emulator *emulator, QWidget *parent = nullptr);

    Emulator *emulator() const { return m_emulator; }

private:
    void updateActions();
    void updateDeviceModels();

    Emulator *m_emulator;
    QAction *m_state;
    QAction *m_start;
    QAction *m_shutDown;
    QAction *m_kill;
    QMenu *m_deviceModels;
};

} // namespace Tarn::Internal
