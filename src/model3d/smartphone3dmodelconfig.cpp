// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "model3d/smartphone3dmodelconfig.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

// Where the installed data files lie, relative to the executable.
constexpr auto dataPath = ""_L1;

constexpr auto defaultDevice = "default"_L1;
constexpr auto deviceNameKey = "device-name"_L1;
constexpr auto meshKey = "mesh"_L1;
constexpr auto textureKey = "texture"_L1;

// Three short lines are expected. QSettings would read anything to its end, and the start of the IDE waits for it.
constexpr qint64 largestFile = 1024 * 1024; // bytes

bool isAcceptable(const QFileInfo &file)
{
    return file.isFile() && file.size() <= largestFile;
}

QString dataFileUri(const QString &folder, const QString &fileName)
{
    const QString path = u"%1/%2/%3/%4"_s.arg(QCoreApplication::applicationDirPath(), dataPath, folder, fileName);
    return QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString();
}

} // namespace

Smartphone3DModelConfig::Smartphone3DModelConfig(QObject *parent)
    : QObject(parent)
{
    initSmartphone3DModelsConfigurations();
    updateSmartphone3DModel(defaultDevice);
}

QString Smartphone3DModelConfig::smartphone3DModelMeshUri() const
{
    return m_smartphone3DModelMeshUri;
}

QString Smartphone3DModelConfig::smartphone3DModelTextureUri() const
{
    return m_smartphone3DModelTextureUri;
}

bool Smartphone3DModelConfig::smartphone3DModelConfigured() const
{
    return !m_smartphone3DModelMeshUri.isEmpty() && !m_smartphone3DModelTextureUri.isEmpty();
}

void Smartphone3DModelConfig::updateSmartphone3DModel(const QString &deviceName)
{
    const QString name = m_configurations.contains(deviceName) ? deviceName : QString(defaultDevice);
    const QVariantMap configuration = m_configurations.value(name).toMap();
    m_smartphone3DModelMeshUri = dataFileUri(u"meshes"_s, configuration.value(meshKey).toString());
    m_smartphone3DModelTextureUri = dataFileUri(u"textures"_s, configuration.value(textureKey).toString());
    Q_EMIT smartphone3DModelConfigChanged();
}

void Smartphone3DModelConfig::initSmartphone3DModelsConfigurations()
{
    const QDir directory(
        QDir::fromNativeSeparators(u"%1/%2/configs"_s.arg(QCoreApplication::applicationDirPath(), dataPath)));
    const QStringList fileNames = directory.entryList({u"*.ini"_s}, QDir::Files, QDir::Unsorted);
    for (const QString &fileName : fileNames) {
        const QString path = u"%1/%2"_s.arg(directory.path(), fileName);
        QString deviceName;
        QVariantMap configuration{{meshKey, QString()}, {textureKey, QString()}};
        if (isAcceptable(QFileInfo(path))) {
            const QSettings file(path, QSettings::IniFormat);
            deviceName = file.value(deviceNameKey).toString();
            configuration[meshKey] = file.value(meshKey).toString();
            configuration[textureKey] = file.value(textureKey).toString();
        }
        m_configurations.insert(deviceName, configuration);
    }
}

} // namespace EmulationManagement::Internal
