// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tarnsettings.h"

#include <coreplugin/icore.h>

#include <utils/layoutbuilder.h>

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace TarnPlugin::Internal {

TarnSettings::TarnSettings()
{
    setSettingsGroup(u"Tarn"_s);
    setAutoApply(false);

    m_connectionUri.setSettingsKey("ConnectionUri");
    m_connectionUri.setDisplayStyle(Utils::StringAspect::LineEditDisplay);
    m_connectionUri.setLabelText(tr("libvirt connection:"));
    m_connectionUri.setPlaceHolderText(tr("automatic"));
    m_connectionUri.setToolTip(
        tr("The URI of the hypervisor, for example qemu:///session. When it is empty, the user's own libvirt daemon is "
           "used if there is one, and otherwise a hypervisor driver inside the IDE."));

    m_embedRoot.setSettingsKey("EmbedRoot");
    m_embedRoot.setExpectedKind(Utils::PathChooser::Directory);
    m_embedRoot.setLabelText(tr("Emulators of the driver inside the IDE:"));

    setLayouter([this] {
        using namespace Layouting;
        return Column{Form{m_connectionUri, br, m_embedRoot, br}, st};
    });
    readSettings();
    connect(this, &AspectContainer::applied, this, [] {
        Core::ICore::askForRestart(tr("The connection to the emulators changes when the IDE is started again."));
    });
}

Tarn::ConnectionSettings TarnSettings::connectionSettings() const
{
    return {
        .uri = m_connectionUri(),
        .embedRoot = m_embedRoot().path(),
        // Device models are installed beside the IDE.
        .deviceModelDirectory = QCoreApplication::applicationDirPath(),
    };
}

TarnSettings::Page::Page(TarnSettings *settings)
{
    setId("Tarn.Emulators");
    setDisplayName(tr("Velmo OS Emulators"));
    setCategory("B.Core");
    setSettingsProvider([settings] { return settings; });
}

} // namespace TarnPlugin::Internal
