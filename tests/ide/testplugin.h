// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <extensionsystem/iplugin.h>

namespace IdeTests {

/// Runs one test class inside the IDE once it is up, and leaves the IDE the way a user does: through its main window.
/// The IDE's exit code is 0 only if the test passed and the IDE came down in order.
class TestPlugin final : public ExtensionSystem::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QtCreatorPlugin" FILE "EmulationManagementTests.json")

public:
    TestPlugin();

    bool initialize(const QStringList &arguments, QString *errorString) override;
    void extensionsInitialized() override;

private:
    void run();

    QString m_test;
};

} // namespace IdeTests
