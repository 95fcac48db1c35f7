// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the view uses of Qt Quick, without the view: loading this loads the modules ahead of it. The one that brings most
// libraries is first, since the others wait until the IDE's own thread has time.
// qmllint disable unused-imports
import QtQuick.Dialogs
import QtQuick.Controls
import QtQuick.Layouts
import QtQml

QtObject {}
