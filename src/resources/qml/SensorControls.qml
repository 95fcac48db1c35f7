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
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    // Each move of the mouse looks for a cursor: clipped, this one spares it all text fields of sensors elsewhere. A large
    // font may need the space up to the next sensor.
    Item {
        anchors {
            fill: parent
            rightMargin: -15
        }
        clip: true

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
                rightMargin: 15
                top: titleLabel.bottom
                topMargin: 5
            }
        }
    }
}
