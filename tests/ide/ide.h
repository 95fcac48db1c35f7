// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QVariant>

class QAction;
class QQuickView;

namespace ExtensionSystem {
class IPlugin;
}

/// What a test finds inside the IDE, by the ways that are open to every plugin.
namespace IdeTests {

struct Message
{
    QtMsgType type = QtDebugMsg;
    QString category;
    QString text;
};

/// Keeps everything that is logged from now on, and passes it on.
void startRecordingMessages();
QList<Message> recordedMessages();

/// The plugin under test.
ExtensionSystem::IPlugin *plugin();

/// Its window.
QQuickView *view();

/// Its menu entry.
QAction *showViewAction();

/// A context property of the view; invalid if there is none.
QVariant contextProperty(const QString &name);

} // namespace IdeTests
