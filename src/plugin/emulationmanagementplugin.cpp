// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin/emulationmanagementplugin.h"

#include "model3d/devicefiles.h"
#include "plugin/qmlsetup.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/actionmanager/command.h>
#include <coreplugin/coreconstants.h>
#include <coreplugin/icontext.h>
#include <coreplugin/icore.h>
#include <extensionsystem/pluginmanager.h>
#include <tarn/execasynchronous.h>
#include <tarn/virtualmachine.h>
#include <utils/filepath.h>
#include <utils/qtcsettings.h>

#include <QAction>
#include <QCoreApplication>
#include <QLocale>
#include <QMainWindow>
#include <QQmlContext>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSettings>
#include <QTranslator>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace EmulationManagement::Internal {

namespace {

constexpr char showViewActionId[] = "EmulationManagement.ShowEmulationManagementView.Action";
constexpr char toolsMenuId[] = "Vok.Tools.Menu";

// The only state of a virtual machine whose number matters here: running, and its SSH server answers.
constexpr int connectedState = 4;

// Smaller, the rows' sliders have no room. A screen that is smaller still must take the window whole, with its buttons.
constexpr QSize smallestViewSize(1000, 400);

// A text with commas is read as a list, and is neither empty nor one of the words for "no".
bool isAvailable(const QVariant &value)
{
    return value.typeId() == QMetaType::QStringList || value.toBool();
}

} // namespace

EmulationManagementPlugin::EmulationManagementPlugin()
{
    m_qtQuickModules.loadUrl(QUrl(u"qrc:/emulationmanagement/qml/QtQuickModules.qml"_s), QQmlComponent::Asynchronous);
}

bool EmulationManagementPlugin::initialize(
    [[maybe_unused]] const QList<QString> &arguments, [[maybe_unused]] QString *errorString)
{
    setupTranslations();
    registerQmlTypes();
    setupContextProperties();
    initEmulatorModesSensorsConfigurations();
    repeatContextProperties();
    setupView();
    setupMenuAction();
    setupStreamsEnd();
    return true;
}

void EmulationManagementPlugin::extensionsInitialized()
{
    m_sdk = Tarn::Sdk::instance();
    if (!m_sdk)
        return;
    connect(m_sdk, &Tarn::Sdk::emulatorAdded, this, &EmulationManagementPlugin::setUpEmulatorConnection);
    connect(m_sdk, &Tarn::Sdk::aboutToRemoveEmulator, this, &EmulationManagementPlugin::setUpEmulatorConnection);
    connect(m_sdk, &Tarn::Sdk::deviceModelsChanged, this, &EmulationManagementPlugin::setUpEmulatorConnection);
}

ExtensionSystem::IPlugin::ShutdownFlag EmulationManagementPlugin::aboutToShutdown()
{
    m_view.close();
    return SynchronousShutdown;
}

void EmulationManagementPlugin::setupTranslations()
{
    const QVariant language = ExtensionSystem::PluginManager::settings()->value("General/OverrideLanguage");
    const QLocale locale = language.isValid() ? QLocale(language.toString()) : QLocale();
    const QString directory = Core::ICore::resourcePath(u"translations"_s).nativePath();

    auto *translator = new QTranslator(this);
    if (translator->load(locale, u"EmulationManagement"_s, u"_"_s, directory))
        QCoreApplication::installTranslator(translator);
    else
        qDebug() << "Failed to load translator:" << directory << "EmulationManagement";
}

void EmulationManagementPlugin::registerQmlTypes()
{
    registerViewTypes();
}

