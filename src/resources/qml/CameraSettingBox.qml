// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A choice that somebody else keeps, and may change.
ComboBox {
    id: root

    required property int selectedIndex

    // A new model would begin at its first entry.
    function showSelection() {
        currentIndex = selectedIndex;
    }

    Layout.fillWidth: true
    Accessible.description: displayText
    onSelectedIndexChanged: showSelection()
    onModelChanged: showSelection()
    Component.onCompleted: showSelection()
}
