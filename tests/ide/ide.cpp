// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/ide.h"

#include <coreplugin/actionmanager/actionmanager.h>
#include <coreplugin/actionmanager/command.h>
#include <extensionsystem/iplugin.h>
#include <extensionsystem/pluginmanager.h>
#include <extensionsystem/pluginspec.h>

#include <QGuiApplication>
#include <QMutex>
#include <QQmlContext>
#include <QQuickView>

using namespace Qt::StringLiterals;

namespace IdeTests {

namespace {

// The IDE logs from several threads.
QMutex recordMutex;
QList<Message> record;
QtMessageHandler nextHandler = nullptr;

void recordMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    {
        const QMutexLocker locker(&recordMutex);
        record.append({type, QString::fromLatin1(context.category), text});
    }
    if (nextHandler)
        nextHandler(type, context, text);
}

} // namespace

void startRecordingMessages()
{
    nextHandler = qInstallMessageHandler(recordMessage);
}

QList<Message> recordedMessages()
{
    const QMutexLocker locker(&recordMutex);
    return record;
}

ExtensionSystem::IPlugin *plugin()
{
    for (const ExtensionSystem::PluginSpec *spec : ExtensionSystem::PluginManager::plugins()) {
        if (spec->id() == "emulationmanagement"_L1)
            return spec->plugin();
    }
    return nullptr;
}

QQuickView *view()
{
    for (QWindow *window : QGuiApplication::allWindows()) {
        auto *quickView = qobject_cast<QQuickView *>(window);
        if (quickView && quickView->rootContext()->contextProperty(u"emulationManagementPlugin"_s).isValid())
            return quickView;
    }
    return nullptr;
}

QAction *showViewAction()
{
    const Core::Command *command =
        Core::ActionManager::command("EmulationManagement.ShowEmulationManagementView.Action");
    return command ? command->action() : nullptr;
}

QVariant contextProperty(const QString &name)
{
    return view()->rootContext()->contextProperty(name);
}

} // namespace IdeTests
