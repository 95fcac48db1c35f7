// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

SensorControls {
    id: root

    sensorName: "compass"
    title: qsTr("Compass")
    controls: SensorControlsColumn {
        SliderWithTextField {
            id: azimuthSlider

            objectName: "azimuthSlider"
            width: parent.width
            label: qsTr("Azimuth")
            accessibleName: "%1 %2".arg(root.title).arg(label)
            integer: true
            minValue: 0
            maxValue: 359
            stepSize: 1
            additionalControlsWidth: 110
            onSliderSubmited: value => root.manager.setCompassAzimuth(value)

            Binding on value {
                value: root.manager.compass.azimuth
            }
        }

        CalibrationLevelSlider {
            width: parent.width
            additionalControlsWidth: 110
            accessibleName: "%1 %2".arg(root.title).arg(label)
            onSliderSubmited: value => root.manager.setCompassCalibrationLevel(value)

            Binding on value {
                value: root.manager.compass.calibrationLevel
            }
        }
    }
}
