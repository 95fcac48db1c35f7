// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls
import QtTest

ViewTestCase {
    id: root

    readonly property Item page: view ? findChild(view, "sensorsValuesPage") : null

    // The rows of one component that differ in the axis only.
    function axisRows(controls: string, name: string, shared: var): var {
        return ["X", "Y", "Z"].map(axis => {
            const frames = number => shared.call ? [frame(shared.call + axis, shared.argument(number))] : [];
            return Object.assign({
                tag: name + " " + axis,
                row: controls + "/" + axis.toLowerCase() + "Slider",
                label: axis,
                step: 0.001,
                decimals: 3,
                integer: false,
                property: axis.toLowerCase(),
                typedFrames: frames(shared.typedSent),
                maxFrames: frames(shared.maxSent),
                minFrames: frames(shared.minSent),
                nextFrames: frames(shared.nextSent)
            }, shared);
        });
    }

    function sliderRows(): var {
        const int32 = number => "int32:" + number;
        const doubleArgument = number => "double:" + number;
        const flat = frame("setAccelerometerValues", "int32:0 int32:0 int32:1000");
        const heading = (x, y) => [flat, frame("setMagnetometerValues", "double:%1 double:%2 double:0".arg(x).arg(y))];
        const one = (method, number) => [frame(method, int32(number))];
        return [...axisRows("accelerometerControls", "accelerometer", {
                sensor: "accelerometer",
                model: "accelerometer",
                call: "setAccelerometer",
                argument: int32,
                min: -3,
                max: 3,
                units: "g",
                multiplier: 1000,
                typed: "-1.001",
                typedSent: "-1001",
                maxSent: "3000",
                minSent: "-3000",
                start: 1000,
                next: "1.001",
                nextSent: "1001",
                shown: -2345,
                shownText: "-2.345"
            }), ...axisRows("magnetometerControls", "magnetometer", {
                sensor: "magnetometer",
                model: "magnetometer",
                call: "setMagnetometer",
                argument: doubleArgument,
                min: -65,
                max: 65,
                units: "\u03bcT",
                multiplier: 0.000001,
                typed: "43",
                typedSent: "4.3e-05",
                maxSent: "6.5e-05",
                minSent: "-6.5e-05",
                start: 0.00004,
                next: "40.001",
                nextSent: "4.0001e-05",
                shown: 4.3e-05,
                shownText: "43.000"
            }), ...axisRows("magneticFieldControls", "magnetic field", {
                sensor: "magnetometer",
                model: "magneticField",
                min: -100,
                max: 100,
                units: "\u03bcT",
                multiplier: 1,
                typed: "-48.761",
                start: 5.95,
                next: "5.951",
                shown: -48.76,
                shownText: "-48.760"
            }), ...axisRows("gyroscopeControls", "gyroscope", {
                sensor: "gyroscope",
                model: "gyroscope",
                call: "setGyroscope",
                argument: doubleArgument,
                min: -25,
                max: 25,
                units: "deg/s",
                multiplier: 1,
                typed: "0.125",
                typedSent: "0.125",
                maxSent: "25",
                minSent: "-25",
                start: 1.25,
                next: "1.251",
                nextSent: "1.251",
                shown: 1.1459155902616465,
                shownText: "1.146"
            }), ...[["magnetometer", "setMagnetometerCalibrationLevel"], ["compass", "setMagnetometerCalibrationLevel"]].map(([model, method]) => ({
                        tag: model + " calibration level",
                        row: model + "Controls/calibrationLevelSlider",
                        label: "Calib. level",
                        sensor: model,
                        model: model,
                        property: "calibrationLevel",
                        min: 0,
                        max: 3,
                        step: 1,
                        decimals: 0,
                        integer: true,
                        units: "",
                        multiplier: 1,
                        typed: "2",
                        typedFrames: one(method, 2),
                        maxFrames: one(method, 3),
                        minFrames: one(method, 0),
                        start: 1,
                        next: "2",
                        nextFrames: one(method, 2),
                        shown: 3,
                        shownText: "3"
                    })),
            {
                tag: "compass azimuth",
                row: "compassControls/azimuthSlider",
                label: "Azimuth",
                sensor: "compass",
                model: "compass",
                property: "azimuth",
                min: 0,
                max: 359,
                step: 1,
                decimals: 0,
                integer: true,
                units: "",
                multiplier: 1,
                typed: "90",
                typedFrames: heading("-4.3589e-05", "2.66906e-21"),
                maxFrames: heading("7.60733e-07", "4.35824e-05"),
                minFrames: heading("0", "4.3589e-05"),
                start: 269,
                next: "270",
                nextFrames: heading("4.3589e-05", "-8.00717e-21"),
                shown: 123,
                shownText: "123"
            },
            {
                tag: "light",
                row: "lightSensorControls/luxSlider",
                label: "",
                sensor: "als",
                model: "als",
                property: "lux",
                min: -1,
                max: 3000,
                step: 1,
                decimals: 0,
                integer: true,
                units: "lx",
                multiplier: 1,
                typed: "2500",
                typedFrames: one("setAlsValue", 2500),
                maxFrames: one("setAlsValue", 3000),
                minFrames: one("setAlsValue", -1),
                start: 79,
                next: "80",
                nextFrames: one("setAlsValue", 80),
                shown: 1234,
                shownText: "1234"
            },
            {
                tag: "proximity",
                row: "proximityControls/reflectanceSlider",
                label: "Reflectance",
                sensor: "proximity",
                model: "proximity",
                property: "reflectance",
                min: 0,
                max: 10,
                step: 1,
                decimals: 5,
                integer: true,
                units: "",
                multiplier: 1,
                typed: "7",
                typedFrames: one("setProximitySensorValue", 7),
                maxFrames: one("setProximitySensorValue", 10),
                minFrames: one("setProximitySensorValue", 0),
                start: 4,
                next: "5",
                nextFrames: one("setProximitySensorValue", 5),
                shown: 9,
                shownText: "9"
            }
        ];
    }

    function setModel(data: var, value: double) {
        sensorsEmulationManager[data.model][data.property] = value;
    }

    function field(data: var): TextField {
        return object(data.row + "/textField");
    }

    function slider(data: var): Slider {
        return object(data.row + "/slider");
    }

    // Replaces the field's text by keys, as a user does.
    function type(textField: TextField, text: string) {
        mouseClick(textField);
        keySequence(StandardKey.SelectAll);
        keyClick(Qt.Key_Delete);
        for (const character of text)
            keyClick(character);
    }

    function drag(target: Slider, x: real) {
        const y = target.height / 2;
        mousePress(target, target.leftPadding + target.handle.width / 2 + target.visualPosition * (target.availableWidth - target.handle.width), y);
        const from = target.visualPosition * target.width;
        for (let i = 1; i <= 5; ++i)
            mouseMove(target, from + (x - from) * i / 5, y);
        mouseRelease(target, x, y);
    }

    function chooseFrom(box: ComboBox, index: int) {
        mouseClick(box);
        tryVerify(() => box.popup.opened);
        const entry = box.popup.contentItem.itemAtIndex(index);
        mouseClick(entry);
        tryVerify(() => !box.popup.visible);
    }

    function entries(box: ComboBox): var {
        return box.model.map(entry => [entry.text, entry.value]);
    }

    name: "SensorsValuesPage"

    SignalSpy {
        id: submitSpy

        signalName: "sliderSubmited"
    }

    function test_row_data(): var {
        return sliderRows();
    }

    function test_row(data: var) {
        const row = object(data.row);
        compare(row.minValue, data.min);
        compare(row.maxValue, data.max);
        compare(row.stepSize, data.step);
        compare(row.numberRoundingSize, data.decimals);
        compare(row.integer, data.integer);
        compare(row.resultValueMultiplier, data.multiplier);
        compare(row.locale.name, "en_US");
        compare(object(data.row + "/rowLabel").text, data.label);
        compare(object(data.row + "/unitsLabel").text, data.units);
        compare(slider(data).from, data.min);
        compare(slider(data).to, data.max);
        compare(slider(data).stepSize, data.step);
        const validator = field(data).validator;
        compare([validator.bottom, validator.top, validator.decimals], [data.min, data.max, data.decimals]);
    }

    function test_typedNumberIsSentOnEnter_data(): var {
        return sliderRows();
    }

    function test_typedNumberIsSentOnEnter(data: var) {
        type(field(data), data.typed);
        compareFrames([]);
        keyClick(Qt.Key_Return);
        compareFrames(data.typedFrames);
        fuzzyCompare(slider(data).value, Number(data.typed), 1e-9);
        fuzzyCompare(sensorsEmulationManager[data.model][data.property], Number(data.typed) * data.multiplier, 1e-9);
        compare(Number(field(data).text), Number(data.typed));
    }

    function test_draggingSendsEachStep_data(): var {
        return sliderRows();
    }

    function test_draggingSendsEachStep(data: var) {
        submitSpy.target = object(data.row);
        for (const [x, number, frames] of [[10000, data.max, data.maxFrames], [-10000, data.min, data.minFrames]]) {
            submitSpy.clear();
            drag(slider(data), x);
            const sent = host.takeFrames();
            verify(submitSpy.count > 0);
            compare(sent.length, submitSpy.count * frames.length);
            compare(sent.slice(sent.length - frames.length), frames);
            compare(slider(data).value, number);
        }
    }

    function test_arrowKeySendsOneStep_data(): var {
        return sliderRows();
    }

    function test_arrowKeySendsOneStep(data: var) {
        setModel(data, data.start);
        slider(data).forceActiveFocus(Qt.TabFocusReason);
        compareFrames([]);
        keyClick(Qt.Key_Right);
        compareFrames(data.nextFrames);
        compare(field(data).text, data.next);
    }

    function test_modelChangeIsShownAndNotSent_data(): var {
        return sliderRows();
    }

    function test_modelChangeIsShownAndNotSent(data: var) {
        type(field(data), data.typed);
        keyClick(Qt.Key_Return); // a row that was used follows all the same
        host.takeFrames();
        setModel(data, data.shown);
        compare(field(data).text, data.shownText);
        fuzzyCompare(slider(data).value, data.shown / data.multiplier, 1e-9);
        compareFrames([]);
    }

    function test_unchangedModelValueRefreshesTheRow_data(): var {
        return sliderRows();
    }

    function test_unchangedModelValueRefreshesTheRow(data: var) {
        setModel(data, data.shown);
        object(data.row).value = data.start; // as after an input that the manager did not take over
        verify(field(data).text !== data.shownText);
        setModel(data, data.shown);
        compare(field(data).text, data.shownText);
        fuzzyCompare(slider(data).value, data.shown / data.multiplier, 1e-9);
        compareFrames([]);
    }

    function test_rowSpeaks_data(): var {
        return sliderRows();
    }

    function test_rowSpeaks(data: var) {
        const controls = data.row.split("/")[0];
        const name = [object(controls).title, data.label].join(" ").trim();
        setModel(data, data.shown);
        const ofSlider = screenReader.describe(slider(data));
        compare([ofSlider.role, ofSlider.name, ofSlider.disabled], ["Slider", name, false]);
        fuzzyCompare(ofSlider.value, data.shown / data.multiplier, 1e-9);
        const ofField = screenReader.describe(field(data));
        compare([ofField.role, ofField.name, ofField.value, ofField.disabled], ["EditableText", name, data.shownText, false]);
    }

    function test_calculatedValue_data(): var {
        return [
            {
                tag: "1000 thousandths of g are 9.807 metres per second squared",
                row: "accelerometerControls/zSlider",
                model: "accelerometer",
                property: "z",
                value: 1000,
                text: "1.000",
                calculated: "9.807 m/s\u00b2",
                width: 85
            },
            {
                tag: "negative values keep their sign",
                row: "accelerometerControls/xSlider",
                model: "accelerometer",
                property: "x",
                value: -3000,
                text: "-3.000",
                calculated: "-29.420 m/s\u00b2",
                width: 85
            },
            {
                tag: "a reflectance is shown as a share of 1023",
                row: "proximityControls/reflectanceSlider",
                model: "proximity",
                property: "reflectance",
                value: 5,
                text: "5",
                calculated: "0.48876",
                width: 65
            }
        ];
    }

    function test_calculatedValue(data: var) {
        setModel(data, data.value);
        compare(field(data).text, data.text);
        const label = object(data.row + "/calculatedValueLabel");
        verify(label.visible);
        compare(label.text, data.calculated);
        compare(label.width, data.width);
        verify(label.contentWidth <= label.width);
        const equality = object(data.row + "/equalityLabel");
        verify(equality.visible);
        compare(equality.text, "=");
    }

    function test_accelerometerUnitsColumn() {
        compare(object("accelerometerControls/xSlider").additionalControlsWidth, 110);
        verify(!object("gyroscopeControls/xSlider/calculatedValueLabel").visible);
        verify(!object("gyroscopeControls/xSlider/equalityLabel").visible);
    }

    function test_refusedTyping_data(): var {
        return [
            {
                tag: "a fourth decimal",
                typed: "0.0001",
                text: "0.000"
            },
            {
                tag: "a number above the range",
                typed: "4",
                text: ""
            },
            {
                tag: "a number below the range",
                typed: "-4",
                text: "-"
            },
            {
                tag: "letters",
                typed: "1x",
                text: "1"
            },
            {
                tag: "a decimal comma",
                typed: "1,5",
                text: "15",
                integerRow: true
            }
        ];
    }

    function test_refusedTyping(data: var) {
        const textField = object(data.integerRow ? "compassControls/azimuthSlider/textField" : "accelerometerControls/zSlider/textField");
        type(textField, data.typed);
        compare(textField.text, data.text);
        compareFrames([]);
    }

    function test_incompleteTextIsReplacedOnLeaving_data(): var {
        return [
            {
                tag: "nothing",
                typed: ""
            },
            {
                tag: "a sign alone",
                typed: "-"
            }
        ];
    }

    function test_incompleteTextIsReplacedOnLeaving(data: var) {
        const textField = object("accelerometerControls/zSlider/textField");
        type(textField, data.typed);
        compare(textField.text, data.typed);
        verify(!textField.acceptableInput);
        keyClick(Qt.Key_Return);
        compare(textField.text, data.typed);
        keyClick(Qt.Key_Tab);
        compare(textField.text, "1.000");
        compareFrames([]);
    }

    function test_editedTextIsSentOnLeaving() {
        type(object("gyroscopeControls/ySlider/textField"), "-2.5");
        compareFrames([]);
        keyClick(Qt.Key_Tab);
        compareFrames([frame("setGyroscopeY", "double:-2.5")]);
        compare(object("gyroscopeControls/ySlider/textField").text, "-2.500");
    }

    function test_uneditedTextIsNotSentOnLeaving_data(): var {
        return sliderRows();
    }

    function test_uneditedTextIsNotSentOnLeaving(data: var) {
        const value = Number(data.typed) * data.multiplier;
        setModel(data, data.model === "accelerometer" ? Math.round(value) : value); // that model counts in integers
        const before = sensorsEmulationManager[data.model][data.property];
        page.modelSensorChanged = false;
        field(data).forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Tab);
        compareFrames([]);
        compare(sensorsEmulationManager[data.model][data.property], before);
        compare(page.modelSensorChanged, false);
    }

    function test_lookingAroundSendsNothing() {
        const seen = tabOrder();
        sensorsEmulationManager.sensorsInitialized();
        host.takeFrames();
        for (const item of seen) {
            mouseMove(item, item.width / 2, item.height / 2);
            mouseWheel(item, item.width / 2, item.height / 2, 0, 120);
            mouseWheel(item, item.width / 2, item.height / 2, 0, -120);
            item.forceActiveFocus(Qt.TabFocusReason);
            mouseWheel(item, item.width / 2, item.height / 2, 0, -120);
        }
        seen[0].forceActiveFocus(Qt.TabFocusReason);
        compareFrames([]);
        compare(page.modelSensorChanged, false);
    }

    function test_tabOrder() {
        const row = name => ["Slider " + name, "EditableText " + name];
        const axes = name => [].concat(...["X", "Y", "Z"].map(axis => row(name + " " + axis)));
        const pages = ["Sensors Management", "Sensors Values", "Orientation Management", "GPS Management", "Camera Management"];
        const order = tabOrder();
        compare(spoken(order), [...pages.map(text => "Button " + text), ...axes("Accelerometer"), ...axes("Magnetometer"), ...row("Magnetometer Calib. level"), ...row("Compass Azimuth"), ...row("Compass Calib. level"), ...axes("Magnetic Field"), "ComboBox Orientation Sensor Orientation", ...axes("Gyroscope"), "ComboBox Light Sensor Light level", ...row("Light Sensor"), ...row("Proximity Sensor Reflectance"), "Button Proximity Sensor Near", "Button Proximity Sensor Far", "ComboBox Tap Sensor Direction", "Button Reset values"]);
        order[0].forceActiveFocus(Qt.TabFocusReason);
        for (const item of Array.from(order).reverse()) {
            keyClick(Qt.Key_Backtab);
            compare(root.Window.activeFocusItem, item);
        }
    }

    function test_focusIsVisible_data(): var {
        return ["light-2024", "dark-2024", "flat-light", "flat-dark"].map(theme => ({
                    tag: theme
                }));
    }

    function test_focusIsVisible(data: var) {
        host.theme = data.tag;
        createView();
        verifyFocusMarks(tabOrder());
    }

    function test_choicesSpeak_data(): var {
        return [
            {
                tag: "light level",
                box: "lightLevelBox/comboBox",
                name: "Light Sensor Light level",
                index: 4,
                value: "Bright"
            },
            {
                tag: "orientation",
                box: "orientationBox/comboBox",
                name: "Orientation Sensor Orientation",
                index: 2,
                value: "LeftUp"
            },
            {
                tag: "tap direction",
                box: "directionBox/comboBox",
                name: "Tap Sensor Direction",
                index: 7,
                value: "Z_Pos"
            }
        ];
    }

    function test_choicesSpeak(data: var) {
        const box = object(data.box);
        chooseFrom(box, data.index);
        const description = screenReader.describe(box);
        compare([description.role, description.name, description.description, description.disabled], ["ComboBox", data.name, data.value, false]);
        host.takeFrames();
    }

    function test_groupsSpeak() {
        for (const controls of page.sensorsControlsIds) {
            const description = screenReader.describe(controls);
            compare([description.role, description.name], ["Grouping", controls.title]);
        }
        compare(screenReader.describe(page).name, "Sensors Values");
    }

    function test_lightLevels() {
        compare(entries(object("lightLevelBox/comboBox")), [["Undefined", -1], ["Dark", 0], ["Twilight", 10], ["Light", 80], ["Bright", 400], ["Sunny", 2500]]);
    }

    function test_choosingALightLevel_data(): var {
        return [["Undefined", -1], ["Dark", 0], ["Twilight", 10], ["Light", 80], ["Bright", 400], ["Sunny", 2500]].map(([text, value], index) => ({
                    tag: text,
                    index: index,
                    value: value
                }));
    }

    function test_choosingALightLevel(data: var) {
        chooseFrom(object("lightLevelBox/comboBox"), data.index);
        compareFrames([frame("setAlsValue", "int32:" + data.value)]);
        compare(object("luxSlider/slider").value, data.value);
        compare(object("luxSlider/textField").text, String(data.value));
        compare(object("lightLevelBox/comboBox").currentIndex, data.index);
    }

    function test_lightLevelFollowsTheLux_data(): var {
        return [[-2, -1], [-1, 0], [0, 1], [9, 1], [10, 2], [79, 2], [80, 3], [399, 3], [400, 4], [2499, 4], [2500, 5], [3000, 5], [100000, 5]].map(([lux, index]) => ({
                    tag: lux + " lux",
                    lux: lux,
                    index: index
                }));
    }

    function test_lightLevelFollowsTheLux(data: var) {
        chooseFrom(object("lightLevelBox/comboBox"), 2); // a used box follows all the same
        sensorsEmulationManager.als.lux = data.lux;
        compare(object("lightLevelBox/comboBox").currentIndex, data.index);
        if (data.lux < -1 || data.lux > 3000)
            return;
        type(object("luxSlider/textField"), String(data.lux));
        keyClick(Qt.Key_Return);
        compare(object("lightLevelBox/comboBox").currentIndex, data.index);
    }

    function test_nearAndFar() {
        click("nearButton");
        compareFrames([frame("setProximitySensorValue", "int32:0")]);
        compare(object("reflectanceSlider/textField").text, "0");
        click("farButton");
        compareFrames([frame("setProximitySensorValue", "int32:10")]);
        compare(object("reflectanceSlider/textField").text, "10");
    }

    readonly property var tapDirections: ["Undefined", "X_Both", "Y_Both", "Z_Both", "X_Pos", "X_Neg", "Z_Neg", "Z_Pos", "Y_Pos", "Y_Neg"]

    function test_tapDirections() {
        compare(entries(object("directionBox/comboBox")), tapDirections.map((text, index) => [text, index - 1]));
        compare(object("directionBox/rowLabel").text, "Direction");
    }

    function test_choosingATapDirection_data(): var {
        return tapDirections.map((text, index) => ({
                    tag: text,
                    index: index
                }));
    }

    function test_choosingATapDirection(data: var) {
        const box = object("directionBox/comboBox");
        compare(box.currentText, "Undefined");
        chooseFrom(box, data.index);
        compareFrames([frame("setTapSensorValue", "int32:" + (data.index - 1))]);
        sensorsEmulationManager.tap.tapDirection = 4;
        compare(box.currentText, "X_Neg");
        compareFrames([]);
    }

    readonly property var orientations: [["TopUp", "int32:0 int32:100 int32:0"], ["TopDown", "int32:0 int32:-100 int32:0"], ["LeftUp", "int32:-100 int32:0 int32:0"], ["RightUp", "int32:100 int32:0 int32:0"], ["FaceUp", "int32:0 int32:0 int32:300"], ["FaceDown", "int32:0 int32:0 int32:-300"]]

    function test_orientations() {
        compare(entries(object("orientationBox/comboBox")), orientations.map(([text], index) => [text, index + 1]));
        compare(object("orientationBox/rowLabel").text, "Orientation");
        sensorsEmulationManager.orientation.orientation = 0;
        compare(object("orientationBox/comboBox").currentIndex, -1);
    }

    function test_choosingAnOrientation_data(): var {
        return orientations.map(([text, sent], index) => ({
                    tag: text,
                    index: index,
                    sent: sent
                }));
    }

    function test_choosingAnOrientation(data: var) {
        const box = object("orientationBox/comboBox");
        chooseFrom(box, data.index);
        compareFrames([frame("setAccelerometerValues", data.sent)]);
        compare(box.currentIndex, data.index);
        sensorsEmulationManager.orientation.orientation = 3;
        compare(box.currentText, "LeftUp");
    }

    function test_boxesWorkByKeys() {
        object("directionBox/comboBox").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Down);
        compareFrames([frame("setTapSensorValue", "int32:0")]);
    }

    readonly property list<string> defaultsFrames: [frame("setAccelerometerValues", "int32:0 int32:0 int32:1000"), frame("setAlsValue", "int32:100"), frame("setGyroscopeValues", "double:0 double:0 double:1.14592"), frame("setMagnetometerValues", "double:4.3e-05 double:0 double:0"), frame("setMagnetometerCalibrationLevel", "int32:0"), frame("setProximitySensorValue", "int32:5"), frame("setTapSensorValue", "int32:-1")]

    function test_resetSendsTheDefaults() {
        type(object("accelerometerControls/xSlider/textField"), "-");
        sensorsEmulationManager.magneticField.x = 12;
        click("resetValuesButton");
        compareFrames(defaultsFrames);
        compare(object("accelerometerControls/xSlider/textField").text, "0.000");
        compare(object("magneticFieldControls/xSlider/textField").text, "12.000");
        for (const data of sliderRows())
            verify(!field(data).activeFocus);
    }

    // Whatever presses the button: the text of a field that has the focus is sent before the defaults.
    function test_resetSendsAnEditedTextFirst_data(): var {
        const button = () => object("resetValuesButton");
        return [
            {
                tag: "by mouse",
                press: () => click("resetValuesButton")
            },
            {
                tag: "by keys",
                press: () => {
                    for (let i = 0; !button().activeFocus && i < 10; ++i)
                        keyClick(Qt.Key_Tab);
                    keyClick(Qt.Key_Space);
                }
            },
            {
                tag: "by a screen reader, which leaves the focus where it is",
                press: () => {
                    verify(object("proximityControls/reflectanceSlider/textField").activeFocus);
                    button().click();
                }
            }
        ];
    }

    function test_resetSendsAnEditedTextFirst(data: var) {
        const textField = object("proximityControls/reflectanceSlider/textField");
        type(textField, "7");
        compareFrames([]);
        data.press();
        compareFrames([frame("setProximitySensorValue", "int32:7"), ...defaultsFrames]);
        compare(textField.activeFocus, false);
        compare(textField.text, "5");
        compare(sensorsEmulationManager.proximity.reflectance, 5);
    }

    readonly property var controlsOrder: ["accelerometerControls", "compassControls", "orientationControls", "magneticFieldControls", "magnetometerControls", "gyroscopeControls", "lightSensorControls", "proximityControls", "tapControls"]

    function test_controls() {
        compare(page.sensorsControlsIds.map(controls => controls.objectName), controlsOrder);
        compare(page.sensorsControlsIds.map(controls => controls.sensorName), ["accelerometer", "compass", "orientation", "magnetometer", "magnetometer", "gyroscope", "als", "proximity", "tap"]);
        compare(page.sensorsControlsIds.map(controls => controls.title), ["Accelerometer", "Compass", "Orientation Sensor", "Magnetic Field", "Magnetometer", "Gyroscope", "Light Sensor", "Proximity Sensor", "Tap Sensor"]);
        for (const controls of page.sensorsControlsIds)
            verify(findChild(controls, "titleLabel").font.bold);
    }

    function test_gridOrder() {
        const grid = object("grid");
        const places = ["accelerometerControls", "magnetometerControls", "compassControls", "magneticFieldControls", "orientationControls", "gyroscopeControls", "lightSensorControls", "proximityControls", "", "tapControls"];
        let above = 0;
        places.forEach((name, index) => {
            if (name === "")
                return;
            const controls = object(name);
            compare(controls.width, grid.width / 2);
            compare(controls.x > 0, index % 2 === 1, name);
            verify(controls.y >= above, name);
            above = controls.y;
        });
        compare(object("tapControls").x, object("proximityControls").x);
        compare(grid.width, page.width - 45);
        compare(grid.mapToItem(page, 0, 0), Qt.point(15, 15));
    }

    function test_gridNeverGetsNarrowerThanItsLeastWidth() {
        root.view.width = 400;
        compare(object("grid").width, 390);
    }

    function test_controlsAreUsable_data(): var {
        return [1100, 2200].map(width => ({
                    tag: width + " pixels",
                    width: width
                }));
    }

    // Nothing lies over something else or outside its cell, and each slider has room to be dragged.
    function test_controlsAreUsable(data: var) {
        root.view.width = data.width;
        for (const row of sliderRows()) {
            const controls = object(row.row.split("/")[0]);
            setModel(row, row.min * row.multiplier); // with a sign, where there may be one
            const parts = ["rowLabel", "slider", "textField", "additionalControls"].map(name => object(row.row + "/" + name));
            let left = 0;
            for (const part of parts) {
                const x = part.mapToItem(controls, 0, 0).x;
                verify(x >= left, "%1: %2 begins at %3, before %4".arg(row.tag).arg(part.objectName).arg(x).arg(left));
                left = x + (part.objectName === "additionalControls" ? 0 : part.width);
            }
            for (const name of ["unitsLabel", "calculatedValueLabel"]) {
                const label = object(row.row + "/" + name);
                if (label.visible)
                    left = label.mapToItem(controls, label.contentWidth, 0).x;
            }
            verify(left <= controls.width, "%1 ends at %2 of %3".arg(row.tag).arg(left).arg(controls.width));
            verify(slider(row).width >= 100, "%1: the slider is %2 wide".arg(row.tag).arg(slider(row).width));
        }
        for (const name of ["lightLevelBox", "orientationBox", "directionBox"]) {
            const box = object(name + "/comboBox");
            verify(box.x >= object(name + "/rowLabel").width);
            verify(box.x + box.width <= object(name).width);
            verify(box.width >= box.implicitWidth, name);
        }
    }

    function test_disabledSensorIsGreyed_data(): var {
        return [["accelerometer", ["accelerometerControls"]], ["compass", ["compassControls"]], ["orientation", ["orientationControls"]], ["magnetometer", ["magneticFieldControls", "magnetometerControls"]], ["gyroscope", ["gyroscopeControls"]], ["als", ["lightSensorControls"]], ["proximity", ["proximityControls"]], ["tap", ["tapControls"]]].map(([sensor, controls]) => ({
                    tag: sensor,
                    sensor: sensor,
                    controls: controls
                }));
    }

    function test_disabledSensorIsGreyed(data: var) {
        const labels = controls => ["titleLabel", "rowLabel"].map(name => findChild(controls, name));
        const colours = new Map(page.sensorsControlsIds.map(controls => [controls, labels(controls).map(label => String(label.color))]));
        const interactive = tabOrder();
        host.takeFrames();
        sensorsEmulationManager.setSensorEnabled(data.sensor, false);
        for (const controls of page.sensorsControlsIds) {
            const off = data.controls.includes(controls.objectName);
            compare(controls.controlsEnabled, !off, controls.objectName);
            compare(controls.visible, true, controls.objectName);
            labels(controls).forEach((label, i) => {
                compare(label.enabled, !off, controls.objectName);
                compare(String(label.color) !== colours.get(controls)[i], off, controls.objectName);
            });
        }
        const greyed = interactive.filter(item => !item.enabled);
        const names = data.controls.map(name => object(name).title);
        verify(greyed.length > 0);
        for (const item of interactive) {
            const description = screenReader.describe(item);
            const belongs = names.some(name => description.name === name || description.name.startsWith(name + " "));
            compare(item.enabled, !(belongs && !description.name.endsWith(" Management")), description.name);
            compare(description.disabled, !item.enabled, description.name);
        }
        for (const item of greyed) {
            if (item instanceof Slider)
                drag(item, 10000);
            else
                mouseClick(item);
            verify(!item.activeFocus);
            verify(!(item instanceof ComboBox) || !item.popup.visible);
        }
        compareFrames([]);
        sensorsEmulationManager.setSensorEnabled(data.sensor, true);
        for (const controls of page.sensorsControlsIds)
            compare(controls.controlsEnabled, true, controls.objectName);
        verify(interactive.every(item => item.enabled));
    }

    function test_unavailableSensorIsHidden_data(): var {
        return test_disabledSensorIsGreyed_data();
    }

    function test_unavailableSensorIsHidden(data: var) {
        host.setSensorAvailable(data.sensor, false);
        for (const controls of page.sensorsControlsIds)
            compare(controls.visible, !data.controls.includes(controls.objectName), controls.objectName);
        host.setSensorAvailable(data.sensor, true);
        for (const controls of page.sensorsControlsIds)
            compare(controls.visible, true, controls.objectName);
    }

    function test_changeOfAModelSensorIsNoted_data(): var {
        const rows = [];
        for (const model of ["accelerometer", "magnetometer", "magneticField", "gyroscope"]) {
            for (const axis of ["x", "y", "z"]) {
                rows.push({
                    tag: model + " " + axis,
                    model: model,
                    property: axis,
                    changed: true
                });
            }
        }
        return rows.concat([["magnetometer", "calibrationLevel"], ["als", "lux"], ["proximity", "reflectance"], ["compass", "azimuth"], ["tap", "tapDirection"]].map(([model, property]) => ({
                    tag: model + " " + property,
                    model: model,
                    property: property,
                    changed: false
                })));
    }

    function test_changeOfAModelSensorIsNoted(data: var) {
        compare(page.modelSensorChanged, false);
        setModel(data, 1);
        compare(page.modelSensorChanged, data.changed);
        sensorsEmulationManager.sensorsInitialized();
        compare(page.modelSensorChanged, false);
        setModel(data, 1); // the same value counts as well
        compare(page.modelSensorChanged, data.changed);
        page.active = false;
        compare(page.modelSensorChanged, data.changed);
        page.active = true;
        compare(page.modelSensorChanged, false);
    }

    function test_leavesAtOnce() {
        let left = 0;
        page.exitPage(() => ++left);
        compare(left, 1);
    }

    function test_pressingDoesNotScroll() {
        root.view.height = 200;
        const flickable = object("scrollView").contentItem;
        const field = object("compassControls/azimuthSlider/textField");
        flickable.contentY = field.mapToItem(flickable.contentItem, 0, 0).y - flickable.height + 10;
        const before = flickable.contentY;
        mouseClick(field, 20, 5);
        compare(field.activeFocus, true);
        compare(flickable.contentY, before);
    }

    function test_focusByKeysScrollsIntoView() {
        root.view.height = 200;
        const button = object("resetValuesButton");
        const flickable = object("scrollView").contentItem;
        compare(flickable.contentY, 0);
        button.forceActiveFocus(Qt.TabFocusReason);
        const bottom = button.mapToItem(page, 0, button.height).y;
        verify(bottom <= page.height, "%1 of %2".arg(bottom).arg(page.height));
        object("accelerometerControls/xSlider/slider").forceActiveFocus(Qt.BacktabFocusReason);
        verify(object("accelerometerControls/xSlider").mapToItem(page, 0, 0).y >= 0);
    }
}
