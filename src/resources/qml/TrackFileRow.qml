// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The track's file, and the way to another one.
RowLayout {
    id: root

    required property string url
    required property bool loading

    signal openRequested

    spacing: 5

    Label {
        text: qsTr("Track file")
    }

    TextField {
        id: trackFileField

        objectName: "trackFileField"
        readOnly: true
        selectByMouse: true
        text: root.url
        Layout.fillWidth: true
        Accessible.name: qsTr("Track file")
    }

    BusyIndicator {
        id: loadingIndicator

        objectName: "loadingIndicator"
        running: root.loading
        visible: running
        Layout.preferredWidth: openFileButton.height
        Layout.preferredHeight: openFileButton.height
        Accessible.name: qsTr("The track file is being read")
    }

    Button {
        id: openFileButton

        objectName: "openFileButton"
        text: qsTr("…")
        Layout.preferredWidth: 40
        Accessible.name: qsTr("Open a track file")
        onClicked: root.openRequested()
    }
}
