// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0

// One number: a label, a slider, a text field, the unit and, where wanted, a value calculated from the number.
// The slider and the field work in display units, "value" is in the model's.
Item {
    id: root

    property var locale: Qt.locale("en_US")
    property string label
    property string accessibleName: label
    property bool integer
    property double minValue
    property double maxValue
    property double stepSize
    property int numberRoundingSize
    property string valueUnits
    property double resultValueMultiplier: 1.0
    property bool showCalculatedValue: false
    property string calculatedValueUnits
    property double calculatedValue
    property double value
    property alias additionalControlsWidth: additionalControls.width
    property alias calculatedValueWidth: calculatedValueLabel.width
    property alias equalityLabelShow: equalityLabel.visible
    property alias textFieldFocus: textField.focus
    // What the field shows while nobody has edited it.
    property string shownText

    signal sliderSubmited(value: double)

    // Applies the text without telling anyone.
    function submit() {
        if (textField.acceptableInput)
            value = Number(textField.text) * resultValueMultiplier;
        showSliderValue();
    }

    function submitText() {
        submit();
        sliderSubmited(value);
    }

    function submitSliderValue() {
        // Arrow keys add up steps; without this a row of them would miss zero by a rounding error.
        value = Number(slider.value.toFixed(9)) * resultValueMultiplier;
        sliderSubmited(value);
    }

    function showSliderValue() {
        const edited = textField.text !== shownText;
        textField.text = integer ? String(Math.round(slider.value)) : formatted(slider.value);
        if (!edited)
            shownText = textField.text;
    }

    // Looking at a field changes nothing: the text may show fewer digits than the value has.
    function leaveText() {
        if (textField.text !== shownText) {
            if (textField.acceptableInput)
                submitText();
            else
                showSliderValue();
        }
        shownText = textField.text;
    }

    function formatted(number: double): string {
        return number.toLocaleString(locale, "f", numberRoundingSize);
    }

    implicitWidth: 300
    implicitHeight: textField.implicitHeight

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

    Slider {
        id: slider

        objectName: "slider"
        anchors {
            left: rowLabel.right
            leftMargin: 5
            right: textField.left
            rightMargin: 10
            verticalCenter: parent.verticalCenter
        }
        from: root.minValue
        to: root.maxValue
        stepSize: root.stepSize
        snapMode: Slider.SnapAlways
        value: root.value / root.resultValueMultiplier
        Accessible.name: root.accessibleName
        Accessible.description: root.valueUnits
        Component.onCompleted: root.showSliderValue()
        onValueChanged: root.showSliderValue()
        onMoved: root.submitSliderValue()
    }

    TextField {
        id: textField

        objectName: "textField"
        anchors {
            right: additionalControls.left
            rightMargin: 5
            verticalCenter: parent.verticalCenter
        }
        width: 75
        horizontalAlignment: TextInput.AlignRight
        selectByMouse: true
        inputMethodHints: Qt.ImhFormattedNumbersOnly
        validator: TextFieldDoubleValidator {
            bottom: root.minValue
            top: root.maxValue
            decimals: root.numberRoundingSize
            notation: TextFieldDoubleValidator.StandardNotation
        }
        Accessible.name: root.accessibleName
        Accessible.description: root.valueUnits
        onAccepted: root.submitText()
        onActiveFocusChanged: {
            // Another window or a popup has the keys for a while only; the field is where they come back to.
            if (!activeFocus && focusReason !== Qt.ActiveWindowFocusReason && focusReason !== Qt.PopupFocusReason)
                root.leaveText();
        }
    }

    Row {
        id: additionalControls

        objectName: "additionalControls"
        anchors {
            right: parent.right
            verticalCenter: parent.verticalCenter
        }
        width: 85
        spacing: 5

        Label {
            id: unitsLabel

            objectName: "unitsLabel"
            visible: text !== ""
            text: root.valueUnits
        }

        Label {
            id: equalityLabel

            objectName: "equalityLabel"
            visible: root.showCalculatedValue
            text: "="
        }

        Label {
            id: calculatedValueLabel

            objectName: "calculatedValueLabel"
            visible: root.showCalculatedValue
            text: [root.formatted(root.calculatedValue), root.calculatedValueUnits].join(" ").trim()
        }
    }
}
