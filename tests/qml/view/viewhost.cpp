// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "view/viewhost.h"

#include "camera/cameraemulationmanager.h"
#include "gps/gpsemulationmanager.h"
#include "plugin/qmlsetup.h"
#include "sensors/sensorsemulationmanager.h"
#include "utils/testcameras.h"

#include <coreplugin/icore.h>
#include <extensionsystem/pluginmanager.h>
#include <utils/qtcsettings.h>
#include <utils/theme/theme.h>
#include <utils/theme/theme_p.h>

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace EmulationManagement::Internal;

namespace {
QMainWindow *theMainWindow = nullptr;

const QString lastFrame = u"the last frame was sent before this "_s;
} // namespace

// Dialogs ask the IDE for nothing but its main window; this one is the test's.
QMainWindow *Core::ICore::mainWindow()
{
    return theMainWindow;
}

namespace TestView {

ViewHost::ViewHost()
    : m_settingsDir(std::make_unique<QTemporaryDir>())
    , m_pluginManager(std::make_unique<ExtensionSystem::PluginManager>())
    , m_mainWindow(std::make_unique<QMainWindow>())
    , m_palette(QApplication::palette())
{
    using ExtensionSystem::PluginManager;
    PluginManager::setSettings(
        new Utils::QtcSettings(m_settingsDir->filePath(u"settings.ini"_s), QSettings::IniFormat));
    theMainWindow = m_mainWindow.get();
    registerViewTypes();
    TestUtils::TestCameras::install();
    openChannel();
}

ViewHost::~ViewHost()
{
    m_camera.reset();
    m_gps.reset();
    m_sensors.reset(); // writes the settings
    theMainWindow = nullptr;
}

void ViewHost::openChannel()
{
    if (!m_invoker.listen(RemoteDBusInvokerService::hostTcpPort))
        qFatal("The channel's port is taken.");
    bool connected = false;
    connect(
        &m_channel,
        &RemoteDBusInvokerService::webSocketConnected,
        this,
        [&connected] { connected = true; },
        Qt::SingleShotConnection);
    m_channel.connectToEmulator();
    if (!QTest::qWaitFor([&] { return connected && m_invoker.clients() == 1; }, 30'000))
        qFatal("The channel does not open.");
}

QStringList ViewHost::takeFrames()
{
    // One channel keeps the order: when this frame is here, all earlier ones are. What comes after it, of a page that
    // sends by itself, is for the next call.
    m_channel.callDBusMethod(lastFrame, {}, {}, {}, {}, {});
    qsizetype last = -1;
    const auto lastIsHere = [&] {
        m_frames += m_invoker.takeFrames();
        const auto isLast = [](const QString &frame) { return frame.startsWith(lastFrame); };
        last = std::ranges::find_if(m_frames, isLast) - m_frames.begin();
        return last < m_frames.size();
    };
    if (!QTest::qWaitFor(lastIsHere, 30'000))
        qFatal("The recording invoker has lost its connection.");
    const QStringList frames = m_frames.first(last);
    m_frames.remove(0, last + 1);
    return frames;
}

void ViewHost::setTheme(const QString &name)
{
    if (m_theme == name)
        return;
    m_theme = name;
    auto *theme = new Utils::Theme(name);
    QSettings file(u"" EMULATIONMANAGEMENT_IDE_THEMES "/%1.creatortheme"_s.arg(name), QSettings::IniFormat);
    theme->readSettings(file);
    Utils::setCreatorTheme(theme);
    QApplication::setPalette(m_palette); // a theme without a palette of its own leaves that of the one before
    Utils::setThemeApplicationPalette();
    if (m_context)
        setThemeContextProperties(m_context);
    Q_EMIT themeChanged();
}

QStringList ViewHost::themes()
{
    QStringList names;
    const QDir folder(QStringLiteral(EMULATIONMANAGEMENT_IDE_THEMES));
    for (const QFileInfo &file : folder.entryInfoList({u"*.creatortheme"_s}, QDir::Files))
        names.append(file.completeBaseName());
    return names;
}

void ViewHost::setUp(QQmlContext *context)
{
    m_context = context;
    startAnew();
    context->setContextProperty(u"remoteDBusInvokerService"_s, &m_channel);
    setThemeContextProperties(m_context);
}

void ViewHost::startAnew()
{
    m_camera.reset();
    m_gps.reset();
    m_sensors.reset();
    TestUtils::TestCameras::unplugAll();
    ExtensionSystem::PluginManager::settings()->clear();
    m_gps = std::make_unique<GPSEmulationManager>();
    m_sensors = std::make_unique<SensorsEmulationManager>(nullptr);
    m_camera = std::make_unique<CameraEmulationManager>();
    // The plugin binds the GPS manager twice.
    m_gps->setRdbusinvoker(&m_channel);
    m_sensors->setRdbusinvoker(&m_channel);
    m_gps->setRdbusinvoker(&m_channel);
    m_context->setContextProperty(u"gpsEmulationManager"_s, m_gps.get());
    m_context->setContextProperty(u"sensorsEmulationManager"_s, m_sensors.get());
    m_context->setContextProperty(u"cameraEmulationManager"_s, m_camera.get());
    takeFrames();
}

void ViewHost::reconnect()
{
    const int before = m_invoker.connections();
    m_invoker.dropClients();
    if (!QTest::qWaitFor([&] { return m_invoker.connections() > before && m_invoker.clients() == 1; }, 30'000))
        qFatal("The channel does not come back.");
}

void ViewHost::setSensorAvailable(const QString &sensorName, bool available)
{
    m_sensors->setSensorAvailable(sensorName, available);
}

void ViewHost::plugCamera(const QString &name, const QString &formats, const QColor &color)
{
    TestUtils::TestCameras::plug({.name = name, .caps = formats.toUtf8(), .device = u"/dev/"_s + name, .color = color});
    if (!QTest::qWaitFor([&] { return m_camera->cameras().contains(name); }, 30'000))
        qFatal("The camera is not noticed.");
}

void ViewHost::unplugCamera(const QString &name)
{
    TestUtils::TestCameras::unplug(name);
    if (!QTest::qWaitFor([&] { return !m_camera->cameras().contains(name); }, 30'000))
        qFatal("It is not noticed that the camera is gone.");
}

void ViewHost::setupCameraStreamPipeline()
{
    m_camera->setupCameraStreamPipeline();
}

} // namespace TestView
