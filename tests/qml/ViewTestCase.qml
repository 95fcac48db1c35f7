// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtTest
import "qrc:/emulationmanagement/qml"

// A fresh main view, all sensors enabled and nothing sent yet, for every test function.
TestCase {
    id: root

    property EmulationManagementView view
    readonly property Component viewComponent: Component {
        EmulationManagementView {}
    }

    // The frame of one call into the emulator's sensor service.
    function frame(method: string, callArguments: string): string {
        const name = "ru.kelo.SensorfwEmulationManagement";
        return ["system", name, "/ru/kelo/SensorfwEmulationManagement", name, method, callArguments].join(" ");
    }

    function compareFrames(expected: list<string>) {
        compare(host.takeFrames(), expected);
    }

    // "a/b" is the object named b in the object named a.
    function object(path: string): QtObject {
        return path.split("/").reduce((parent, name) => {
            const child = findChild(parent, name);
            verify(child, name + " exists");
            return child;
        }, view);
    }

    function click(path: string) {
        const item = object(path);
        mouseClick(item, item.width / 2, item.height / 2);
    }

    // In place of the one before, where there is one.
    function createView() {
        if (view)
            view.destroy();
        view = createTemporaryObject(viewComponent, root);
        view.width = Qt.binding(() => root.width);
        view.height = Qt.binding(() => root.height);
        waitForRendering(view);
    }

    function init() {
        // All but what the offscreen platform says of every native dialog.
        failOnWarning(/^(?!This plugin does not support propagateSizeHints\(\)$)/);
        host.theme = "flat-light";
        host.startAnew();
        for (const sensor of Object.keys(sensorsEmulationManager.sensorsEnabledStates))
            sensorsEmulationManager.setSensorEnabled(sensor, true);
        createView();
        host.takeFrames();
    }

    function cleanup() {
        compare(messageBoxes.takeSeen(), []);
        compare(messageBoxes.unanswered(), 0);
    }

    visible: true
    when: windowShown
    width: 1100
    height: 800
}
