// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <extensionsystem/iplugin.h>

#include <QTranslator>

#include <memory>

namespace Tarn {
class Sdk;
}

namespace TarnPlugin::Internal {

class TarnSettings;
class ToolsMenu;

// Offers the emulators of the SDK library inside the IDE: Tarn::Sdk::instance() is there once every plugin has been
// initialized, and until the plugins are deleted.
class TarnPlugin : public ExtensionSystem::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QtCreatorPlugin" FILE "TarnPlugin.json")

public:
    TarnPlugin();
    ~TarnPlugin() override;

    bool initialize(const QStringList &arguments, QString *errorString) override;

private:
    void installTranslation();

    QTranslator m_translator;
    std::unique_ptr<TarnSettings> m_settings;
    std::unique_ptr<Tarn::Sdk> m_sdk;
    std::unique_ptr<ToolsMenu> m_menu;
};

} // namespace TarnPlugin::Internal
