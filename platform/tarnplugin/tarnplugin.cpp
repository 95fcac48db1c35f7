// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tarnplugin.h"

#include "tarnsettings.h"
#include "toolsmenu.h"

#include <tarn/sdk.h>

#include <coreplugin/icore.h>
#include <extensionsystem/pluginmanager.h>
#include <utils/qtcsettings.h>

#include <QCoreApplication>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace TarnPlugin::Internal {

TarnPlugin::TarnPlugin() = default;
TarnPlugin::~TarnPlugin() = default;

bool TarnPlugin::initialize(const QStringList &, QString *)
{
    installTranslation();
    m_settings = std::make_unique<TarnSettings>();
    m_sdk = std::make_unique<Tarn::Sdk>(m_settings->connectionSettings());
    m_menu = std::make_unique<ToolsMenu>(*m_sdk);
    return true;
}

// English texts need none.
void TarnPlugin::installTranslation()
{
    const QString language = ExtensionSystem::PluginManager::settings()->value("General/OverrideLanguage").toString();
    const QLocale locale = language.isEmpty() ? QLocale() : QLocale(language);
    const QString folder = Core::ICore::resourcePath("translations"_L1).toFSPathString();
    if (m_translator.load(locale, u"TarnPlugin"_s, u"_"_s, folder))
        QCoreApplication::installTranslator(&m_translator);
}

} // namespace TarnPlugin::Internal
