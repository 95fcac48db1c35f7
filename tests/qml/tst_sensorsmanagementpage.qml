// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Dialogs
import "qrc:/emulationmanagement/qml"

ViewTestCase {
    id: root

    readonly property Item page: view ? findChild(view, "sensorsManagementPage") : null
    // In the order of the page.
    readonly property list<string> sensors: ["accelerometer", "compass", "orientation", "magnetometer", "gyroscope", "als", "proximity", "tap"]
    readonly property string question: "The sensor configuration has been changed. Apply or discard changes?"

    function box(sensor: string): Item {
        return object(sensor + "CheckBox") as Item;
    }

    function clickBox(sensor: string) {
        mouseClick(box(sensor), 10, box(sensor).height / 2);
    }

    function checkedSensors(): var {
        return sensors.filter(sensor => box(sensor).checked);
    }

    function enabledSensors(): var {
        return sensors.filter(sensor => sensorsEmulationManager.sensorsEnabledStates[sensor]);
    }

    function enableAll(enabled: bool) {
        for (const sensor of sensors)
            sensorsEmulationManager.setSensorEnabled(sensor, enabled);
        click("resetButton");
    }

    function applyFrames(enabled: var): var {
        return sensors.map(sensor => frame(enabled.includes(sensor) ? "enableSensor" : "disableSensor", "string:" + sensor));
    }

    // A list of sensors without regard to order.
    function inPageOrder(names: string): var {
        return sensors.filter(sensor => names.split(" ").includes(sensor));
    }

    function without(names: string): var {
        return sensors.filter(sensor => !names.split(" ").includes(sensor));
    }

    name: "SensorsManagementPage"

    function init_page() {
        click("sensorsManagementButton");
        compare(page.visible, true);
    }

    function test_texts() {
        init_page();
        const texts = ["Accelerometer", "Compass", "Orientation Sensor", "Magnetometer", "Gyroscope", "Light Sensor", "Proximity Sensor", "Tap Sensor"];
        compare(page.sensorsControlsIds.map(control => control.sensorName), Array.from(sensors));
        compare(page.sensorsControlsIds.map(control => control.text), texts);
        compare(sensors.map(sensor => box(sensor).y).every((y, i, all) => i === 0 || y > all[i - 1]), true);
        compare(object("restartLabel").text, "After applying changes, all applications retrieving data from sensors must be restarted.");
        compare(object("resetButton").text, "Reset");
        compare(object("applyButton").text, "Apply");
    }

    function test_checkingFollowsTheTable_data(): var {
        return [["accelerometer", "accelerometer"], ["als", "als"], ["compass", "compass accelerometer magnetometer"], ["gyroscope", "gyroscope"], ["magnetometer", "magnetometer"], ["proximity", "proximity"], ["tap", "tap"], ["orientation", "orientation accelerometer"]].map(([sensor, others]) => ({
                    tag: sensor,
                    sensor: sensor,
                    others: others
                }));
    }

    function test_checkingFollowsTheTable(data: var) {
        init_page();
        enableAll(false);
        compare(checkedSensors(), []);
        clickBox(data.sensor);
        compare(checkedSensors(), inPageOrder(data.others));
        compareFrames([]);
        compare(enabledSensors(), []);
        click("resetButton");
        compare(checkedSensors(), []);
        compareFrames([]);
    }

    function test_uncheckingFollowsTheTable_data(): var {
        return [["accelerometer", "accelerometer compass orientation"], ["als", "als"], ["compass", "compass"], ["gyroscope", "gyroscope"], ["magnetometer", "magnetometer compass"], ["proximity", "proximity"], ["tap", "tap"], ["orientation", "orientation"]].map(([sensor, others]) => ({
                    tag: sensor,
                    sensor: sensor,
                    others: others
                }));
    }

    function test_uncheckingFollowsTheTable(data: var) {
        init_page();
        enableAll(true);
        compare(checkedSensors(), Array.from(sensors));
        clickBox(data.sensor);
        compare(checkedSensors(), without(data.others));
        compareFrames([]);
        compare(enabledSensors(), Array.from(sensors));
    }

    function test_spaceWorksLikeAClick() {
        init_page();
        box("accelerometer").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compare(checkedSensors(), without("accelerometer compass orientation"));
        compareFrames([]);
    }

    function test_applySwitchesEverySensor_data(): var {
        return [
            {
                tag: "nothing changed",
                clicked: "",
                enabled: "accelerometer compass orientation magnetometer gyroscope als proximity tap"
            },
            {
                tag: "one switched off",
                clicked: "tap",
                enabled: "accelerometer compass orientation magnetometer gyroscope als proximity"
            },
            {
                tag: "an input switched off",
                clicked: "accelerometer",
                enabled: "magnetometer gyroscope als proximity tap"
            }
        ];
    }

    function test_applySwitchesEverySensor(data: var) {
        init_page();
        if (data.clicked)
            clickBox(data.clicked);
        click("applyButton");
        compareFrames(applyFrames(inPageOrder(data.enabled)));
        compare(enabledSensors(), inPageOrder(data.enabled));
        compare(checkedSensors(), inPageOrder(data.enabled));
        click("sensorsValuesButton"); // nothing is left to ask about
        compare(page.active, false);
    }

    function test_tabOrder() {
        init_page();
        const texts = ["Accelerometer", "Compass", "Orientation Sensor", "Magnetometer", "Gyroscope", "Light Sensor", "Proximity Sensor", "Tap Sensor"];
        const pages = ["Sensors Management", "Sensors Values", "Orientation Management", "GPS Management", "Camera Management"];
        const order = tabOrder();
        const checkBoxes = texts.map(text => "CheckBox " + text);
        const expected = [...pages.map(text => "Button " + text), ...checkBoxes, "Button Reset", "Button Apply"];
        compare(spoken(order), expected);
        order[0].forceActiveFocus(Qt.TabFocusReason);
        for (const item of Array.from(order).reverse()) {
            keyClick(Qt.Key_Backtab);
            compare(root.Window.activeFocusItem, item);
        }
        verifyFocusMarks(order);
        compareFrames([]);
    }

    function test_boxesSpeak_data(): var {
        return sensors.map(sensor => ({
                    tag: sensor,
                    sensor: sensor
                }));
    }

    function test_boxesSpeak(data: var) {
        init_page();
        compare(screenReader.describe(box(data.sensor)).checked, true);
        clickBox(data.sensor);
        compare(screenReader.describe(box(data.sensor)).checked, false);
        compare(screenReader.describe(page).name, "Sensors Management");
        click("resetButton");
    }

    function test_applyByKeys() {
        init_page();
        object("applyButton").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compareFrames(applyFrames(Array.from(sensors)));
    }

    function test_boxesShowTheStatesWhenThePageAppears() {
        sensorsEmulationManager.setSensorEnabled("gyroscope", false);
        init_page();
        compare(checkedSensors(), without("gyroscope"));
        sensorsEmulationManager.setSensorEnabled("tap", false); // a report does not overwrite what the user is choosing
        compare(checkedSensors(), without("gyroscope"));
        click("resetButton");
        compare(checkedSensors(), without("gyroscope tap"));
        compareFrames([]);
    }

    function test_unavailableSensorIsHidden_data(): var {
        return sensors.map(sensor => ({
                    tag: sensor,
                    sensor: sensor
                }));
    }

    function test_unavailableSensorIsHidden(data: var) {
        init_page();
        host.setSensorAvailable(data.sensor, false);
        compareFrames([frame("disableSensor", "string:" + data.sensor)]);
        compare(sensors.filter(sensor => box(sensor).visible), without(data.sensor));
        compare(checkedSensors(), without(data.sensor));
        host.setSensorAvailable(data.sensor, true);
        compareFrames([frame("enableSensor", "string:" + data.sensor)]);
        compare(sensors.filter(sensor => box(sensor).visible), Array.from(sensors));
        compare(checkedSensors(), Array.from(sensors));
    }

    function test_sensorUnavailableAtTheStartIsHidden() {
        host.setSensorAvailable("als", false);
        const page = createTemporaryObject(pageComponent, root);
        compare(page.sensorsControlsIds.filter(control => !control.visible).map(control => control.sensorName), ["als"]);
        host.takeFrames();
    }

    function test_windowShownLaterShowsWhatHappenedBefore() {
        const window = createTemporaryObject(hiddenWindowComponent, root);
        host.setSensorAvailable("als", false);
        sensorsEmulationManager.setSensorEnabled("tap", false);
        window.visible = true;
        const boxes = Array.from(window.page.sensorsControlsIds);
        compare(boxes.map(box => box.sensorName), Array.from(sensors));
        compare(boxes.filter(box => box.visible).map(box => box.sensorName), without("als"));
        compare(boxes.filter(box => box.checked).map(box => box.sensorName), without("als tap"));
        closeOtherWindow(window);
        host.takeFrames();
    }

    function test_leavingWithoutChangesAsksNothing() {
        init_page();
        clickBox("tap");
        clickBox("tap");
        click("gpsManagementButton");
        compare(page.active, false);
        compareFrames([]);
    }

    function test_leavingWithChangesAsks_data(): var {
        return [
            {
                tag: "apply",
                button: MessageDialog.Apply,
                frames: applyFrames(without("tap")),
                enabled: without("tap")
            },
            {
                tag: "discard",
                button: MessageDialog.Discard,
                frames: [],
                enabled: Array.from(sensors)
            }
        ];
    }

    function test_leavingWithChangesAsks(data: var) {
        init_page();
        clickBox("tap");
        messageBoxes.click(data.button);
        click("gpsManagementButton");
        compare(messageBoxes.takeSeen(), [
            {
                buttons: MessageDialog.Apply | MessageDialog.Discard,
                checkBoxVisible: false,
                text: question
            }
        ]);
        compareFrames(data.frames);
        compare(enabledSensors(), data.enabled);
        compare(checkedSensors(), data.enabled);
        compare(page.active, false);
        compare(object("gpsManagementPage").active, true);
    }

    function test_unansweredQuestionKeepsThePage() {
        init_page();
        clickBox("tap");
        messageBoxes.click(MessageDialog.Help); // no such button: the box goes without an answer
        click("gpsManagementButton");
        compare(messageBoxes.takeSeen().length, 1);
        compare(page.active, true);
        compare(object("gpsManagementPage").active, false);
        compare(checkedSensors(), without("tap"));
        compareFrames([]);
    }

    function test_comingBackAsksAgainForNewChangesOnly() {
        init_page();
        clickBox("tap");
        messageBoxes.click(MessageDialog.Discard);
        click("gpsManagementButton");
        compare(messageBoxes.takeSeen().length, 1);
        init_page();
        click("gpsManagementButton");
        compare(page.active, false);
    }

    function test_errorReplyAfterApply_data(): var {
        return [
            {
                tag: "switched off",
                requested: false
            },
            {
                tag: "left on",
                requested: true
            }
        ];
    }

    function test_errorReplyAfterApply(data: var) {
        init_page();
        if (!data.requested)
            clickBox("tap");
        click("applyButton");
        host.takeFrames();
        compare(view.lastChangedSensorName, "tap");
        compare(view.lastChangedSensorEnabled, data.requested);
        // Another report comes between, so that the revert has something to do.
        invoker.sendText("enabled:tap:%1::".arg(!data.requested));
        tryVerify(() => sensorsEmulationManager.sensorsEnabledStates.tap === !data.requested);
        compare(object("tapControls").controlsEnabled, !data.requested);
        invoker.sendText("a:b:c:org.freedesktop.DBus.Error.Failed:boom");
        tryCompare(object("errorDialog"), "visible", true);
        compare(object("errorDialog").text, "org.freedesktop.DBus.Error.Failed boom");
        compare(sensorsEmulationManager.sensorsEnabledStates.tap, data.requested); // what was asked for is set once more
        compare(object("tapControls").controlsEnabled, data.requested);
        compare(enabledSensors().length, data.requested ? 8 : 7);
        compare(view.lastChangedSensorName, "");
        compareFrames([]);
        object("errorDialog").close();
    }

    Component {
        id: hiddenWindowComponent

        Window {
            readonly property alias page: hiddenPage

            SensorsManagementPage {
                id: hiddenPage

                active: true
            }
        }
    }

    Component {
        id: pageComponent

        SensorsManagementPage {
            active: true
        }
    }
}
