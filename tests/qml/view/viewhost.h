// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "remote/remotedbusinvokerservice.h"
#include "utils/recordinginvoker.h"

#include <QColor>
#include <QObject>
#include <QPalette>
#include <QPointer>

#include <memory>

class CameraEmulationManager;
class QMainWindow;
class QQmlContext;
class QTemporaryDir;

namespace EmulationManagement::Internal {
class GPSEmulationManager;
class SensorsEmulationManager;
} // namespace EmulationManagement::Internal

namespace ExtensionSystem {
class PluginManager;
}

namespace TestView {

/// What the IDE's plugin is to the view: it registers the types, owns the channel and the managers and sets the context
/// properties. The channel's other end records what is sent.
class ViewHost : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString theme READ theme WRITE setTheme NOTIFY themeChanged)

public:
    ViewHost();
    ~ViewHost() override;

    /// Colours and palette are those of one of the IDE's themes, such as "flat-light". Set it before setUp().
    QString theme() const { return m_theme; }
    void setTheme(const QString &name);

    /// The themes that the IDE ships.
    Q_INVOKABLE static QStringList themes();

    /// Sets the context properties for one view.
    void setUp(QQmlContext *context);

    TestUtils::RecordingInvoker *invoker() { return &m_invoker; }
    EmulationManagement::Internal::RemoteDBusInvokerService *channel() { return &m_channel; }
    EmulationManagement::Internal::GPSEmulationManager *gps() { return m_gps.get(); }
    EmulationManagement::Internal::SensorsEmulationManager *sensors() { return m_sensors.get(); }
    CameraEmulationManager *camera() { return m_camera.get(); }

    /// Every frame sent since the last call, in order. Frames still on their way are waited for.
    Q_INVOKABLE QStringList takeFrames();
    /// New managers and empty settings, as at the very first start, on a host without cameras. Views made before must
    /// be gone.
    Q_INVOKABLE void startAnew();
    /// Ends the connection from the far end; the channel comes back by itself. Waits until it is there.
    Q_INVOKABLE void reconnect();
    /// What the emulator's mode has the plugin say.
    Q_INVOKABLE void setSensorAvailable(const QString &sensorName, bool available);
    /// A camera whose picture has one colour, with formats in GStreamer's words. Waits until it is noticed.
    Q_INVOKABLE void plugCamera(const QString &name, const QString &formats, const QColor &color);
    /// Waits until it is noticed.
    Q_INVOKABLE void unplugCamera(const QString &name);
    /// What the plugin does before it shows the view.
    Q_INVOKABLE void setupCameraStreamPipeline();

Q_SIGNALS:
    void themeChanged();

private:
    void openChannel();

    std::unique_ptr<QTemporaryDir> m_settingsDir;
    std::unique_ptr<ExtensionSystem::PluginManager> m_pluginManager;
    std::unique_ptr<QMainWindow> m_mainWindow;
    EmulationManagement::Internal::RemoteDBusInvokerService m_channel;
    TestUtils::RecordingInvoker m_invoker;
    QStringList m_frames; // not handed out yet
    std::unique_ptr<EmulationManagement::Internal::GPSEmulationManager> m_gps;
    std::unique_ptr<EmulationManagement::Internal::SensorsEmulationManager> m_sensors;
    std::unique_ptr<CameraEmulationManager> m_camera;
    QPointer<QQmlContext> m_context;
    QPalette m_palette; // the desktop's
    QString m_theme;
};

} // namespace TestView
