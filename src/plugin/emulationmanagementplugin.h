// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "camera/cameraemulationmanager.h"
#include "gps/gpsemulationmanager.h"
#include "model3d/smartphone3dmodelconfig.h"
#include "plugin/emulationmanagementpackageschecker.h"
#include "remote/remotedbusinvokerservice.h"
#include "sensors/sensorsemulationmanager.h"

#include <extensionsystem/iplugin.h>
#include <tarn/emulator.h>
#include <tarn/sdk.h>

#include <QMap>
#include <QMessageBox>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickView>

namespace EmulationManagement::Internal {

/// The object that the IDE loads. It owns every manager and the window with the QML view, adds the menu action, and
/// follows the first emulator that the SDK lists.
///
/// Everything runs on the GUI thread. Message boxes and the adding of port forwarding rules wait in nested event loops.
class EmulationManagementPlugin final : public ExtensionSystem::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QtCreatorPlugin" FILE "EmulationManagement.json")

public:
    EmulationManagementPlugin();

    bool initialize(const QList<QString> &arguments, QString *errorString) override;
    void extensionsInitialized() override;
    ShutdownFlag aboutToShutdown() override;

Q_SIGNALS:
    /// The view was asked for while the emulator runs with its ports forwarded.
    void emulationManagementViewShowed();

private:
    /// Which sensors an emulated device has: sensor name to availability.
    struct SensorsConfiguration
    {
        QMap<QString, bool> sensors;
    };

    // The steps of initialize(), in their order.
    void setupTranslations();
    void registerQmlTypes();
    void setupContextProperties();
    void initEmulatorModesSensorsConfigurations();
    void repeatContextProperties();
    void setupView();
    void setupMenuAction();
    void setupStreamsEnd();

    void limitViewSize();
    void showEmulationManagementView();
    void showView();
    void showMessageBox(
        const QString &text, const QString &informativeText, const QFlags<QMessageBox::StandardButton> &buttons);

    /// The first emulator of the SDK's list, or null.
    Tarn::Emulator *retrieveEmulator() const;
    void setUpEmulatorConnection();
    /// Whether the view may go on; if not, the user has been told why.
    bool setUpPortForwarding();
    void setEmulatorRunning(bool running);
    void handleVirtualMachineState();
    void handleConnectionLost();

    void checkEmulationPackages();
    void handlePackagesChecked(const QString &message, const QString &detailedText);

    void updateSensorsConfiguration(const QString &deviceModelName);

    RemoteDBusInvokerService m_remoteDBusInvokerService;
    GPSEmulationManager m_gpsEmulationManager;
    SensorsEmulationManager m_sensorsEmulationManager{nullptr};
    Smartphone3DModelConfig m_smartphone3DModelConfig;
    CameraEmulationManager m_cameraEmulationManager;
    QQuickView m_view;
    // Loaded in a thread while the IDE loads its other plugins, so that the view does not wait for all of it.
    QQmlComponent m_qtQuickModules{m_view.engine()};
    QPointer<Tarn::Sdk> m_sdk;
    // Guarded: the SDK deletes an emulator that goes away, and only then may another one be the first.
    QPointer<Tarn::Emulator> m_emulator;
    bool m_emulatorRunning = false;
    bool m_packagesChecked = false;
    bool m_connectionRequested = false;
    // Events are delivered while a rule is added, the menu action's among them.
    bool m_addingPortForwarding = false;
    QMap<QString, SensorsConfiguration> m_emulatorModesSensorsConfigurations;
    EmulationManagementPackagesChecker m_packagesChecker;
};

} // namespace EmulationManagement::Internal
