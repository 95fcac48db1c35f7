// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.quova 1.0

// The controls of one sensor below its name.
Item {
    id: root

    readonly property SensorsEmulationManager manager: sensorsEmulationManager // qmllint disable unqualified
    property string sensorName
    property alias title: titleLabel.text
    property alias controlsEnabled: root.enabled
    property alias controls: loader.sourceComponent

    function clearFocus() {
        const column = loader.item as SensorControlsColumn;
        if (column)
            column.clearFocus();
    }

    width: parent ? parent.width / 2 : 0
    implicitHeight: loader.y + loader.height
    clip: true // each move of the mouse looks for a cursor; this spares it all text fields of sensors elsewhere
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    PageTitle {
        id: titleLabel

        objectName: "titleLabel"
        enabled: root.enabled
    }

    LazyLoader {
        id: loader

        objectName: "loader"
        anchors {
            left: parent.left
            right: parent.right
            top: titleLabel.bottom
            topMargin: 5
        }
    }
}
