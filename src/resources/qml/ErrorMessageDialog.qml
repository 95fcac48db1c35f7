// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick.Dialogs
import "../js/plain-text.js" as PlainText

MessageDialog {
    id: root

    title: qsTr("Error")
    buttons: MessageDialog.Ok
    onTextChanged: text = PlainText.asWritten(text)
}
