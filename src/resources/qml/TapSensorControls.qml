// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import org.quova 1.0

SensorControls {
    id: root

    readonly property var directions: [
        {
            text: qsTr("Undefined"),
            value: TapModel.Undefined
        },
        {
            text: qsTr("X_Both"),
            value: TapModel.X_Both
        },
        {
            text: qsTr("Y_Both"),
            value: TapModel.Y_Both
        },
        {
            text: qsTr("Z_Both"),
            value: TapModel.Z_Both
        },
        {
            text: qsTr("X_Pos"),
            value: TapModel.X_Pos
        },
        {
            text: qsTr("X_Neg"),
            value: TapModel.X_Neg
        },
        {
            text: qsTr("Z_Neg"),
            value: TapModel.Z_Neg
        },
        {
            text: qsTr("Z_Pos"),
            value: TapModel.Z_Pos
        },
        {
            text: qsTr("Y_Pos"),
            value: TapModel.Y_Pos
        },
        {
            text: qsTr("Y_Neg"),
            value: TapModel.Y_Neg
        }
    ]

    sensorName: "tap"
    title: qsTr("Tap Sensor")
    controls: SensorControlsColumn {
        LabelledComboBox {
            id: directionBox

            objectName: "directionBox"
            width: parent.width
            label: qsTr("Direction")
            accessibleName: "%1 %2".arg(root.title).arg(label)
            model: root.directions
            currentIndex: root.manager.tap.tapDirection + 1
            onActivated: value => root.manager.setTapSensorValue(value)
        }
    }
}
