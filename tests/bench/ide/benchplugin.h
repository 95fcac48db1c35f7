// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <extensionsystem/iplugin.h>

/// Prints "ready PSS-KIB" once all plugins are up and the event loop is idle, and leaves the IDE.
class BenchPlugin final : public ExtensionSystem::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QtCreatorPlugin" FILE "EmulationManagementBench.json")

public:
    void extensionsInitialized() override;

protected:
    void initialize() override {}
};
