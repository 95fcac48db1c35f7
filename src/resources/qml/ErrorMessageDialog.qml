// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick.Dialogs

MessageDialog {
    id: root

    title: qsTr("Error")
    buttons: MessageDialog.Ok
}
