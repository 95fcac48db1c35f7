// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

Button {
    id: root

    property bool active: false

    leftPadding: 15
    rightPadding: 15
    Layout.fillWidth: true
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: active

    contentItem: Text {
        text: root.text
        font: root.font
        color: root.active ? "white" : defaultLabel.color
        opacity: root.enabled ? 1.0 : 0.3
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        implicitHeight: 40
        // qmllint disable unqualified
        color: root.active ? themeHighlightColor : themeBackgroundColorNormal
        // qmllint enable unqualified
        border.width: root.visualFocus ? 2 : 0
        border.color: root.active ? "white" : defaultLabel.color
    }

    Label {
        id: defaultLabel

        visible: false
    }
}
