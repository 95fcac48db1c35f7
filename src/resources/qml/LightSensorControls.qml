// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.quova 1.0

SensorControls {
    id: root

    readonly property var lightLevels: [
        {
            text: qsTr("Undefined"),
            value: AlsModel.Undefined
        },
        {
            text: qsTr("Dark"),
            value: AlsModel.Dark
        },
        {
            text: qsTr("Twilight"),
            value: AlsModel.Twilight
        },
        {
            text: qsTr("Light"),
            value: AlsModel.Light
        },
        {
            text: qsTr("Bright"),
            value: AlsModel.Bright
        },
        {
            text: qsTr("Sunny"),
            value: AlsModel.Sunny
        }
    ]

    // The last level that the light reaches, -1 below the first.
    function lightLevelIndex(lux: double): int {
        return lightLevels.filter(level => level.value <= lux).length - 1;
    }

    sensorName: "als"
    title: qsTr("Light Sensor")
    controls: SensorControlsColumn {
        LabelledComboBox {
            id: lightLevelBox

            objectName: "lightLevelBox"
            width: parent.width
            label: qsTr("Light level")
            accessibleName: "%1 %2".arg(root.title).arg(label)
            model: root.lightLevels
            currentIndex: root.lightLevelIndex(root.manager.als.lux)
            onActivated: value => root.manager.setAlsLightLevel(value)
        }

        SliderWithTextField {
            id: luxSlider

            objectName: "luxSlider"
            width: parent.width
            accessibleName: root.title
            integer: true
            minValue: -1
            maxValue: 3000
            stepSize: 1
            additionalControlsWidth: 110
            valueUnits: qsTr("lx")
            onSliderSubmited: value => root.manager.setAlsLuxValue(value)

            Binding on value {
                value: root.manager.als.lux
            }
        }
    }
}
