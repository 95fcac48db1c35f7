// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// Where the emulator was put last.
GridLayout {
    id: root

    required property string latitude
    required property string longitude
    required property string altitude

    component Value: Label {
        required property string name

        Layout.alignment: Qt.AlignRight
        Accessible.name: text
        Accessible.description: name
    }

    columns: 2
    columnSpacing: 10
    rowSpacing: 5

    Label {
        text: qsTr("Latitude")
    }

    Value {
        id: currentLatitudeLabel

        objectName: "currentLatitudeLabel"
        name: qsTr("Latitude")
        text: root.latitude
    }

    Label {
        text: qsTr("Longitude")
    }

    Value {
        id: currentLongitudeLabel

        objectName: "currentLongitudeLabel"
        name: qsTr("Longitude")
        text: root.longitude
    }

    Label {
        text: qsTr("Altitude")
    }

    Value {
        id: currentAltitudeLabel

        objectName: "currentAltitudeLabel"
        name: qsTr("Altitude")
        text: root.altitude
    }
}
