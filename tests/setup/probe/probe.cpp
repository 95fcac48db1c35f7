// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "probe.h"

#include "ide/ide.h"

#include <coreplugin/actionmanager/actioncontainer.h>
#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/plugininstallwizard.h>
#include <extensionsystem/pluginmanager.h>
#include <extensionsystem/pluginspec.h>
#include <utils/filepath.h>

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QQmlError>
#include <QQuickItem>
#include <QQuickView>
#include <QSet>
#include <QTimer>
#include <QWizard>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace IdeTests;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace Probe {

namespace {

void say(const QString &text)
{
    std::printf("%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

bool waitFor(const std::function<bool()> &condition, std::chrono::seconds timeout)
{
    const QDeadlineTimer deadline(timeout);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QEventLoop loop;
        QTimer::singleShot(20ms, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

// Both plugins have to speak to the same SDK, whichever folder it comes from.
qsizetype loadedSdks()
{
    QFile maps(u"/proc/self/maps"_s);
    QSet<QByteArray> files;
    if (maps.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = maps.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.contains("/libTarn.so"))
                files.insert(line.mid(line.indexOf('/')));
        }
    }
    return files.size();
}

// The SDK asks for its emulators in the background. Each has a menu of its own.
bool anEmulatorIsListed()
{
    const Core::ActionContainer *container = Core::ActionManager::actionContainer("Vok.Tools.Menu");
    if (!container || !container->menu())
        return false;
    const QList<QAction *> actions = container->menu()->actions();
    return std::ranges::any_of(actions, [](const QAction *action) { return action->menu() != nullptr; });
}

// Boxes run event loops of their own, so their buttons are pressed from a timer.
class BoxAnswerer : public QObject
{
public:
    BoxAnswerer()
    {
        m_timer.callOnTimeout(this, [] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            say("box: "_L1 + box->text());
            box->accept();
        });
        m_timer.start(100ms);
    }

private:
    QTimer m_timer;
};

// Until a file beside the video says that the emulator has seen enough of it.
bool playsVideo(const QString &video)
{
    auto *camera = contextProperty(u"cameraEmulationManager"_s).value<QObject *>();
    if (!camera || !QMetaObject::invokeMethod(camera, "startVideoStream", video))
        return false;
    if (!waitFor([camera] { return camera->property("streamRunning").toBool(); }, 30s))
        return false;
    say(u"stream: running"_s);
    return waitFor([video] { return QFile::exists(video + ".enough"_L1); }, 120s);
}

} // namespace

bool look()
{
    for (const ExtensionSystem::PluginSpec *spec : ExtensionSystem::PluginManager::plugins()) {
        if (spec->vendorId() != "emulationmanagement"_L1 || spec->state() != ExtensionSystem::PluginSpec::Running)
            continue;
        say("plugin: "_L1 + spec->id());
    }
    say("sdks: "_L1 + QString::number(loadedSdks()));
    for (const QString &error : ExtensionSystem::PluginManager::allErrors())
        say("error: "_L1 + error);
    if (const QAction *action = showViewAction())
        say("menu: "_L1 + action->text());
    if (QQuickView *window = view()) {
        for (const QQmlError &error : window->errors())
            say("error: "_L1 + error.toString());
        if (window->status() == QQuickView::Ready) {
            say("window: "_L1 + window->title());
            for (const QString &page :
                 {u"sensorsManagementPage"_s,
                  u"sensorsValuesPage"_s,
                  u"smartphoneModelPage"_s,
                  u"gpsManagementPage"_s,
                  u"cameraManagementPage"_s}) {
                if (window->rootObject()->findChild<QQuickItem *>(page))
                    say("page: "_L1 + page);
            }
        }
    }
    return true;
}

bool open(const QString &video)
{
    const BoxAnswerer answerer;
    QAction *action = showViewAction();
    if (!action)
        return false;
    if (!waitFor(anEmulatorIsListed, 60s))
        return false;
    action->trigger();
    if (!waitFor([] { return view() && view()->isVisible(); }, 300s))
        return false;
    say(u"window: visible"_s);
    return playsVideo(video);
}

bool install(const QString &archive)
{
    // The wizard runs an event loop of its own.
    QTimer presser;
    QObject::connect(&presser, &QTimer::timeout, [] {
        auto *wizard = qobject_cast<QWizard *>(QApplication::activeModalWidget());
        if (!wizard || !wizard->currentPage()->isComplete())
            return;
        if (wizard->nextId() < 0) {
            say("wizard: "_L1 + wizard->currentPage()->title());
            wizard->accept();
        } else {
            wizard->next();
        }
    });
    presser.start(100ms);
    const Core::InstallResult result = Core::executePluginInstallWizard(Utils::FilePath::fromUserInput(archive));
    say(result == Core::InstallResult::Error ? u"installed: no"_s : u"installed: yes"_s);
    return result != Core::InstallResult::Error;
}

bool remove(const QString &id)
{
    const auto result = ExtensionSystem::PluginManager::removePluginOnRestart(id);
    if (!result)
        say("error: "_L1 + result.error());
    return bool(result);
}

} // namespace Probe
