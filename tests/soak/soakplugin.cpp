// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "soak/soakplugin.h"

#include <extensionsystem/pluginmanager.h>

void SoakPlugin::extensionsInitialized()
{
    connect(
        ExtensionSystem::PluginManager::instance(),
        &ExtensionSystem::PluginManager::initializationDone,
        &m_robot,
        &Robot::start,
        Qt::QueuedConnection);
}
