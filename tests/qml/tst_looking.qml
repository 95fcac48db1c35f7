// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls
import QtTest

// Looking changes nothing, whatever the values are: neither the keys that lead from control to control nor a click into
// a field send anything.
ViewTestCase {
    id: root

    readonly property var models: ({
            accelerometer: ["x", "y", "z"],
            als: ["lux"],
            compass: ["azimuth", "calibrationLevel"],
            gyroscope: ["x", "y", "z"],
            magneticField: ["x", "y", "z"],
            magnetometer: ["x", "y", "z", "calibrationLevel"],
            orientation: ["orientation"],
            proximity: ["reflectance"],
            tap: ["tapDirection"]
        })

    // No field shows one of these as it is: they have more digits than it, or lie outside its range.
    function setOddValues() {
        const manager = sensorsEmulationManager;
        manager.setAccelerometerValues(123, -2876, 4011);
        manager.setAlsLuxValue(3456);
        manager.setGyroscopeValues(1.2345678, -31.415926, 0.0004);
        manager.setMagnetometerValues(1.23456789e-5, 9.87654e-5, -4e-10);
        manager.setMagnetometerCalibrationLevel(2);
        manager.setMagneticFieldX(12.3456789);
        manager.setMagneticFieldY(-101.5);
        manager.setProximitySensorReflectanceValue(12);
        manager.setTapSensorValue(3);
        manager.compass.azimuth = 359.6;
        gpsEmulationManager.setPosition(1.23456789, -2.345678912, 1234.567);
    }

    function values(): var {
        const position = gpsEmulationManager.currentPosition;
        const found = [position.latitude, position.longitude, position.altitude];
        for (const model in models)
            found.push(...models[model].map(name => sensorsEmulationManager[model][name]));
        return found;
    }

    function way(index: int): string {
        return `$GPWPL,480${index}.000,N,01131.000,E,P*5C`;
    }

    function loadTrack() {
        object("gpsManagementPage").loadNmeaLog([1, 2, 3].map(way).join("\n"));
        tryCompare(object("trackTableModel"), "rowCount", 3, 30000);
    }

    // Backwards with the key that a hand holds.
    function walk() {
        const order = tabOrder();
        order[0].forceActiveFocus(Qt.TabFocusReason);
        for (let i = 0; i < order.length; ++i) {
            keyboard.press(Qt.Key_Shift, Qt.ShiftModifier);
            keyboard.press(Qt.Key_Backtab, Qt.ShiftModifier);
            keyboard.release(Qt.Key_Backtab, Qt.ShiftModifier);
            keyboard.release(Qt.Key_Shift);
        }
        return order;
    }

    function clickIntoFields(items: list<Item>): int {
        let clicked = 0;
        for (const item of items) {
            const center = item.mapToItem(root, item.width / 2, item.height / 2);
            if (!(item instanceof TextField) || !item.enabled || !root.contains(center))
                continue;
            mouseClick(item);
            compare(item.activeFocus, true);
            ++clicked;
        }
        items[0].forceActiveFocus(Qt.TabFocusReason);
        return clicked;
    }

    name: "Looking"

    function test_looking_data(): var {
        return [
            {
                tag: "the sensors' switches",
                page: "sensorsManagement",
                fields: 0
            },
            {
                tag: "the sensors' values",
                page: "sensorsValues",
                fields: 17
            },
            {
                tag: "the phone's rotation",
                page: "smartphoneModel",
                prepare: () => click("rotationRadioButton"),
                fields: 3
            },
            {
                tag: "the phone's position",
                page: "smartphoneModel",
                prepare: () => click("moveRadioButton"),
                fields: 3
            },
            {
                tag: "the position",
                page: "gpsManagement",
                fields: 4
            },
            {
                tag: "a track that stands",
                page: "gpsManagement",
                prepare: () => loadTrack(),
                fields: 4
            },
            {
                tag: "a track that plays",
                page: "gpsManagement",
                prepare: () => {
                    loadTrack();
                    gpsEmulationManager.setTrackIntervalMode(true);
                    click("playButton");
                    object("trackTimer").interval = object("syncTimer").interval = 2000000000;
                },
                fields: 4
            },
            {
                tag: "a video file",
                page: "cameraManagement",
                fields: 1
            },
            {
                tag: "a camera",
                page: "cameraManagement",
                prepare: () => {
                    host.plugCamera("Red", "video/x-raw,format=I420,width=640,height=480,framerate=30/1", "red");
                    click("cameraRadioButton");
                },
                fields: 0
            }
        ];
    }

    function test_looking(data: var) {
        click(data.page + "Button");
        if (data.prepare)
            data.prepare();
        object("smartphoneModelPage/timer").running = false;
        setOddValues();
        sensorsEmulationManager.sensorsInitialized();
        host.takeFrames();
        const before = values();

        const order = walk();
        compare(clickIntoFields(order), data.fields);
        compareFrames([]);
        compare(values(), before);
        compare(object("sensorsValuesPage").modelSensorChanged, false);
    }
}
