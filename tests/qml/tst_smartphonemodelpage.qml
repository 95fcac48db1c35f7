// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls
import QtTest
import "phone/matrices.js" as Matrices
import "phone/wire.js" as Wire
import "qrc:/emulationmanagement/qml"

// The page turns and moves the phone. Its clock stands still in most tests, which let it tick where they want to.
ViewTestCase {
    id: root

    readonly property SmartphoneModelPage page: view ? findChild(view, "smartphoneModelPage") : null
    readonly property double gravity: 9.80665
    readonly property list<string> axes: ["x", "y", "z"]

    name: "SmartphoneModelPage"

    Component {
        id: pageComponent

        SmartphoneModelPage {}
    }

    Component {
        id: hiddenWindowComponent

        Window {
            readonly property alias page: hiddenPage

            SmartphoneModelPage {
                id: hiddenPage
            }
        }
    }

    Component {
        id: otherWindowComponent

        Window {
            visible: true
        }
    }

    Timer {
        id: clock

        interval: 100
        repeat: true
    }

    SignalSpy {
        id: clockSpy

        target: clock
        signalName: "triggered"
    }

    SignalSpy {
        id: timerSpy

        signalName: "triggered"
    }

    function control(name: string): QtObject {
        return object("smartphoneModelPage/" + name);
    }

    function press(name: string) {
        const item = control(name);
        verify(item.enabled && item.visible, name + " can be clicked");
        mouseClick(item, item.width / 2, item.height / 2);
    }

    // Unlike fuzzyCompare(), in double precision.
    function compareClose(actual: double, expected: double, tolerance: double) {
        verify(Math.abs(actual - expected) <= tolerance, "%1, not %2".arg(actual).arg(expected));
    }

    function stopTimer() {
        control("timer").running = false;
    }

    function tick() {
        control("timer").triggered();
    }

    // From the sensor values, as if nothing had been changed there.
    function showPage() {
        findChild(view, "sensorsValuesPage").modelSensorChanged = false;
        click("smartphoneModelButton");
        tryCompare(page, "visible", true);
    }

    // The page in a field of three different parts, with its clock stopped and nothing sent yet.
    function openPage() {
        stopTimer();
        setField(10, 20, 30);
        showPage();
        host.takeFrames();
    }

    function setField(x: double, y: double, z: double) {
        sensorsEmulationManager.setMagneticFieldValues(x, y, z);
        host.takeFrames();
    }

    function setRotation(values: var) {
        axes.forEach((axis, i) => control(axis + "RotSlider").value = values[i]);
    }

    function setPosition(values: var) {
        axes.forEach((axis, i) => control(axis + "MoveSlider").value = values[i]);
    }

    function rotation(): var {
        return axes.map(axis => control(axis + "RotSlider").value);
    }

    function position(): var {
        return axes.map(axis => control(axis + "MoveSlider").value);
    }

    function accelerometerFrame(values: var): string {
        return frame("setAccelerometerValues", values.map(value => "int32:" + Wire.whole(value)).join(" "));
    }

    function gyroscopeFrame(values: var): string {
        return frame("setGyroscopeValues", values.map(value => "double:" + Wire.real(value)).join(" "));
    }

    function magnetometerFrame(values: var): string {
        return frame("setMagnetometerValues", values.map(value => "double:" + Wire.real(value)).join(" "));
    }

    // A rotated phone that keeps still, in openPage()'s field.
    function poseFrames(): list<string> {
        const [x, y, z] = rotation();
        const pose = {
            x,
            y,
            z
        };
        const exact = value => Math.abs(value - Math.round(value)) < 1e-9 ? Math.round(value) : value;
        const acceleration = Matrices.onPhone(pose, [0, 1000, 0]).map(exact);
        const field = Matrices.onPhone(pose, [10, 20, 30]).map(value => value * 1e-6);
        return [accelerometerFrame(acceleration), magnetometerFrame(field)];
    }

    function test_defaults() {
        const values = {
            stepSize: 0.01,
            numberRoundingSize: 3,
            integer: false,
            rotMinValue: -180,
            rotMaxValue: 180,
            moveMinValue: -2,
            moveMaxValue: 2,
            moveBaseValue: 0,
            xOriginCoordinate: 0,
            yOriginCoordinate: 0,
            gravityAccelEarth: 9.80665,
            controlModifierPressed: false,
            timerInterval: 0.1,
            phoneSizeCoefficient: 0.06,
            accGravityCoef: 1000 / 9.80665,
            microToWholeCoef: 0.000001
        };
        for (const axis of axes) {
            for (const name of ["MovePrevPrevValue", "MovePrevValue", "MoveInitSpeed", "GyroPrevValue", "GyroRotFrequency"])
                values[axis + name] = 0;
            values[axis + "RotSliderReset"] = false;
        }
        for (const name of Object.keys(values))
            compare(page[name], values[name], name);
        compare(page.locale.name, "en_US");
        compare(page.active, false);
        compare(page.visible, false);
        compare(page.sensorLabels.map(label => label.objectName), ["accelerometerLabel", "gyroscopeLabel", "magnetometerLabel"]);
        compare(page.rotationMode, true);
        for (const axis of axes) {
            for (const [kind, end] of [["Rot", 180], ["Move", 2]]) {
                const slider = control(axis + kind + "Slider");
                compare([slider.minValue, slider.maxValue, slider.stepSize, slider.numberRoundingSize, slider.integer, slider.value], [-end, end, 0.01, 3, false, 0]);
            }
        }
    }

    function test_texts() {
        openPage();
        compare(control("rotationRadioButton").text, "Rotation");
        compare(control("moveRadioButton").text, "Move");
        compare(axes.map(axis => control(axis + "RotSlider").label), ["X-Rot", "Y-Rot", "Z-Rot"]);
        compare(axes.map(axis => control(axis + "MoveSlider").label), ["X", "Y", "Z"]);
        compare(control("deviceRotationLabel").text, "Device rotation");
        compare(control("resultingValuesLabel").text, "Resulting values");
    }

    function test_icons_data() {
        return [
            {
                tag: "flat-light",
                suffix: ""
            },
            {
                tag: "flat-dark",
                suffix: "_light"
            }
        ];
    }

    function test_icons(data) {
        host.theme = data.tag;
        createView();
        const icons = [1, 2, 3, 4, 5, 6].map(number => "qrc:/emulationmanagement/icons/phone_%1%2.png".arg(number).arg(data.suffix));
        compare(page.iconsModel, icons);
        openPage();
        icons.forEach((icon, i) => {
            const button = control("orientationButton" + i);
            compare([String(button.icon.source), button.width, button.height], [icon, 40, 40]);
        });
    }

    // --- when values are sent ---

    function test_creation() {
        setField(10, 20, 30);
        createTemporaryObject(pageComponent, root);
        compareFrames([accelerometerFrame([0, 1000, 0]), magnetometerFrame([10e-6, 20e-6, 30e-6])]);
    }

    function test_creationWithoutSensors() {
        host.setSensorAvailable("accelerometer", false);
        sensorsEmulationManager.setSensorEnabled("magnetometer", false);
        host.takeFrames();
        createTemporaryObject(pageComponent, root);
        compareFrames([]);
    }

    function test_creationInAWindowThatIsNotShown() {
        setField(10, 20, 30);
        const window = createTemporaryObject(hiddenWindowComponent, root);
        compareFrames([accelerometerFrame([0, 1000, 0]), magnetometerFrame([10e-6, 20e-6, 30e-6])]);
        for (const axis of axes)
            compare([window.page.rotSliders[axis].value, window.page.moveSliders[axis].value], [0, 0]);
        window.visible = true;
        for (const axis of axes) {
            compare(window.page.rotSliders[axis], findChild(window.page, axis + "RotSlider"));
            compare(window.page.moveSliders[axis], findChild(window.page, axis + "MoveSlider"));
        }
        compareFrames([]);
        closeOtherWindow(window);
    }

    function test_activation() {
        stopTimer();
        setField(10, 20, 30);
        setRotation([-90, 0, 0]);
        showPage();
        compareFrames([accelerometerFrame([0, 0, 1000]), gyroscopeFrame([0, 0, 0]), magnetometerFrame([10e-6, -30e-6, 20e-6])]);
        click("gpsManagementButton");
        compare(page.visible, false);
        compareFrames([]);
        click("smartphoneModelButton");
        compareFrames([accelerometerFrame([0, 0, 1000]), gyroscopeFrame([0, 0, 0]), magnetometerFrame([10e-6, -30e-6, 20e-6])]);
    }

    // What is sent by activation and by a turn of 36 degrees in one step. A missing accelerometer is silent; of the other
    // two it is the disabled ones that are, but for the gyroscope's zeros.
    function test_switchedSensors_data() {
        return [
            {
                tag: "all",
                frames: ["accelerometer", "zeros", "magnetometer", "gyroscope"]
            },
            {
                tag: "no accelerometer",
                unavailable: "accelerometer",
                frames: ["zeros", "magnetometer", "gyroscope"]
            },
            {
                tag: "accelerometer disabled",
                disabled: "accelerometer",
                frames: ["accelerometer", "zeros", "magnetometer", "gyroscope"]
            },
            {
                tag: "gyroscope disabled",
                disabled: "gyroscope",
                frames: ["accelerometer", "zeros", "magnetometer"]
            },
            {
                tag: "no gyroscope, but enabled",
                unavailable: "gyroscope",
                enabled: "gyroscope",
                frames: ["accelerometer", "zeros", "magnetometer", "gyroscope"]
            },
            {
                tag: "magnetometer disabled",
                disabled: "magnetometer",
                frames: ["accelerometer", "zeros", "gyroscope"]
            },
            {
                tag: "no magnetometer, but enabled",
                unavailable: "magnetometer",
                enabled: "magnetometer",
                frames: ["accelerometer", "zeros", "magnetometer", "gyroscope"]
            }
        ];
    }

    function test_switchedSensors(data) {
        stopTimer();
        setField(0, 0, 0);
        if (data.unavailable)
            host.setSensorAvailable(data.unavailable, false);
        if (data.disabled)
            sensorsEmulationManager.setSensorEnabled(data.disabled, false);
        if (data.enabled)
            sensorsEmulationManager.setSensorEnabled(data.enabled, true);
        host.takeFrames();
        showPage();
        setRotation([0, 0, 36]);
        tick();
        const frames = {
            accelerometer: accelerometerFrame([0, 1000, 0]),
            zeros: gyroscopeFrame([0, 0, 0]),
            magnetometer: magnetometerFrame([0, 0, 0]),
            gyroscope: gyroscopeFrame([0, 0, 360])
        };
        compareFrames(data.frames.map(name => frames[name]));
    }

    function test_timerRunsOnlyWhileActive() {
        timerSpy.target = control("timer");
        compare(control("timer").interval, 100);
        compare(control("timer").running, false);
        showPage();
        compare(control("timer").running, true);
        host.takeFrames();
        timerSpy.clear();
        tryVerify(() => timerSpy.count >= 10);
        control("timer").repeat = false; // the count is final
        const count = timerSpy.count;
        compareFrames(Array(count).fill(gyroscopeFrame([0, 0, 0])));

        control("timer").repeat = true;
        click("gpsManagementButton");
        compare(control("timer").running, false);
        host.takeFrames();
        clock.start();
        clockSpy.clear();
        tryVerify(() => clockSpy.count >= 5);
        clock.stop();
        compareFrames([]);
    }

    function test_tenTicks_data() {
        return [
            {
                tag: "rotation",
                button: "rotationRadioButton",
                frame: gyroscopeFrame([0, 0, 0])
            },
            {
                tag: "move",
                button: "moveRadioButton",
                frame: accelerometerFrame([0, 1000, 0])
            }
        ];
    }

    function test_tenTicks(data) {
        openPage();
        press(data.button);
        for (let i = 0; i < 10; ++i)
            tick();
        compareFrames(Array(10).fill(data.frame));
    }

    function test_exit() {
        openPage();
        let called = 0;
        page.exitPage(() => ++called);
        compare(called, 1);
        compareFrames([]);
    }

    // --- the presets ---

    function test_presets_data() {
        return [
            {
                tag: "top up",
                rotation: [0, 0, 0],
                acceleration: [0, 1000, 0],
                field: [10e-6, 20e-6, 30e-6]
            },
            {
                tag: "left side up",
                rotation: [0, 0, -90],
                acceleration: [-1000, 0, 0],
                field: [-20e-6, 10e-6, 30e-6]
            },
            {
                tag: "top down",
                rotation: [0, 0, 180],
                acceleration: [0, -1000, 0],
                field: [-10e-6, -20e-6, 30e-6]
            },
            {
                tag: "right side up",
                rotation: [0, 0, 90],
                acceleration: [1000, 0, 0],
                field: [20e-6, -10e-6, 30e-6]
            },
            {
                tag: "face up",
                rotation: [-90, 0, 0],
                acceleration: [0, 0, 1000],
                field: [10e-6, -30e-6, 20e-6]
            },
            {
                tag: "face down",
                rotation: [90, 0, 0],
                acceleration: [0, 0, -1000],
                field: [10e-6, 30e-6, -20e-6]
            }
        ].map((row, index) => Object.assign(row, {
                index
            }));
    }

    function test_presets(data) {
        openPage();
        setField(10, 20, 30);
        setRotation([11, 22, 33]);
        setPosition([0.5, -0.5, 1]);
        press("orientationButton" + data.index);
        compare(rotation(), data.rotation);
        compare(position(), [0.5, -0.5, 1]);
        compareFrames([accelerometerFrame(data.acceleration), magnetometerFrame(data.field)]);
    }

    // A preset turns the phone within one step of the gyroscope.
    function test_presetBetweenTicks() {
        openPage();
        press("orientationButton3");
        host.takeFrames();
        tick();
        tick();
        press("orientationButton1");
        tick();
        compareFrames([gyroscopeFrame([0, 0, 900]), gyroscopeFrame([0, 0, 0]), ...poseFrames(), gyroscopeFrame([0, 0, -1800])]);
    }

    function test_presetInMoveMode() {
        openPage();
        press("moveRadioButton");
        press("orientationButton2");
        compareFrames([accelerometerFrame([0, -1000, 0])]);
    }

    // --- the sliders ---

    function test_submittedRotation_data() {
        return axes.map(tag => ({
                    tag
                }));
    }

    function test_submittedRotation(data) {
        openPage();
        const field = control(data.tag + "RotSlider/textField");
        mouseClick(field);
        field.selectAll();
        for (const key of "-33.25")
            keyClick(key);
        compareFrames([]);
        keyClick(Qt.Key_Return);
        compare(control(data.tag + "RotSlider").value, -33.25);
        compareFrames(poseFrames());
    }

    function test_rotationLeftInItsField_data() {
        return [
            {
                tag: "edited",
                typed: "5",
                sent: true
            },
            {
                tag: "as it was",
                typed: "",
                sent: false
            }
        ];
    }

    function test_rotationLeftInItsField(data) {
        openPage();
        const field = control("xRotSlider/textField");
        mouseClick(field);
        if (data.typed !== "") {
            field.selectAll();
            keyClick(data.typed);
        }
        keyClick(Qt.Key_Tab);
        compareFrames(data.sent ? poseFrames() : []);
    }

    function test_walkingKeysSendNothing_data() {
        return [Qt.Key_Tab, Qt.Key_Backtab, Qt.Key_Shift, Qt.Key_Alt, Qt.Key_AltGr, Qt.Key_Meta].map(key => ({
                    tag: "key 0x" + key.toString(16),
                    key
                }));
    }

    function test_walkingKeysSendNothing(data) {
        openPage();
        for (const name of ["moveRadioButton", "orientationButton0", "yRotSlider/slider", "yRotSlider/textField"]) {
            control(name).forceActiveFocus(Qt.TabFocusReason);
            keyboard.press(data.key);
            keyboard.release(data.key);
        }
        compareFrames([]);
    }

    function test_draggedRotation() {
        openPage();
        const slider = control("xRotSlider/slider");
        const y = slider.height / 2;
        const expected = [];
        mousePress(slider, slider.width / 2, y);
        host.takeFrames();
        for (const x of [20, 60, 30]) {
            mouseMove(slider, slider.width / 2 + x, y);
            expected.push(...poseFrames());
        }
        mouseRelease(slider, slider.width / 2 + 30, y);
        verify(rotation()[0] > 1);
        compareFrames(expected);
    }

    // The pose is of this session only.
    function test_poseIsNotStored() {
        openPage();
        const keys = ["read3DModelRotationX", "read3DModelRotationY", "read3DModelRotationZ", "read3DModelPositionX", "read3DModelPositionY", "read3DModelPositionZ"];
        const settings = object("settingsManager");
        settings.save3DModelRotationValues(1, 2, 3);
        settings.save3DModelPositionValues(0.1, 0.2, 0.3);
        setRotation([40, 50, 60]);
        setPosition([1, 1, 1]);
        press("orientationButton0");
        click("gpsManagementButton");
        createView();
        openPage();
        compare([...rotation(), ...position()], [0, 0, 0, 0, 0, 0]);
        compare(keys.map(key => object("settingsManager")[key]()), [1, 2, 3, 0.1, 0.2, 0.3]);
    }

    function test_submittedPositionSendsNothing() {
        openPage();
        press("moveRadioButton");
        const field = control("yMoveSlider/textField");
        mouseClick(field);
        field.selectAll();
        for (const key of "1.5")
            keyClick(key);
        keyClick(Qt.Key_Return);
        compare(position(), [0, 1.5, 0]);
        compareFrames([]);
    }

    function test_modeChoosesTheSliders() {
        openPage();
        const visible = () => ["xRotSlider", "yRotSlider", "zRotSlider", "xMoveSlider", "yMoveSlider", "zMoveSlider"].map(name => control(name).visible);
        compare(visible(), [true, true, true, false, false, false]);
        press("moveRadioButton");
        compare(visible(), [false, false, false, true, true, true]);
        press("rotationRadioButton");
        compare(visible(), [true, true, true, false, false, false]);
        compareFrames([]);
    }

    // --- the gyroscope ---

    function test_firstStepAfterActivation() {
        openPage();
        setRotation([0, 36, 0]);
        tick();
        compareFrames([gyroscopeFrame([0, 360, 0])]);
        click("gpsManagementButton");
        click("smartphoneModelButton");
        host.takeFrames();
        tick();
        compareFrames([gyroscopeFrame([0, 0, 0])]);
    }

    function test_gyroscopeFollowsThePose() {
        openPage();
        const poses = [[5, 10, 15], [7, 10, 15], [7, -20, 20], [90, 90, 90], [-90, -90, 0]];
        let previous = [0, 0, 0];
        const expected = poses.map(pose => {
            const [x, y, z] = pose;
            const frequency = pose.map((angle, i) => (angle - previous[i]) / 36);
            previous = pose;
            return Matrices.angularVelocity({
                x,
                y,
                z
            }, {
                x: frequency[0],
                y: frequency[1],
                z: frequency[2]
            });
        });
        for (let i = 0; i < poses.length; ++i) {
            setRotation(poses[i]);
            tick();
            const actual = [page.gyroXValue, page.gyroYValue, page.gyroZValue];
            for (const axis of [0, 1, 2])
                compareClose(actual[axis], expected[i][axis], 1e-3);
            compareFrames([gyroscopeFrame(actual)]);
        }
    }

    function test_wrap_data() {
        return [
            {
                tag: "past 180",
                from: 179,
                to: -179,
                wrapped: true,
                rate: 20
            },
            {
                tag: "past -180",
                from: -179,
                to: 179,
                wrapped: true,
                rate: 20
            },
            {
                tag: "without a mark",
                from: 90,
                to: -150,
                wrapped: false,
                rate: -2400
            },
            {
                tag: "more than the sensor takes",
                from: -170,
                to: 170,
                wrapped: false,
                rate: 3000
            },
            {
                tag: "less than the sensor takes",
                from: 170,
                to: -170,
                wrapped: false,
                rate: -3000
            }
        ];
    }

    function test_wrap(data) {
        openPage();
        setRotation([0, 0, data.from]);
        tick();
        host.takeFrames();
        setRotation([0, 0, data.to]);
        page.zRotSliderReset = data.wrapped;
        tick();
        compare(page.zRotSliderReset, false);
        tick();
        compareFrames([gyroscopeFrame([0, 0, data.rate]), gyroscopeFrame([0, 0, 0])]);
    }

    function test_disabledGyroscopeKeepsCount() {
        openPage();
        sensorsEmulationManager.setSensorEnabled("gyroscope", false);
        setRotation([0, 0, 50]);
        tick();
        sensorsEmulationManager.setSensorEnabled("gyroscope", true);
        tick();
        compareFrames([gyroscopeFrame([0, 0, 0])]);
    }

    // --- the accelerometer in move mode ---

    // A jump is an acceleration, the same one backwards, and rest.
    function test_jump_data() {
        return [
            {
                tag: "x",
                position: [1, 0, 0],
                frames: [[1223, 1000, 0], [-1223, 1000, 0]]
            },
            {
                tag: "y",
                position: [0, 1, 0],
                frames: [[0, 2223, 0], [0, -223, 0]]
            },
            {
                tag: "z",
                position: [0, 0, 1],
                frames: [[0, 1000, 1223], [0, 1000, -1223]]
            },
            {
                tag: "limits",
                position: [2, -2, 2],
                frames: [[2447, -1447, 2447], [-2447, 3000, -2447]]
            }
        ];
    }

    function test_jump(data) {
        openPage();
        press("moveRadioButton");
        setPosition(data.position);
        tick();
        tick();
        tick();
        compareFrames([...data.frames, [0, 1000, 0]].map(accelerometerFrame));
    }

    function test_negativeLimit() {
        openPage();
        press("moveRadioButton");
        setPosition([2, 0, 0]);
        tick();
        tick();
        tick();
        host.takeFrames();
        setPosition([-2, 0, 0]);
        tick();
        tick();
        compareFrames([accelerometerFrame([-3000, 1000, 0]), accelerometerFrame([3000, 1000, 0])]);
    }

    // The same motion by the textbook, tick by tick, on a rotated phone.
    function test_motion() {
        openPage();
        setRotation([30, -40, 100]);
        press("moveRadioButton");
        const path = [[0, 0, 0], [0.1, 0, 0.3], [0.3, -0.1, 0.3], [0.3, -0.1, 0.2], [0.2, 0.4, 0], [0.2, 0.4, 0]];
        let last = [0, 0, 0];
        let beforeLast = [0, 0, 0];
        for (const place of path) {
            setPosition(place);
            tick();
            const metres = place.map(value => value * 0.06);
            const acceleration = metres.map((value, i) => {
                const speed = (last[i] - beforeLast[i]) / 0.1;
                return (value - last[i] - speed * 0.1) * 2 / 0.01;
            });
            beforeLast = last;
            last = metres;
            const pose = {
                x: 30,
                y: -40,
                z: 100
            };
            const [x, y, z] = acceleration;
            const sideways = Matrices.onPhone(pose, [x, -y, -z])[0];
            const [, upwards, forwards] = Matrices.onPhone(pose, acceleration);
            const [gx, gy, gz] = Matrices.onPhone(pose, [0, gravity, 0]);
            const expected = [gx + sideways, gy + upwards, gz + forwards];
            const actual = [page.accXValue, page.accYValue, page.accZValue];
            for (const axis of [0, 1, 2])
                compareClose(actual[axis], expected[axis], 1e-9);
            compareFrames([accelerometerFrame(actual.map(value => value * 1000 / gravity))]);
        }
    }

    // --- the keyboard ---

    function test_focus() {
        openPage();
        const scrollView = control("scrollView");
        compare(scrollView.activeFocus, true);
        mouseClick(control("xRotSlider/textField"));
        compare(control("xRotSlider/textField").activeFocus, true);
        click("gpsManagementButton");
        click("smartphoneModelButton");
        compare(scrollView.activeFocus, true);
        compare(control("xRotSlider/textField").activeFocus, false);
        press("orientationButton0");
        compare(scrollView.activeFocus, true);
        keyClick(Qt.Key_Up);
        compare(rotation(), [1, 0, 0]);
    }

    function test_editedFieldKeepsItsKeys() {
        openPage();
        mouseClick(control("zRotSlider/textField"));
        keyClick(Qt.Key_A, Qt.ControlModifier);
        compare(control("zRotSlider/textField").selectedText, "0.000");
        keyClick(Qt.Key_Up);
        keyClick(Qt.Key_Left);
        compare(page.rotationMode, true);
        compare(rotation(), [0, 0, 0]);
        compareFrames([]);
    }

    function test_keys_data() {
        const none = Qt.NoModifier;
        const shift = Qt.ShiftModifier;
        const control = Qt.ControlModifier;
        const rows = [];
        // What each key does to the rotation, to it with Shift, and to the position.
        const effects = [[Qt.Key_Left, "left", [0, 0, -1], [0, -1, 0], [-0.01, 0, 0]], [Qt.Key_Right, "right", [0, 0, 1], [0, 1, 0], [0.01, 0, 0]], [Qt.Key_Up, "up", [1, 0, 0], [1, 0, 0], [0, 0.01, 0]], [Qt.Key_Down, "down", [-1, 0, 0], [-1, 0, 0], [0, -0.01, 0]], [Qt.Key_X, "x", [0, 0, 0], [0, 0, 0], [0, 0, 0]]];
        for (const [key, name, plain, shifted, moved] of effects) {
            for (const [modifiers, prefix] of [[none, ""], [shift, "Shift+"], [control, "Ctrl+"], [control | shift, "Ctrl+Shift+"]]) {
                for (const mode of ["rotation", "move"]) {
                    const rotates = (mode === "rotation") !== Boolean(modifiers & control);
                    rows.push({
                        tag: "%1%2 in %3 mode".arg(prefix).arg(name).arg(mode),
                        mode,
                        key,
                        modifiers,
                        rotates,
                        rotation: rotates ? (modifiers & shift ? shifted : plain) : [0, 0, 0],
                        position: rotates ? [0, 0, 0] : moved
                    });
                }
            }
        }
        return rows;
    }

    function test_keys(data) {
        openPage();
        press(data.mode + "RadioButton");
        keyboard.press(data.key, data.modifiers);
        compare(rotation(), data.rotation);
        compare(position(), data.position);
        compare(page.rotationMode, data.rotates);
        compare(page.controlModifierPressed, Boolean(data.modifiers & Qt.ControlModifier));
        compareFrames(data.rotates ? poseFrames() : []);
        keyboard.release(data.key, data.modifiers);
        compare(page.rotationMode, data.rotates);
        keyboard.release(Qt.Key_Control, Qt.ControlModifier); // of its own key, a modifier is held until this moment
        compare(page.rotationMode, data.mode === "rotation");
        compare(page.controlModifierPressed, false);
    }

    function test_keyFrames() {
        openPage();
        for (const key of [Qt.Key_Left, Qt.Key_Up, Qt.Key_X]) {
            keyPress(key);
            compareFrames(poseFrames());
            keyRelease(key);
            compareFrames([]);
        }
        press("moveRadioButton");
        keyClick(Qt.Key_Left);
        compareFrames([]);
    }

    function test_autoRepeat() {
        openPage();
        const expected = [];
        keyboard.press(Qt.Key_Right);
        expected.push(...poseFrames());
        for (let i = 0; i < 20; ++i) {
            keyboard.repeat(Qt.Key_Right);
            expected.push(...poseFrames());
        }
        keyboard.release(Qt.Key_Right);
        compare(rotation(), [0, 0, 21]);
        compareFrames(expected);
    }

    function test_autoRepeatWithControl() {
        openPage();
        keyboard.press(Qt.Key_Control);
        keyboard.press(Qt.Key_Right, Qt.ControlModifier);
        for (let i = 0; i < 30; ++i) {
            keyboard.repeat(Qt.Key_Right, Qt.ControlModifier);
            compare(page.rotationMode, false);
        }
        keyboard.release(Qt.Key_Right, Qt.ControlModifier);
        keyboard.release(Qt.Key_Control, Qt.ControlModifier);
        compare(page.rotationMode, true);
        compare([...rotation(), ...position()], [0, 0, 0, 0.31, 0, 0]);
        compareFrames([]);
    }

    // The value goes past the end for one key press; the next one wraps it before it turns further.
    function test_rotationByKeysWraps_data() {
        return [
            {
                tag: "x forward",
                axis: "x",
                key: Qt.Key_Up,
                modifiers: Qt.NoModifier,
                step: 1
            },
            {
                tag: "x backward",
                axis: "x",
                key: Qt.Key_Down,
                modifiers: Qt.NoModifier,
                step: -1
            },
            {
                tag: "y forward",
                axis: "y",
                key: Qt.Key_Right,
                modifiers: Qt.ShiftModifier,
                step: 1
            },
            {
                tag: "y backward",
                axis: "y",
                key: Qt.Key_Left,
                modifiers: Qt.ShiftModifier,
                step: -1
            },
            {
                tag: "z forward",
                axis: "z",
                key: Qt.Key_Right,
                modifiers: Qt.NoModifier,
                step: 1
            },
            {
                tag: "z backward",
                axis: "z",
                key: Qt.Key_Left,
                modifiers: Qt.NoModifier,
                step: -1
            }
        ];
    }

    function test_rotationByKeysWraps(data) {
        openPage();
        const slider = control(data.axis + "RotSlider");
        const mark = data.axis + "RotSliderReset";
        slider.value = 180 * data.step;
        tick();
        const pressKey = () => keyboard.press(data.key, data.modifiers);
        pressKey();
        compare([slider.value, page[mark]], [181 * data.step, false]);
        pressKey();
        compare([slider.value, page[mark]], [-179 * data.step, true]);
        host.takeFrames();
        tick();
        compare(page[mark], false);
        // One degree on from 180, and positive at both ends.
        const [x, y, z] = rotation();
        const frequency = {
            x: 0,
            y: 0,
            z: 0
        };
        frequency[data.axis] = 1 / 36;
        const expected = Matrices.angularVelocity({
            x,
            y,
            z
        }, frequency);
        const actual = [page.gyroXValue, page.gyroYValue, page.gyroZValue];
        for (const i of [0, 1, 2])
            compareClose(actual[i], expected[i], 1e-4);
        compareFrames([gyroscopeFrame(actual)]);
        pressKey();
        compare([slider.value, page[mark]], [-178 * data.step, false]);
    }

    function test_positionEndsAtItsLimits_data() {
        return [
            {
                tag: "left",
                key: Qt.Key_Left,
                end: [-2, 0, 0]
            },
            {
                tag: "right",
                key: Qt.Key_Right,
                end: [2, 0, 0]
            },
            {
                tag: "up",
                key: Qt.Key_Up,
                end: [0, 2, 0]
            },
            {
                tag: "down",
                key: Qt.Key_Down,
                end: [0, -2, 0]
            }
        ];
    }

    function test_positionEndsAtItsLimits(data) {
        openPage();
        press("moveRadioButton");
        for (let i = 0; i < 205; ++i)
            keyPress(data.key);
        keyRelease(data.key);
        compare(position(), data.end);
    }

    // The mode comes back when the last modifier goes, whichever came first.
    function test_releaseOrder_data() {
        return [
            {
                tag: "Shift, Ctrl",
                keys: [Qt.Key_Shift, Qt.Key_Control],
                held: [Qt.ControlModifier | Qt.ShiftModifier, Qt.ControlModifier]
            },
            {
                tag: "Ctrl, Shift",
                keys: [Qt.Key_Control, Qt.Key_Shift],
                held: [Qt.ControlModifier | Qt.ShiftModifier, Qt.ShiftModifier]
            }
        ];
    }

    function test_releaseOrder(data) {
        openPage();
        keyboard.press(Qt.Key_Control);
        compare(page.rotationMode, false);
        keyboard.press(Qt.Key_Shift, Qt.ControlModifier);
        compare(page.rotationMode, false);
        keyboard.release(data.keys[0], data.held[0]);
        compare(page.rotationMode, false);
        keyboard.release(data.keys[1], data.held[1]);
        compare(page.rotationMode, true);
        compareFrames([]);
    }

    // Nobody hears of a release on another page.
    function test_leavingWhileControlIsHeld() {
        openPage();
        keyboard.press(Qt.Key_Control);
        compare(page.rotationMode, false);
        click("gpsManagementButton");
        compare([page.controlModifierPressed, page.rotationMode], [false, true]);
    }

    function test_releaseOfControlInAField() {
        openPage();
        keyboard.press(Qt.Key_Control);
        mouseClick(control("xMoveSlider/textField"));
        keyboard.release(Qt.Key_Control, Qt.ControlModifier);
        compare([page.controlModifierPressed, page.rotationMode], [false, true]);
    }

    // The sliders that a held Ctrl hides have no keys any more.
    function test_controlLeavesAHiddenSlider() {
        openPage();
        control("yRotSlider/slider").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        compare(rotation(), [0, 0.01, 0]);
        keyboard.press(Qt.Key_Control);
        keyboard.press(Qt.Key_Left, Qt.ControlModifier);
        keyboard.release(Qt.Key_Left, Qt.ControlModifier);
        keyboard.release(Qt.Key_Control, Qt.ControlModifier);
        compare([...rotation(), ...position()], [0, 0.01, 0, -0.01, 0, 0]);
    }

    function test_arrowsAfterAClickedSlider() {
        openPage();
        const slider = control("yRotSlider/slider");
        mouseClick(slider, slider.width / 2, slider.height / 2);
        tryCompare(slider, "activeFocus", false);
        keyClick(Qt.Key_Left);
        compare(rotation()[2], -1);
    }

    function test_clickedSliderOfAnotherPageKeepsItsKeys() {
        stopTimer();
        const slider = object("sensorsValuesPage/accelerometerControls/xSlider/slider");
        mouseClick(slider);
        compare(slider.activeFocus, true);
        keyClick(Qt.Key_Right);
        compare(host.takeFrames().length > 0, true);
        compare(slider.activeFocus, true);
    }

    // Nor in another window, which hears of it instead.
    function test_anotherWindowWhileControlIsHeld() {
        openPage();
        keyboard.press(Qt.Key_Control);
        compare(page.rotationMode, false);
        const other = createTemporaryObject(otherWindowComponent, null);
        other.requestActivate();
        tryCompare(other, "active", true);
        tryCompare(page, "controlModifierPressed", false);
        compare(page.rotationMode, true);
        closeOtherWindow(other);
        keyClick(Qt.Key_Left);
        compare([...rotation(), ...position()], [0, 0, -1, 0, 0, 0]);
    }

    function test_backFromAField_data() {
        return [
            {
                tag: "by Escape",
                leave: () => keyClick(Qt.Key_Escape)
            },
            {
                tag: "by a click beside everything",
                leave: () => mouseClick(page, page.width / 2, page.height - 20)
            },
            {
                tag: "by a click between the controls",
                leave: () => mouseClick(control("deviceRotationLabel"))
            }
        ];
    }

    function test_backFromAField(data) {
        openPage();
        mouseClick(control("yRotSlider/textField"));
        compare(control("yRotSlider/textField").activeFocus, true);
        data.leave();
        compare(control("yRotSlider/textField").activeFocus, false);
        keyClick(Qt.Key_Left);
        compare(rotation(), [0, 0, -1]);
    }

    function test_tabFromTheShownPage() {
        openPage();
        keyClick(Qt.Key_Tab);
        compare(root.Window.activeFocusItem, control("rotationRadioButton"));
        compareFrames([]);
        click("gpsManagementButton");
        click("smartphoneModelButton");
        host.takeFrames();
        keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
        compare(root.Window.activeFocusItem, object("cameraManagementButton"));
    }

    // Also when the focus has not moved with the page.
    function test_hiddenPageHasNoKeys() {
        openPage();
        view.switchVisiblePage(object("gpsManagementPage"));
        keyClick(Qt.Key_Left);
        compare(rotation(), [0, 0, 0]);
        compareFrames([]);
    }

    function test_modeChosenWhileControlIsHeld() {
        openPage();
        keyPress(Qt.Key_Left, Qt.ControlModifier);
        press("rotationRadioButton");
        keyRelease(Qt.Key_Left, Qt.ControlModifier);
        compare(page.rotationMode, false);
    }

    // --- the results ---

    function test_labels() {
        stopTimer();
        setField(10, 20, 30);
        setRotation([0, 0, 60]);
        showPage();
        const texts = () => page.sensorLabels.map(label => label.text);
        compare(texts(), ["Accelerometer (m/s²): 8.493 4.903 0.000", "Gyroscope (°/s): 0.000 0.000 0.000", "Magnetometer (μT): 22.321 1.340 30.000"]);
        tick();
        compare(texts()[1], "Gyroscope (°/s): 0.000 0.000 600.000");
    }

    // Whole thousandths of g, towards zero.
    function test_shownAcceleration_data() {
        return [[0, "0.000"], [9.80665, "9.807"], [-9.80665, "-9.807"], [0.009, "0.000"], [0.0099, "0.010"], [-0.009, "0.000"], [-0.0197, "-0.020"], [1234.5678, "1,234.559"]].map(([value, text]) => ({
                    tag: value,
                    value,
                    text
                }));
    }

    function test_shownAcceleration(data) {
        openPage();
        page.accXValue = data.value;
        page.accYValue = data.value;
        page.accZValue = data.value;
        compare(control("accelerometerLabel").text, "Accelerometer (m/s²): %1 %1 %1".arg(data.text));
    }

    // A turned phone leaves tiny numbers of either sign where there is nothing.
    function test_shownZeroHasNoSign() {
        openPage();
        page.magnetXValue = -3e-15;
        page.magnetYValue = -0.0004;
        page.magnetZValue = -0.0006;
        compare(control("magnetometerLabel").text, "Magnetometer (μT): 0.000 0.000 -0.001");
        page.gyroXValue = -0;
        page.gyroYValue = 1e-15;
        page.gyroZValue = -1234.5;
        compare(control("gyroscopeLabel").text, "Gyroscope (°/s): 0.000 0.000 -1,234.500");
    }

    function test_labelsOfSwitchedSensors() {
        openPage();
        const results = control("resultingValues");
        const visible = () => page.sensorLabels.map(label => label.visible);
        compare([...visible(), results.visible], [true, true, true, true]);
        sensorsEmulationManager.setSensorEnabled("gyroscope", false);
        compare(page.sensorLabels.map(label => label.enabled), [true, false, true]);
        host.setSensorAvailable("accelerometer", false);
        compare([...visible(), results.visible], [false, true, true, true]);
        host.setSensorAvailable("gyroscope", false);
        host.setSensorAvailable("magnetometer", false);
        compare([...visible(), results.visible], [false, false, false, false]);
        host.setSensorAvailable("magnetometer", true);
        compare([...visible(), results.visible], [false, false, true, true]);
    }

    // --- the mouse, for which there is nothing to take hold of yet ---

    function test_emptyModel() {
        openPage();
        const model = control("smartphoneModel");
        const area = control("mouseArea");
        compare([model.width, model.height, area.width, area.height], [0, 0, 0, 0]);
        compare(model.mesh, null);
        mouseDrag(page, page.width / 2, page.height / 2, 50, 50);
        compareFrames([]);
        compare([...rotation(), ...position()], [0, 0, 0, 0, 0, 0]);
    }

    // What a picture would bring: a size, and a mesh that is turned about the room's axes.
    function showModel(): QtObject {
        const model = control("smartphoneModel");
        model.width = 300;
        model.height = 200;
        model.z = 1;
        model.mesh = {
            matrix: Matrices.pose({
                x: 0,
                y: 0,
                z: 0
            }),
            rotation: {
                x: 0,
                y: 0,
                z: 0
            },
            rotateOnWorldAxis(axis, angle){
                const name = axis.x ? "x" : axis.y ? "y" : "z";
                this.matrix = Matrices.product(Matrices.turnAbout(name, angle * 180 / Math.PI), this.matrix);
                const m = this.matrix;
                this.rotation = {
                    x: Math.atan2(-m[1][2], m[2][2]),
                    y: Math.asin(m[0][2]),
                    z: Math.atan2(-m[0][1], m[0][0])
                };
            }
        };
        return control("mouseArea");
    }

    function test_rotationByMouse() {
        openPage();
        const area = showModel();
        mousePress(area, 20, 20);
        mouseMove(area, 20, 60);
        compareClose(rotation()[0], 20, 1e-9);
        mouseMove(area, 80, 60);
        const [x, y, z] = rotation();
        const actual = Matrices.pose({
            x,
            y,
            z
        });
        const expected = Matrices.product(Matrices.turnAbout("y", 30), Matrices.turnAbout("x", 20));
        for (const row of [0, 1, 2]) {
            for (const column of [0, 1, 2])
                compareClose(actual[row][column], expected[row][column], 1e-9);
        }
        mouseRelease(area, 80, 60);
    }

    // Across the vertical line through the centre, 150 to the right: by half the angle between the pointers.
    function test_rotationAcrossTheCentre_data() {
        return [
            {
                tag: "rightwards, down",
                from: [140, 20],
                to: [160, 24],
                sign: -1
            },
            {
                tag: "rightwards, up",
                from: [140, 24],
                to: [160, 20],
                sign: 1
            },
            {
                tag: "leftwards, down",
                from: [160, 20],
                to: [140, 24],
                sign: 1
            },
            {
                tag: "leftwards, up",
                from: [160, 24],
                to: [140, 20],
                sign: -1
            },
            {
                tag: "level",
                from: [140, 20],
                to: [160, 20],
                sign: 0
            },
            {
                tag: "on one side",
                from: [120, 20],
                to: [140, 24],
                sign: 0
            }
        ];
    }

    function test_rotationAcrossTheCentre(data) {
        openPage();
        const area = showModel();
        const angles = [];
        const turn = control("smartphoneModel").mesh.rotateOnWorldAxis;
        control("smartphoneModel").mesh = Object.assign(control("smartphoneModel").mesh, {
            rotateOnWorldAxis(axis, angle){
                angles.push(angle * 180 / Math.PI);
                turn.call(this, axis, angle);
            }
        });
        mousePress(area, ...data.from);
        mouseMove(area, ...data.to);
        mouseRelease(area, ...data.to);
        const direction = ([x, y]) => [x - 150, y - 100];
        const [[ax, ay], [bx, by]] = [data.from, data.to].map(direction);
        const cosine = (ax * bx + ay * by) / Math.hypot(ax, ay) / Math.hypot(bx, by);
        const angle = Math.acos(Math.round(cosine * 1000) / 1000) * 180 / Math.PI;
        compareClose(angles[0], (data.to[1] - data.from[1]) / 2, 1e-9);
        compareClose(angles[1], (data.to[0] - data.from[0]) / 2, 1e-9);
        compareClose(angles[2], data.sign * angle / 2, 1e-9);
    }

    function test_moveByMouse() {
        openPage();
        const area = showModel();
        press("moveRadioButton");
        mousePress(area, 100, 100);
        mouseMove(area, 150, 75);
        compare(position(), [1, 0.5, 0]);
        mouseMove(area, 299, 75); // would be 2.98
        compare(position(), [1, 0.5, 0]);
        mouseMove(area, 200, 199); // from where it stayed: 1 more to the right, and -1.98 in all
        compareClose(position()[0], 2, 1e-9);
        compareClose(position()[1], -1.98, 1e-9);
        mouseRelease(area, 200, 199);
        compareFrames([]);
    }

    function test_originFollowsThePosition() {
        openPage();
        showModel();
        compare([page.xOriginCoordinate, page.yOriginCoordinate], [150, 100]);
        setPosition([2, 1, 0]);
        compare([page.xOriginCoordinate, page.yOriginCoordinate], [225, 50]);
        setPosition([1, -1, -1]);
        compare([page.xOriginCoordinate, page.yOriginCoordinate], [150 + 300 / 16, 100 + 200 / 8]);
    }

    function test_wheel() {
        openPage();
        const area = showModel();
        for (let i = 1; i <= 12; ++i) {
            mouseWheel(area, 10, 10, 0, 120);
            compareClose(position()[2], Math.min(2, 0.2 * i), 1e-9);
        }
        for (let i = 1; i <= 22; ++i) {
            mouseWheel(area, 10, 10, 0, -120);
            compareClose(position()[2], Math.max(-2, 2 - 0.2 * i), 1e-9);
        }
        compareFrames([]);
    }

    // --- for people ---

    function test_spokenControls() {
        openPage();
        const presets = ["Top up", "Left side up", "Top down", "Right side up", "Face up", "Face down"].map(name => "Button " + name);
        const sliders = ["X-Rot", "Y-Rot", "Z-Rot"].reduce((names, name) => [...names, "Slider " + name, "EditableText " + name], []);
        compare(spoken(tabOrder().slice(5)), ["RadioButton Rotation", "RadioButton Move", ...sliders, ...presets]);
    }

    function test_focusIsVisible() {
        openPage();
        verifyFocusMarks(tabOrder());
    }

    // Every control can be reached in the smallest window.
    function test_smallWindow() {
        root.height = 400;
        openPage();
        const unreachable = tabOrder().slice(5).filter(item => {
            item.forceActiveFocus(Qt.TabFocusReason);
            const place = item.mapToItem(view, 0, 0);
            return place.y < 0 || place.y + item.height > 400;
        });
        root.height = 800;
        compare(unreachable.map(item => screenReader.describe(item).name), []);
    }
}
