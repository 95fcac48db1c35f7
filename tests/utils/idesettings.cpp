// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/idesettings.h"

#include <utils/qtcsettings.h>
#include <utils/storekey.h>

#include <QFile>
#include <QSettings>

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
