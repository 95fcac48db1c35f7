// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls

// A choice in a row like those of the sliders.
Item {
    id: root

    property string label
    property string accessibleName: label
    property alias model: comboBox.model
    property alias currentIndex: comboBox.currentIndex

    signal activated(value: int)

    implicitWidth: 300
    implicitHeight: comboBox.implicitHeight

    Label {
        id: rowLabel

        objectName: "rowLabel"
        anchors {
            left: parent.left
            verticalCenter: parent.verticalCenter
        }
        width: Math.max(implicitWidth, 80)
        text: root.label
    }

    ComboBox {
        id: comboBox

        objectName: "comboBox"
        anchors {
            left: rowLabel.right
            leftMargin: 5
            verticalCenter: parent.verticalCenter
        }
        width: Math.min(200, root.width - x)
        textRole: "text"
        valueRole: "value"
        Accessible.name: root.accessibleName
        Accessible.description: displayText
        onActivated: root.activated(currentValue)
    }
}
