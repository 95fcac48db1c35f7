// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtSensors

SensorControls {
    id: root

    // Qt's description of the type lacks the enumerators.
    // qmllint disable missing-property
    readonly property var orientations: [
        {
            text: qsTr("TopUp"),
            value: OrientationReading.TopUp
        },
        {
            text: qsTr("TopDown"),
            value: OrientationReading.TopDown
        },
        {
            text: qsTr("LeftUp"),
            value: OrientationReading.LeftUp
        },
        {
            text: qsTr("RightUp"),
            value: OrientationReading.RightUp
        },
        {
            text: qsTr("FaceUp"),
            value: OrientationReading.FaceUp
        },
        {
            text: qsTr("FaceDown"),
            value: OrientationReading.FaceDown
        }
    ]
    // qmllint enable missing-property

    sensorName: "orientation"
    title: qsTr("Orientation Sensor")
    controls: SensorControlsColumn {
        LabelledComboBox {
            id: orientationBox

            objectName: "orientationBox"
            width: parent.width
            label: qsTr("Orientation")
            accessibleName: "%1 %2".arg(root.title).arg(label)
            model: root.orientations
            currentIndex: root.manager.orientation.orientation - 1
            onActivated: value => root.manager.setOrientation(value)
        }
    }
}
