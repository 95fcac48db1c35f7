// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

SensorControls {
    id: root

    sensorName: "magnetometer"
    title: qsTr("Magnetic Field")
    controls: SensorControlsColumn {
        Repeater {
            model: ["x", "y", "z"]

            AxisSlider {
                id: row

                width: parent.width
                accessibleName: "%1 %2".arg(root.title).arg(label)
                minValue: -100.0
                maxValue: 100.0
                stepSize: 0.001
                numberRoundingSize: 3
                valueUnits: qsTr("\u03bcT")
                onSliderSubmited: value => root.manager["setMagneticField" + axis](value)

                Binding on value {
                    value: root.manager.magneticField[row.modelData]
                }
            }
        }
    }
}