void EmulationManagementPlugin::setupContextProperties()
{
    m_gpsEmulationManager.setRdbusinvoker(&m_remoteDBusInvokerService);
    m_sensorsEmulationManager.setRdbusinvoker(&m_remoteDBusInvokerService);

    QQmlContext *context = m_view.rootContext();
    context->setContextProperty(u"remoteDBusInvokerService"_s, &m_remoteDBusInvokerService);
    context->setContextProperty(u"gpsEmulationManager"_s, &m_gpsEmulationManager);
    context->setContextProperty(u"sensorsEmulationManager"_s, &m_sensorsEmulationManager);
    context->setContextProperty(u"smartphone3DModelConfig"_s, &m_smartphone3DModelConfig);
    context->setContextProperty(u"emulationManagementPlugin"_s, this);
    setThemeContextProperties(context); // once: the view does not follow a later change of the theme
}

void EmulationManagementPlugin::initEmulatorModesSensorsConfigurations()
{
    DeviceFiles::forEach({}, [this](QSettings &file) {
        SensorsConfiguration configuration;
        file.beginGroup("sensors"_L1);
        const QStringList sensorNames = file.childKeys();
        for (const QString &sensorName : sensorNames) {
            if (!sensorName.isEmpty()) // which QSettings lists, but does not read without a warning
                configuration.sensors.insert(sensorName, isAvailable(file.value(sensorName, true)));
        }
        file.endGroup();
        m_emulatorModesSensorsConfigurations.insert(DeviceFiles::text(file, u"device-name"_s), configuration);
    });
}

// Bound once more, the GPS manager sets itself up twice on each connection and hears each reply twice.
void EmulationManagementPlugin::repeatContextProperties()
{
    m_gpsEmulationManager.setRdbusinvoker(&m_remoteDBusInvokerService);
    QQmlContext *context = m_view.rootContext();
    context->setContextProperty(u"remoteDBusInvokerService"_s, &m_remoteDBusInvokerService);
    context->setContextProperty(u"gpsEmulationManager"_s, &m_gpsEmulationManager);
    context->setContextProperty(u"cameraEmulationManager"_s, &m_cameraEmulationManager);
}

void EmulationManagementPlugin::setupView()
{
    m_view.setTitle(tr("Emulation Management"));
    m_view.setResizeMode(QQuickView::SizeRootObjectToView);
    m_view.setSource(QUrl(u"qrc:/emulationmanagement/qml/EmulationManagementView.qml"_s));
    limitViewSize(); // now that the document has given the window its first size
    connect(&m_view, &QWindow::screenChanged, this, &EmulationManagementPlugin::limitViewSize);
    // The IDE ends when its last window is closed: this one must not outlive the main window.
    connect(Core::ICore::instance(), &Core::ICore::coreAboutToClose, &m_view, &QWindow::close);
}

void EmulationManagementPlugin::limitViewSize()
{
    const QScreen *screen = m_view.screen();
    m_view.setMinimumSize(screen ? smallestViewSize.boundedTo(screen->availableSize()) : smallestViewSize);
}

void EmulationManagementPlugin::setupMenuAction()
{
    auto *action = new QAction(tr("Emulation Management…"), this);
    Core::Command *command =
        Core::ActionManager::registerAction(action, showViewActionId, Core::Context(Core::Constants::C_GLOBAL), false);
    connect(action, &QAction::triggered, this, &EmulationManagementPlugin::showEmulationManagementView);

    // Shared with other components; the one that makes it first gives it a title.
    Core::ActionContainer *menu = Core::ActionManager::createMenu(toolsMenuId);
    menu->addAction(command);
    Core::ActionManager::actionContainer(Core::Constants::M_TOOLS)->addMenu(menu);
}

// Nobody watches the camera of an emulator whose view is hidden.
void EmulationManagementPlugin::setupStreamsEnd()
{
    connect(&m_view, &QWindow::visibleChanged, this, [this](bool visible) {
        if (visible)
            return;
        if (m_cameraEmulationManager.streamRunning()) {
            m_cameraEmulationManager.stopVideoStream();
            m_cameraEmulationManager.stopCameraStream();
        }
        // No file ends what runs all the same: an unplugged camera or a new list makes a video count as stopped.
        m_cameraEmulationManager.startVideoStream({});
    });
}

