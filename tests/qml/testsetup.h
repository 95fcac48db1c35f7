// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "utils/messageboxanswerer.h"
#include "view/viewhost.h"

#include <QObject>

class QQmlEngine;

/// The message boxes of the view's native dialogs, for tests in QML.
class MessageBoxes : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Click this button (a MessageDialog.StandardButton) of the next box; with "tick", tick its check box before.
    Q_INVOKABLE void click(int button, bool tick = false);
    /// The boxes seen since the last call, as objects with "text", "buttons" and "checkBoxVisible".
    Q_INVOKABLE QVariantList takeSeen();
    Q_INVOKABLE int unanswered() const { return m_answerer.unanswered(); }

private:
    TestUtils::MessageBoxAnswerer m_answerer;
};

/// Gives every test document the view's surroundings and notes what the engine warns of.
class TestSetup : public QObject
{
    Q_OBJECT

public:
    int warnings() const { return m_warnings; }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine);

private:
    TestView::ViewHost m_host;
    MessageBoxes m_messageBoxes;
    int m_warnings = 0;
};
