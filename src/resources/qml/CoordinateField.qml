// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0

// A number to be typed, which is submitted with Enter.
TextField {
    id: root

    required property double minValue
    required property double maxValue
    required property int decimals

    implicitWidth: 90
    horizontalAlignment: TextInput.AlignRight
    selectByMouse: true
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    text: "0"
    validator: TextFieldDoubleValidator {
        bottom: root.minValue
        top: root.maxValue
        decimals: root.decimals
        notation: TextFieldDoubleValidator.StandardNotation
    }
}
