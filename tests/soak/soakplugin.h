// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "soak/robot.h"

#include <extensionsystem/iplugin.h>

/// Lets a program outside drive the view: see Robot.
class SoakPlugin final : public ExtensionSystem::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QtCreatorPlugin" FILE "EmulationManagementSoak.json")

public:
    void extensionsInitialized() override;

protected:
    void initialize() override {}

private:
    Robot m_robot;
};
