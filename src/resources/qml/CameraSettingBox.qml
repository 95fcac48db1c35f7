// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "../js/plain-text.js" as PlainText

// A choice that somebody else keeps, and may change.
ComboBox {
    id: root

    required property int selectedIndex
    readonly property TextInput field: contentItem as TextInput
    // A camera's name may be longer than its box, which cuts it off.
    readonly property bool truncated: field && field.contentWidth > field.width - field.leftPadding - field.rightPadding

    // A new model would begin at its first entry.
    function showSelection() {
        currentIndex = selectedIndex;
    }

    Layout.fillWidth: true
    ToolTip.text: PlainText.asWritten(displayText)
    ToolTip.visible: hovered && truncated && !popup.visible
    ToolTip.delay: 700
    Accessible.description: displayText
    // The style's own, but cameras name themselves: neither is a "<" the begin of a tag, nor an "&" the mark of a key.
    delegate: MenuItem {
        required property var model
        required property int index

        width: ListView.view.width
        text: PlainText.asWritten(model[root.textRole]).replace(/&/g, "&&")
        font.weight: root.currentIndex === index ? Font.DemiBold : Font.Normal
        highlighted: root.highlightedIndex === index
        hoverEnabled: root.hoverEnabled
    }
    onSelectedIndexChanged: showSelection()
    onModelChanged: showSelection()
    Component.onCompleted: showSelection()
}
