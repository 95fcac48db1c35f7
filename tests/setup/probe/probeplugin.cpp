// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "probeplugin.h"

#include "probe.h"

#include <coreplugin/icore.h>
#include <extensionsystem/pluginmanager.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

bool ProbePlugin::initialize(const QStringList &arguments, QString *errorString)
{
    const qsizetype index = arguments.indexOf("-probe"_L1);
    if (index < 0 || index + 1 >= arguments.size()) {
        *errorString = u"Nothing to do."_s;
        return false;
    }
    m_task = arguments.at(index + 1);
    return true;
}

void ProbePlugin::extensionsInitialized()
{
    connect(
        ExtensionSystem::PluginManager::instance(),
        &ExtensionSystem::PluginManager::initializationDone,
        this,
        &ProbePlugin::run,
        Qt::QueuedConnection);
}

void ProbePlugin::run()
{
    const QString what = m_task.section(u':', 0, 0);
    const QString detail = m_task.section(u':', 1);
    bool done = false;
    if (what == "look"_L1)
        done = Probe::look();
    else if (what == "open"_L1)
        done = Probe::open(detail);
    else if (what == "install"_L1)
        done = Probe::install(detail);
    else if (what == "remove"_L1)
        done = Probe::remove(detail);
    if (!done) {
        // An exit code that is only asked for gets lost when something else ends the event loop.
        std::fflush(nullptr);
        std::_Exit(EXIT_FAILURE);
    }
    Core::ICore::exit();
}