void EmulationManagementPlugin::showEmulationManagementView()
{
    if (m_addingPortForwarding) // asked for again meanwhile: the first request goes on and does it all
        return;
    const QPointer<Tarn::Emulator> emulator = m_emulator;
    if (!emulator) {
        showMessageBox(
            tr("The emulation management plugin cannot be used. Please, close the emulator if it is running and add %1 "
               "Emulator to the list of available devices in Qt Creator settings.")
                .arg(Tarn::Sdk::osVariant()),
            {},
            QMessageBox::Ok);
        return;
    }

    const bool off = emulator->virtualMachine()->isOff();
    if (off) {
        m_view.hide();
        m_packagesChecked = false;
    }
    m_emulatorRunning = !off;

    if (!setUpPortForwarding())
        return;
    if (!emulator || m_emulator != emulator) { // it went while the rules were added: start over with what is there now
        showEmulationManagementView();
        return;
    }

    if (m_emulatorRunning) {
        Q_EMIT emulationManagementViewShowed();
        if (m_packagesChecked)
            showView();
        else
            checkEmulationPackages();
    } else {
        emulator->virtualMachine()->connectTo({}, this, Tarn::IgnoreAsynchronousReturn);
        m_connectionRequested = true;
    }
}

void EmulationManagementPlugin::showView()
{
    m_cameraEmulationManager.setupCameraStreamPipeline();
    m_view.show();
    m_view.raise(); // it may show already, behind the IDE
}

void EmulationManagementPlugin::showMessageBox(
    const QString &text, const QString &informativeText, const QFlags<QMessageBox::StandardButton> &buttons)
{
    QMessageBox box(
        QMessageBox::Information, tr("Emulation management plugin"), text, buttons, Core::ICore::mainWindow());
    box.setInformativeText(informativeText);
    box.setTextFormat(Qt::PlainText); // an emulator may have any name
    if (box.exec() == QMessageBox::Retry)
        showEmulationManagementView();
}

Tarn::Emulator *EmulationManagementPlugin::retrieveEmulator() const
{
    const QList<Tarn::Emulator *> emulators = Tarn::Sdk::emulators();
    return emulators.isEmpty() ? nullptr : emulators.first();
}

// Runs at every notification of the SDK and leaves earlier connections in place, so that each handler runs once per
// notification so far. The sensors are sent again that often, too.
void EmulationManagementPlugin::setUpEmulatorConnection()
{
    m_emulator = retrieveEmulator();
    if (!m_emulator)
        return;

    const QString deviceModelName = m_emulator->deviceModel().name;
    updateSensorsConfiguration(deviceModelName);
    m_smartphone3DModelConfig.updateSmartphone3DModel(deviceModelName);
    connect(
        m_emulator,
        &Tarn::Emulator::deviceModelNameChanged,
        this,
        &EmulationManagementPlugin::updateSensorsConfiguration);
    connect(
        m_emulator,
        &Tarn::Emulator::deviceModelNameChanged,
        &m_smartphone3DModelConfig,
        &Smartphone3DModelConfig::updateSmartphone3DModel);

    connect(
        &m_remoteDBusInvokerService,
        &RemoteDBusInvokerService::webSocketDisconnected,
        this,
        &EmulationManagementPlugin::handleConnectionLost);

    Tarn::VirtualMachine *virtualMachine = m_emulator->virtualMachine();
    connect(virtualMachine, &Tarn::VirtualMachine::virtualMachineOffChanged, this, [this](bool off) {
        setEmulatorRunning(!off);
    });
    connect(
        virtualMachine,
        &Tarn::VirtualMachine::stateChanged,
        this,
        &EmulationManagementPlugin::handleVirtualMachineState);
}

