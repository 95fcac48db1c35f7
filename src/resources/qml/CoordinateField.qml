// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0

// A number to be typed, behind its label. Enter submits it.
Row {
    id: root

    required property string label
    required property string fieldName
    required property double minValue
    required property double maxValue
    required property int decimals
    required property var locale
    // As it stands, 0 where it is none.
    readonly property double value: numberIn(textField.text)

    signal submitted(value: double)

    function numberIn(text: string): double {
        try {
            return Number.fromLocaleString(locale, text.trim()) || 0;
        } catch (error) {
            return 0;
        }
    }

    spacing: 10

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
    }

    TextField {
        id: textField

        objectName: root.fieldName
        width: 90
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
        Accessible.name: root.label
        onAccepted: root.submitted(root.value)
    }
}
