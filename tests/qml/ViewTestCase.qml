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
    property bool boxesChecked: true

    readonly property Component plainTextComponent: Component {
        Text {
            textFormat: Text.PlainText
        }
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

    // What Tab comes to, from the first page button round to it again.
    function tabOrder(): list<Item> {
        const first = object("sensorsManagementButton");
        first.forceActiveFocus(Qt.TabFocusReason);
        const items = [];
        do {
            items.push(root.Window.activeFocusItem);
            verify(items.length < 100);
            keyClick(Qt.Key_Tab);
        } while (root.Window.activeFocusItem !== first)
        return items;
    }

    // "role name" of each, as a screen reader has it.
    function spoken(items: var): var {
        return Array.from(items).map(item => {
            const description = screenReader.describe(item);
            return "%1 %2".arg(description.role).arg(description.name);
        });
    }

    // Each item but the first looks different once Tab has come to it.
    function verifyFocusMarks(order: list<Item>) {
        order[0].forceActiveFocus(Qt.TabFocusReason);
        for (const item of order.slice(1)) {
            const name = screenReader.describe(item).name;
            // A field's cursor is no mark.
            const look = item.hasOwnProperty("cursorPosition") ? item.background : item;
            const without = eyes.picture(look);
            keyClick(Qt.Key_Tab);
            compare(root.Window.activeFocusItem, item, name);
            const changed = eyes.changedPixels(eyes.picture(look), without);
            verify(changed >= 40, "%1: %2 pixels".arg(name).arg(changed));
        }
    }

    // The label shows just this text, with tags and ampersands and all.
    function verifyShown(label: Text, text: string) {
        const plain = createTemporaryObject(plainTextComponent, root, {
            font: label.font,
            text: text
        });
        verify(plain.implicitWidth > 0);
        fuzzyCompare(label.implicitWidth - label.leftPadding - label.rightPadding, plain.implicitWidth, 0.5);
    }

    // Once it has the keys, which are the view's again then.
    function closeOtherWindow(window: Window) {
        tryCompare(window, "active", true);
        window.close();
        root.Window.window.requestActivate();
        tryCompare(root.Window, "active", true);
    }

    // One of the view's own boxes, which must be there.
    function closeBox(name: string) {
        tryCompare(object(name), "visible", true, 60000);
        object(name).close();
        tryCompare(object(name), "visible", false);
        root.Window.window.requestActivate();
        tryVerify(() => root.Window.active);
    }

    // In place of the one before, where there is one.
    function createView() {
        if (view)
            view.destroy();
        view = createTemporaryObject(viewComponent, root);
        view.width = Qt.binding(() => root.width);
        view.height = Qt.binding(() => root.height);
        waitForRendering(view);
        // A connection comes between the view's creation and its first show, and brings the stored values, at first the
        // defaults.
        sensorsEmulationManager.setDefaultValues();
        sensorsEmulationManager.sensorsInitialized();
        host.takeFrames();
    }

    // What a page has to do after each of its tests.
    function cleanupPage() {
    }

    function init() {
        verify(boxesChecked, "cleanup() is not for pages, which have cleanupPage()");
        boxesChecked = false;
        // All but what the offscreen platform says of every native dialog.
        failOnWarning(/^(?!This plugin does not support propagateSizeHints\(\)$)/);
        host.theme = "flat-light";
        host.startAnew();
        for (const sensor of Object.keys(sensorsEmulationManager.sensorsEnabledStates))
            sensorsEmulationManager.setSensorEnabled(sensor, true);
        createView();
    }

    function cleanup() {
        boxesChecked = true;
        cleanupPage();
        compare(messageBoxes.takeSeen(), []);
        compare(messageBoxes.unanswered(), 0);
        for (const name of ["errorDialog", "messageDialog"])
            compare(object(name).visible, false, name);
    }

    visible: true
    when: windowShown
    width: 1100
    height: 800
}
