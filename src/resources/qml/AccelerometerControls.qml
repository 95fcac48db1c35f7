// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

SensorControls {
    id: root

    sensorName: "accelerometer"
    title: qsTr("Accelerometer")
    controls: SensorControlsColumn {
        Repeater {
            model: ["x", "y", "z"]

            AxisSlider {
                id: row

                width: parent.width
                accessibleName: "%1 %2".arg(root.title).arg(label)
                minValue: -3.0
                maxValue: 3.0
                stepSize: 0.001
                numberRoundingSize: 3
                valueUnits: qsTr("g")
                resultValueMultiplier: 1000
                showCalculatedValue: true
                calculatedValue: value * 9.80665 / 1000
                calculatedValueUnits: qsTr("m/s") + "\u00b2"
                additionalControlsWidth: 110
                calculatedValueWidth: 85
                equalityLabelShow: true
                onSliderSubmited: value => root.manager["setAccelerometer" + axis](Math.round(value))

                Binding on value {
                    value: root.manager.accelerometer[row.modelData]
                }
            }
        }
    }
}