bool EmulationManagementPlugin::setUpPortForwarding()
{
    Tarn::VirtualMachine *virtualMachine = m_emulator->virtualMachine();
    if (virtualMachine->hasPortForwarding(RemoteDBusInvokerService::hostTcpPort)
        && virtualMachine->hasPortForwarding(CameraEmulationManager::udpPort)) {
        return true;
    }

    // Rules can be added only while the machine is off.
    if (m_emulatorRunning) {
        showMessageBox(
            tr("The emulation management plugin cannot be used. Please, close %1 and try to use 'Emulation "
               "management…' "
               "again.")
                .arg(m_emulator->name()),
            {},
            QMessageBox::Ok);
        return false;
    }

    const QScopedValueRollback adding(m_addingPortForwarding, true);
    const QPointer<Tarn::Emulator> emulator = m_emulator;
    const auto addRule = [&](const QString &name, const QString &protocol, quint16 hostPort, quint16 emulatorPort) {
        if (!emulator) // it may have gone while the rule before was added
            return;
        bool added = false; // a failure shows itself: the channel does not come up
        Tarn::execAsynchronous(
            added,
            &Tarn::VirtualMachine::addPortForwarding,
            emulator->virtualMachine(),
            name,
            protocol,
            hostPort,
            emulatorPort);
    };
    addRule(
        RemoteDBusInvokerService::portForwardingRule,
        u"tcp"_s,
        RemoteDBusInvokerService::hostTcpPort,
        RemoteDBusInvokerService::emulatorTcpPort);
    addRule(
        CameraEmulationManager::portForwardingRule,
        u"udp"_s,
        CameraEmulationManager::udpPort,
        CameraEmulationManager::udpPort);
    return true;
}

void EmulationManagementPlugin::setEmulatorRunning(bool running)
{
    if (!running) {
        m_view.hide();
        m_packagesChecked = false;
    }
    m_emulatorRunning = running;
}

void EmulationManagementPlugin::handleVirtualMachineState()
{
    if (!m_connectionRequested || !m_emulator)
        return;
    if (static_cast<int>(m_emulator->virtualMachine()->state()) != connectedState)
        return;
    checkEmulationPackages();
    m_connectionRequested = false;
}

// The track is lost with the connection. Without one, the channel comes back unnoticed.
void EmulationManagementPlugin::handleConnectionLost()
{
    if (!m_gpsEmulationManager.trackLoaded())
        return;
    m_gpsEmulationManager.setupGPSData();
    Q_EMIT m_gpsEmulationManager.replyFromEmulatorReceived({}); // the page clears its track
    const QString text = tr("Emulator connection is lost. Please, run %1 if it is needed and load the GPS-track again.")
                             .arg(m_emulator ? m_emulator->name() : Tarn::Sdk::osVariant());
    // Later: the channel, which is still reporting the loss, must not wait for the user before it connects again.
    QMetaObject::invokeMethod(this, [this, text] { showMessageBox(text, {}, QMessageBox::Ok); }, Qt::QueuedConnection);
}

void EmulationManagementPlugin::checkEmulationPackages()
{
    connect(
        &m_packagesChecker,
        &EmulationManagementPackagesChecker::checkFinished,
        this,
        &EmulationManagementPlugin::handlePackagesChecked);
    m_packagesChecker.checkPackages(m_emulator->virtualMachine()->sshParameters());
}

void EmulationManagementPlugin::handlePackagesChecked(const QString &message, const QString &detailedText)
{
    // Each check connects anew, also one that starts while the message box shows.
    m_packagesChecker.disconnect();
    if (!message.isEmpty()) {
        showMessageBox(message, detailedText, QMessageBox::Close);
        return;
    }
    m_packagesChecked = true;
    m_remoteDBusInvokerService.connectToEmulator();
    showView();
}

void EmulationManagementPlugin::updateSensorsConfiguration(const QString &deviceModelName)
{
    const QMap<QString, bool> sensors = m_emulatorModesSensorsConfigurations[deviceModelName].sensors;
    if (sensors.isEmpty()) {
        m_sensorsEmulationManager.makeAllSensorsAvailable();
        return;
    }
    for (const auto &[sensorName, available] : sensors.asKeyValueRange())
        m_sensorsEmulationManager.setSensorAvailable(sensorName, available);
}

} // namespace EmulationManagement::Internal
