// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/idesettings.h"

#include <utils/qtcsettings.h>
#include <utils/storekey.h>

#include <QFile>
#include <QSettings>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace TestUtils {

namespace {

Utils::QtcSettings *store()
{
    return ExtensionSystem::PluginManager::settings();
}

} // namespace

IdeSettings::IdeSettings()
{
    ExtensionSystem::PluginManager::setSettings(new Utils::QtcSettings(fileName(), QSettings::IniFormat));
}

void IdeSettings::clear()
{
    store()->clear();
}

void IdeSettings::setValue(const QString &key, const QVariant &value)
{
    store()->setValue(Utils::keyFromString(key), value);
}

QVariant IdeSettings::value(const QString &key) const
{
    return store()->value(Utils::keyFromString(key));
}

QStringList IdeSettings::keys() const
{
    return store()->allKeys();
}

QVariant IdeSettings::valueInFile(const QString &key) const
{
    store()->sync();
    return QSettings(fileName(), QSettings::IniFormat).value(key);
}

QVariant IdeSettings::valueOnDisk(const QString &key) const
{
    // Within a process, all that have opened one file share what is not written yet. Nobody has opened a copy.
    const QTemporaryDir directory;
    const QString copy = directory.filePath(u"copy.ini"_s);
    if (!QFile::copy(fileName(), copy))
        return {};
    return QSettings(copy, QSettings::IniFormat).value(key);
}

quint64 IdeSettings::fileVersion() const
{
    struct stat status = {};
    return stat(qPrintable(fileName()), &status) == 0 ? status.st_ino : 0; // a new file takes the place of the old one
}

void IdeSettings::writeFile(const QByteArray &content)
{
    store()->clear();
    store()->sync();
    QFile file(fileName());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
    file.close();
    store()->sync();
}

QString IdeSettings::fileName() const
{
    return m_directory.filePath(u"QtCreator.ini"_s);
}

} // namespace TestUtils
