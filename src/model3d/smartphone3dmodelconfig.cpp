// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "model3d/smartphone3dmodelconfig.h"

#include "model3d/devicefiles.h"

#include <QFileInfo>
#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr auto defaultDevice = "default"_L1;
constexpr auto deviceNameKey = "device-name"_L1;
constexpr auto meshKey = "mesh"_L1;
constexpr auto textureKey = "texture"_L1;

QString dataFileUri(const QString &folder, const QString &fileName)
{
    const QString path = DeviceFiles::path(u"%1/%2"_s.arg(folder, fileName));
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
    DeviceFiles::forEach(u"configs"_s, [this](const QSettings &file) {
        const QVariantMap configuration{
            {meshKey, DeviceFiles::text(file, meshKey)}, {textureKey, DeviceFiles::text(file, textureKey)}};
        m_configurations.insert(DeviceFiles::text(file, deviceNameKey), configuration);
    });
}

} // namespace EmulationManagement::Internal
