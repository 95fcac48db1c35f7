// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <tarn/connectionsettings.h>

#include <coreplugin/dialogs/ioptionspage.h>

#include <utils/aspects.h>

namespace TarnPlugin::Internal {

// Where the emulators are, in the group "Tarn" of the IDE's settings, with their page among the IDE's preferences.
class TarnSettings : public Utils::AspectContainer
{
    Q_OBJECT

public:
    TarnSettings();

    Tarn::ConnectionSettings connectionSettings() const;

private:
    class Page : public Core::IOptionsPage
    {
    public:
        explicit Page(TarnSettings *settings);
    };

    Utils::StringAspect m_connectionUri{this};
    Utils::FilePathAspect m_embedRoot{this};
    Page m_page{this};
};

} // namespace TarnPlugin::Internal
