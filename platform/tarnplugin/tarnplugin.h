// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <extensionsystem/iplugin.h>

#include <QMap>

#include <memory>

QT_BEGIN_NAMESPACE
class QAction;
class QMenu;
QT_END_NAMESPACE

namespace Tarn {
class Emulator;
class Sdk;
} // namespace Tarn

namespace Tarn::Internal {

/// Offers the SDK inside the IDE: creates it, and gives people a menu to work with their emulators.
class TarnPlugin final : public ExtensionSystem::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QtCreatorPlugin" FILE "TarnPlugin.json")

public:
    TarnPlugin();
    ~TarnPlugin() override;

    bool initialize(const QStringList &arguments, QString *errorString) override;

private:
    void createMenu();
    void createSdk();
    void addEmulator(Emulator *emulator);
    void removeEmulator(Emulator *emulator);
    void updateStatus();

    std::unique_ptr<Sdk> m_sdk;
    QMenu *m_menu = nullptr;     // owned by the IDE
    QAction *m_status = nullptr; // says why there is no emulator
    QAction *m_reconnect = nullptr;
    QMap<Emulator *, QMenu *> m_emulatorMenus;
};

} // namespace Tarn::Internal
