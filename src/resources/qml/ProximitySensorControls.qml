// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls

SensorControls {
    id: root

    sensorName: "proximity"
    title: qsTr("Proximity Sensor")
    controls: SensorControlsColumn {
        SliderWithTextField {
            id: reflectanceSlider

            objectName: "reflectanceSlider"
            width: parent.width
            label: qsTr("Reflectance")
            accessibleName: "%1 %2".arg(root.title).arg(label)
            integer: true
            minValue: 0
            maxValue: 10
            stepSize: 1
            numberRoundingSize: 5
            showCalculatedValue: true
            calculatedValue: value * 100 / 1023
            calculatedValueWidth: 65
            onSliderSubmited: value => root.manager.setProximitySensorReflectanceValue(value)

            Binding on value {
                value: root.manager.proximity.reflectance
            }
        }

        Row {
            leftPadding: 85
            spacing: 5

            Button {
                id: nearButton

                objectName: "nearButton"
                text: qsTr("Near")
                Accessible.name: "%1 %2".arg(root.title).arg(text)
                onClicked: root.manager.setProximitySensorNearValue(true)
            }

            Button {
                id: farButton

                objectName: "farButton"
                text: qsTr("Far")
                Accessible.name: "%1 %2".arg(root.title).arg(text)
                onClicked: root.manager.setProximitySensorNearValue(false)
            }
        }
    }
}
