// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QObject>

namespace Tarn {
class Sdk;
}

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace TarnPlugin::Internal {

// The submenu of the IDE's Tools menu in which everything about the platform comes together; other plugins add their
// entries to it. It lists the emulators.
class ToolsMenu : public QObject
{
    Q_OBJECT

public:
    explicit ToolsMenu(Tarn::Sdk &sdk);

private:
    void addEmulator(int index);
    void removeEmulator(int index);
    void showStatus();

    Tarn::Sdk &m_sdk;
    QMenu *m_menu; // the IDE's
    QAction m_end; // the emulators come before it
    QAction m_status;
    QAction m_reconnect;
};

} // namespace TarnPlugin::Internal
