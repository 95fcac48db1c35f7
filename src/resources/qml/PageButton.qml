// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

Button {
    id: root

    property bool active: false
    // qmllint disable unqualified
    readonly property color highlightColor: themeHighlightColor
    readonly property color backgroundColor: themeBackgroundColorNormal
    // qmllint enable unqualified
    readonly property bool lightHighlight: highlightColor.hslLightness > 0.6

    leftPadding: 15
    rightPadding: 15
    Layout.fillWidth: true
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: active

    ToolTip.text: text
    ToolTip.visible: hovered && label.truncated
    ToolTip.delay: 700

    contentItem: Text {
        id: label

        text: root.text
        font: root.font
        color: root.active ? "white" : defaultLabel.color
        opacity: root.enabled ? 1.0 : 0.3
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        // A little smaller rather than cut off.
        fontSizeMode: Text.HorizontalFit
        minimumPointSize: Math.max(1, root.font.pointSize * 0.85)
        minimumPixelSize: Math.max(1, root.font.pixelSize * 0.85)
        // White on the light highlight of some themes needs an edge.
        style: root.active && root.lightHighlight ? Text.Outline : Text.Normal
        styleColor: "#606060"
    }
    background: Rectangle {
        implicitHeight: 40
        color: root.active ? root.highlightColor : root.backgroundColor
        border.width: root.visualFocus ? 2 : 0
        border.color: root.active ? "white" : defaultLabel.color
    }

    Label {
        id: defaultLabel

        visible: false
    }
}
