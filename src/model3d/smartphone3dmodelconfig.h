// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

namespace EmulationManagement::Internal {

// Which mesh and which texture show the device that the emulator emulates. The files lie beside the executable: INI
// files in "configs", each of which names a device and its files in "meshes" and "textures".
class Smartphone3DModelConfig : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString smartphone3DModelMeshUri READ smartphone3DModelMeshUri NOTIFY smartphone3DModelMeshUriChanged)
    Q_PROPERTY(
        QString smartphone3DModelTextureUri READ smartphone3DModelTextureUri NOTIFY smartphone3DModelTextureUriChanged)

public:
    // Reads the configurations, once and for all, and selects the one named "default". A file that cannot be read is
    // as good as an empty one.
    explicit Smartphone3DModelConfig(QObject *parent = nullptr);

    // URLs of local files, which need not exist.
    QString smartphone3DModelMeshUri() const;
    QString smartphone3DModelTextureUri() const;

    Q_INVOKABLE bool smartphone3DModelConfigured() const;

    // Selects the device of exactly this name, or "default" when there is none.
    void updateSmartphone3DModel(const QString &deviceName);

Q_SIGNALS:
    // After every update, whether it has changed anything or not.
    void smartphone3DModelConfigChanged();
    // Never emitted: who shows the model waits for smartphone3DModelConfigChanged(), when both are up to date.
    void smartphone3DModelMeshUriChanged();
    void smartphone3DModelTextureUriChanged();

private:
    void initSmartphone3DModelsConfigurations();

    // Device name to a map with the file names "mesh" and "texture".
    QMap<QString, QVariant> m_configurations;
    QString m_smartphone3DModelMeshUri;
    QString m_smartphone3DModelTextureUri;
};

} // namespace EmulationManagement::Internal
