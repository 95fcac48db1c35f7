// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tarnplugin.h"

#include "tarnsettings.h"
#include "toolsmenu.h"

#include <tarn/sdk.h>

namespace TarnPlugin::Internal {

TarnPlugin::TarnPlugin() = default;
TarnPlugin::~TarnPlugin() = default;

bool TarnPlugin::initialize(const QStringList &, QString *)
{
    m_settings = std::make_unique<TarnSettings>();
    m_sdk = std::make_unique<Tarn::Sdk>(m_settings->connectionSettings());
    m_menu = std::make_unique<ToolsMenu>(*m_sdk);
    return true;
}

} // namespace TarnPlugin::Internal
