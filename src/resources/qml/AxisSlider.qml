// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// A row of a Repeater over the axes "x", "y" and "z" of a model.
SliderWithTextField {
    id: root

    required property string modelData
    readonly property string axis: modelData.toUpperCase()

    objectName: modelData + "Slider"
    label: ({
            x: qsTr("X"),
            y: qsTr("Y"),
            z: qsTr("Z")
        })[modelData]
}
