// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

SensorControls {
    id: root

    sensorName: "rotation"
    title: qsTr("Rotation Sensor")
    controls: SensorControlsColumn {
        Repeater {
            model: ["x", "y", "z"]

            AxisSlider {
                width: parent.width
                accessibleName: "%1 %2".arg(root.title).arg(label)
                integer: true
                minValue: modelData === "x" ? -90 : -179
                maxValue: modelData === "x" ? 90 : 180
                stepSize: 1
            }
        }
    }
}
