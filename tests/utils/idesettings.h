// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <extensionsystem/pluginmanager.h>

#include <QString>
#include <QTemporaryDir>
#include <QVariant>

namespace TestUtils {

/// Gives Core::ICore::settings() a store of its own, in a temporary file. One per test program, made before the first
/// object that reads settings.
class IdeSettings
{
public:
    IdeSettings();
    Q_DISABLE_COPY_MOVE(IdeSettings)

    void clear();
    void setValue(const QString &key, const QVariant &value);
    QVariant value(const QString &key) const;
    QStringList keys() const;

    /// The value as another program, or the next session, finds it in the file.
    QVariant valueInFile(const QString &key) const;
    /// The value as it is on the disk already, where it outlives a kill of this program.
    QVariant valueOnDisk(const QString &key) const;
    /// Another number after each time that the file was written.
    quint64 fileVersion() const;
    /// Replaces what is in the file, as a user's text editor does.
    void writeFile(const QByteArray &content);

private:
    QString fileName() const;

    QTemporaryDir m_directory;
    ExtensionSystem::PluginManager m_pluginManager; // owns the settings
};

} // namespace TestUtils
