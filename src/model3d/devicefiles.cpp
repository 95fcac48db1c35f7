// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "model3d/devicefiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal::DeviceFiles {

namespace {

// Where the files lie, relative to the executable.
constexpr auto dataPath = ""_L1;

// Some short lines are expected. QSettings would read anything to its end.
constexpr qint64 largestFile = 1024 * 1024; // bytes

bool isAcceptable(const QFileInfo &file)
{
    return file.isFile() && file.size() <= largestFile;
}

} // namespace

QString path(const QString &name)
{
    return u"%1/%2/%3"_s.arg(QCoreApplication::applicationDirPath(), dataPath, name);
}

void forEach(const QString &folder, const std::function<void(QSettings &)> &read)
{
    const QDir directory(QDir::fromNativeSeparators(path(folder)));
    const QStringList fileNames = directory.entryList({u"*.ini"_s}, QDir::Files, QDir::Unsorted);
    for (const QString &fileName : fileNames) {
        const QString filePath = u"%1/%2"_s.arg(directory.path(), fileName);
        QSettings file(isAcceptable(QFileInfo(filePath)) ? filePath : u"/dev/null"_s, QSettings::IniFormat);
        read(file);
    }
}

QString text(const QSettings &file, const QString &key)
{
    const QVariant value = file.value(key);
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(", "_L1) : value.toString();
}

} // namespace EmulationManagement::Internal::DeviceFiles
