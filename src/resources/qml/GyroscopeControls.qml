// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

SensorControls {
    id: root

    sensorName: "gyroscope"
    title: qsTr("Gyroscope")
    controls: SensorControlsColumn {
        Repeater {
            model: ["x", "y", "z"]

            AxisSlider {
                id: row

                width: parent.width
                accessibleName: "%1 %2".arg(root.title).arg(label)
                minValue: -25.0
                maxValue: 25.0
                stepSize: 0.001
                numberRoundingSize: 3
                valueUnits: qsTr("deg/s")
                onSliderSubmited: value => root.manager["setGyroscope" + axis](value)

                Binding on value {
                    value: root.manager.gyroscope[row.modelData]
                }
            }
        }
    }
}
