// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls
import QtTest
import "qrc:/emulationmanagement/qml"

TestCase {
    id: root

    property SliderWithTextField row
    readonly property Item slider: row ? findChild(row, "slider") : null
    readonly property Item field: row ? findChild(row, "textField") : null

    function type(text: string) {
        mouseClick(field);
        keySequence(StandardKey.SelectAll);
        keyClick(Qt.Key_Delete);
        for (const character of text)
            keyClick(character);
    }

    function init() {
        failOnWarning(/.?/);
        row = createTemporaryObject(rowComponent, root);
        spy.target = row;
        spy.clear();
    }

    name: "SliderWithTextField"
    visible: true
    when: windowShown
    width: 600
    height: 200

    function test_defaults() {
        const plain = createTemporaryObject(plainComponent, root);
        compare(plain.locale.name, "en_US");
        compare(plain.valueUnits, "");
        compare(plain.resultValueMultiplier, 1);
        compare(plain.showCalculatedValue, false);
        compare(plain.equalityLabelShow, false);
    }

    function test_valueMovesSliderAndText() {
        row.value = 2500;
        compare(slider.value, 2.5);
        compare(field.text, "2.50");
        row.value = 2504;
        compare(field.text, "2.50");
        compare(spy.count, 0);
        compare(row.value, 2504); // shown rounded, kept as it is
    }

    function test_groupSeparatorsAreShown() {
        row.maxValue = 5000;
        row.value = 1234560;
        compare(field.text, "1,234.56");
    }

    function test_integerTextIsRounded_data(): var {
        return [[2.4, "2"], [2.5, "3"], [-2.4, "-2"], [-0.4, "0"]].map(([number, text]) => ({
                    tag: String(number),
                    number: number,
                    text: text
                }));
    }

    function test_integerTextIsRounded(data: var) {
        row.integer = true;
        row.value = data.number * 1000;
        compare(field.text, data.text);
    }

    function test_submitAppliesWithoutTelling() {
        type("1.25");
        compare(row.value, 0);
        row.submit();
        compare(row.value, 1250);
        compare(slider.value, 1.25);
        compare(spy.count, 0);
    }

    function test_enterTells() {
        type("1.25");
        keyClick(Qt.Key_Enter);
        compare(spy.count, 1);
        compare(spy.signalArguments[0][0], 1250);
        keyClick(Qt.Key_Enter); // once more on purpose
        compare(spy.count, 2);
        keyClick(Qt.Key_Tab); // leaving tells as well
        compare(spy.count, 3);
        compare(spy.signalArguments[2][0], 1250);
    }

    function test_leavingAnUneditedTextTellsNothing() {
        row.value = 1145.9155902616465;
        field.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        compare(spy.count, 0);
        compare(row.value, 1145.9155902616465); // not the digits shown
        compare(field.text, "1.15");
    }

    function test_leavingATextThatIsAsBeforeTellsNothing() {
        row.value = 1145.9155902616465;
        type("2");
        type("1.15");
        keyClick(Qt.Key_Tab);
        compare(spy.count, 0);
        compare(row.value, 1145.9155902616465);
    }

    function test_leavingATextThatAnotherHasChangedTellsNothing() {
        field.forceActiveFocus(Qt.TabFocusReason);
        row.value = 1145.9155902616465;
        compare(field.text, "1.15");
        keyClick(Qt.Key_Tab);
        compare(spy.count, 0);
        compare(row.value, 1145.9155902616465);
    }

    function test_aTextIsEditedOnce() {
        type("1.25");
        keyClick(Qt.Key_Tab);
        compare(spy.count, 1);
        field.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        compare(spy.count, 1);
    }

    function test_leavingAnUneditedUnacceptableTextTellsNothing() {
        row.maxValue = 5000;
        row.value = 1234560;
        field.forceActiveFocus(Qt.TabFocusReason);
        verify(!field.acceptableInput); // for its group separator
        keyClick(Qt.Key_Tab);
        compare(spy.count, 0);
        compare(row.value, 1234560);
        compare(field.text, "1,234.56");
    }

    function test_leavingAppliesAnEditedText() {
        type("-1.5");
        row.textFieldFocus = false;
        compare(spy.count, 1);
        compare(row.value, -1500);
        compare(field.text, "-1.50");
    }

    function test_leavingRestoresAnUnacceptableText() {
        row.value = 2000;
        type("-");
        row.textFieldFocus = false;
        compare(field.text, "2.00");
        compare(spy.count, 0);
    }

    function test_typingIsShownAsTheNumberItIs() {
        type("+01.5");
        keyClick(Qt.Key_Return);
        compare(row.value, 1500);
        compare(field.text, "1.50");
    }

    function test_dragTellsOncePerMovementStep() {
        const center = slider.width / 2;
        mousePress(slider, center, slider.height / 2);
        const values = [];
        const before = spy.count;
        slider.moved.connect(() => values.push(slider.value));
        for (let x = 1; x <= 60; ++x)
            mouseMove(slider, center + x, slider.height / 2);
        mouseRelease(slider, center + 60, slider.height / 2);
        verify(values.length >= 50);
        compare(spy.count - before, values.length);
        compare(new Set(values).size, values.length);
        const told = [];
        for (let i = before; i < spy.count; ++i)
            told.push(spy.signalArguments[i][0]);
        values.forEach((value, i) => fuzzyCompare(told[i], value * 1000, 1e-6));
    }

    function test_movingTheMouseAloneTellsNothing() {
        for (let x = 0; x < slider.width; x += 5)
            mouseMove(slider, x, slider.height / 2);
        mouseWheel(slider, slider.width / 2, slider.height / 2, 0, 120);
        compare(spy.count, 0);
    }

    function test_anotherWindowTakesTheKeys() {
        type("1.25");
        const other = createTemporaryObject(otherWindowComponent, null);
        other.requestActivate();
        tryCompare(other, "active", true);
        compare(field.activeFocus, false);
        compare(spy.count, 0);
        other.close();
        root.Window.window.requestActivate();
        tryCompare(field, "activeFocus", true);
        compare(field.text, "1.25");
        slider.forceActiveFocus();
        compare(spy.count, 1);
        compare(row.value, 1250);
    }

    function test_anotherWindowTakesTheKeysOfAnUneditedText() {
        row.value = 1145.9155902616465;
        field.forceActiveFocus(Qt.TabFocusReason);
        const other = createTemporaryObject(otherWindowComponent, null);
        other.requestActivate();
        tryCompare(other, "active", true);
        row.value = 1155.5;
        other.close();
        root.Window.window.requestActivate();
        tryCompare(field, "activeFocus", true);
        slider.forceActiveFocus();
        compare(spy.count, 0);
        compare(row.value, 1155.5);
    }

    function test_popupTakesTheKeys() {
        type("1.25");
        const popup = createTemporaryObject(popupComponent, root);
        popup.open();
        tryCompare(popup, "opened", true);
        compare(field.activeFocus, false);
        compare(spy.count, 0);
        popup.close();
        tryCompare(field, "activeFocus", true);
        compare(spy.count, 0);
        compare(field.text, "1.25");
    }

    function test_keysStepFromWhereTheValueIs() {
        row.value = 1145.9155902616465;
        slider.forceActiveFocus();
        keyClick(Qt.Key_Right);
        compare(spy.count, 1);
        fuzzyCompare(row.value, 1145.9155902616465 + 10, 1e-6);
    }

    function test_arrowKeysMeetZeroExactly() {
        row.value = 30;
        slider.forceActiveFocus(Qt.TabFocusReason);
        for (let i = 0; i < 6; ++i)
            keyClick(Qt.Key_Left);
        compare(spy.count, 6);
        compare(spy.signalArguments.map(values => values[0].toPrecision(6)), ["20.0000", "10.0000", "0.00000", "-10.0000", "-20.0000", "-30.0000"]);
        compare(field.text, "-0.03");
    }

    function test_keysAtTheEndTellNothing() {
        row.value = 3000;
        slider.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        compare(spy.count, 0);
    }

    function test_valueOutsideTheRangeShowsTheEnd() {
        row.value = 5000;
        compare(slider.value, 3);
        compare(field.text, "3.00");
        compare(spy.count, 0);
    }

    function test_rotationControls() {
        const controls = createTemporaryObject(rotationComponent, root);
        compare([controls.sensorName, controls.title], ["rotation", "Rotation Sensor"]);
        const ranges = ["x", "y", "z"].map(axis => {
            const axisRow = findChild(controls, axis + "Slider");
            verify(axisRow.integer);
            return [axisRow.label, axisRow.minValue, axisRow.maxValue, axisRow.stepSize];
        });
        compare(ranges, [["X", -90, 90, 1], ["Y", -179, 180, 1], ["Z", -179, 180, 1]]);
    }

    SignalSpy {
        id: spy

        signalName: "sliderSubmited"
    }

    Component {
        id: otherWindowComponent

        Window {
            visible: true
            width: 100
            height: 100
        }
    }

    Component {
        id: popupComponent

        Popup {
            focus: true
            modal: true
        }
    }

    Component {
        id: plainComponent

        SliderWithTextField {}
    }

    Component {
        id: rotationComponent

        RotationSensorControls {}
    }

    Component {
        id: rowComponent

        SliderWithTextField {
            width: 600
            label: "Row"
            minValue: -3
            maxValue: 3
            stepSize: 0.01
            numberRoundingSize: 2
            resultValueMultiplier: 1000
        }
    }
}
