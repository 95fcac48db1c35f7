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
    // How much black lies between the white text and the highlight, which is light in some themes.
    readonly property real shade: {
        const readable = 0.18; // a contrast of a little more than 4.5 to 1
        let part = 0;
        while (shadedLuminance(part) > readable)
            part += 0.02;
        return part;
    }

    function shadedLuminance(part: real): real {
        const channels = [highlightColor.r, highlightColor.g, highlightColor.b].map(channel => channel * (1 - part));
        const [red, green, blue] = channels.map(c => c <= 0.03928 ? c / 12.92 : Math.pow((c + 0.055) / 1.055, 2.4));
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    }

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
    }
    background: Rectangle {
        id: area

        implicitHeight: 40
        color: root.active ? root.highlightColor : root.backgroundColor
        border.width: root.visualFocus ? 2 : 0
        border.color: root.active ? "white" : defaultLabel.color

        // Where it is needed, the highlight itself is a bar at the edge.
        Rectangle {
            anchors {
                fill: parent
                margins: area.border.width
                leftMargin: 5
            }
            visible: root.active
            color: "black"
            opacity: root.shade
        }
    }

    Label {
        id: defaultLabel

        visible: false
    }
}
