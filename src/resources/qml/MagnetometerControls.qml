// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

SensorControls {
    id: root

    sensorName: "magnetometer"
    title: qsTr("Magnetometer")
    controls: SensorControlsColumn {
        Repeater {
            model: ["x", "y", "z"]

            AxisSlider {
                id: row

                width: parent.width
                accessibleName: "%1 %2".arg(root.title).arg(label)
                minValue: -65.0
                maxValue: 65.0
                stepSize: 0.001
                numberRoundingSize: 3
                valueUnits: qsTr("\u03bcT")
                resultValueMultiplier: 0.000001
                onSliderSubmited: value => root.manager["setMagnetometer" + axis](value)

                Binding on value {
                    value: root.manager.magnetometer[row.modelData]
                }
            }
        }

        CalibrationLevelSlider {
            width: parent.width
            accessibleName: "%1 %2".arg(root.title).arg(label)
            onSliderSubmited: value => root.manager.setMagnetometerCalibrationLevel(value)

            Binding on value {
                value: root.manager.magnetometer.calibrationLevel
            }
        }
    }
}
