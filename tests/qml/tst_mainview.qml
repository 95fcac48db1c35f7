// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Dialogs
import QtTest

ViewTestCase {
    id: root

    readonly property list<string> pages: ["sensorsManagement", "sensorsValues", "smartphoneModel", "gpsManagement", "cameraManagement"]
    readonly property string warning: "The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?"

    function activePages(): var {
        return pages.filter(page => object(page + "Page").active);
    }

    function compareActive(page: string) {
        compare(activePages(), [page]);
        compare(pages.filter(name => object(name + "Page").visible), [page]);
        compare(pages.filter(name => object(name + "Button").active), [page]);
    }

    function changeAModelSensor() {
        sensorsEmulationManager.gyroscope.x = 3;
    }

    name: "MainView"

    function test_root() {
        const fresh = createTemporaryObject(viewComponent, root);
        compare(Qt.size(fresh.width, fresh.height), Qt.size(1100, 600));
        compare(fresh.color, themeBackgroundColorNormal);
        compare(fresh.pagesIds.map(page => page.objectName), Array.from(pages).map(page => page + "Page"));
        compare(fresh.lastChangedSensorName, "");
        compare(fresh.lastChangedSensorEnabled, false);
    }

    function test_startsOnTheSensorsValues() {
        compareActive("sensorsValues");
        compareFrames([]);
    }

    function test_layout() {
        const column = object("buttonsColumn");
        compare([column.x, column.y, column.width, column.height], [0, 0, 180, view.height]);
        const separator = object("buttonsColumnSeparator");
        compare([separator.x, separator.y, separator.width, separator.height], [180, 0, 1, view.height]);
        compare(separator.color, themeSeparatorColor);
        for (const name of pages) {
            const page = object(name + "Page");
            compare([page.x, page.y, page.width, page.height], [181, 0, view.width - 181, view.height]);
        }
        view.width = 2200;
        view.height = 1200;
        compare(object("sensorsValuesPage").width, 2019);
        compare(object("buttonsColumn").height, 1200);
    }

    function test_buttons() {
        const texts = ["Sensors Management", "Sensors Values", "Orientation Management", "GPS Management", "Camera Management"];
        compare(pages.map(page => object(page + "Button").text), texts);
        let above = -1;
        for (const page of pages) {
            const button = object(page + "Button");
            verify(button.y > above);
            above = button.y;
            compare([button.width, button.leftPadding, button.rightPadding], [180, 15, 15]);
            compare(button.contentItem.horizontalAlignment, Text.AlignLeft);
            compare(button.contentItem.verticalAlignment, Text.AlignVCenter);
            compare(button.contentItem.elide, Text.ElideRight);
            verify(!button.contentItem.truncated, button.text);
            compare(button.Accessible.name, button.text);
            compare(button.Accessible.checked, button.active);
        }
    }

    function test_buttonColours() {
        const active = object("sensorsValuesButton");
        const other = object("gpsManagementButton");
        compare(active.contentItem.color, Qt.color("white"));
        compare(active.background.color, themeHighlightColor);
        compare(other.contentItem.color, object("sensorsValuesPage/titleLabel").color);
        compare(other.background.color, themeBackgroundColorNormal);
        compare(other.contentItem.opacity, 1);
        other.enabled = false;
        fuzzyCompare(other.contentItem.opacity, 0.3, 1e-6);
    }

    function test_textsAreReadable_data(): var {
        return ["light-2024", "dark-2024", "flat-light", "flat-dark", "default", "design"].map(theme => ({
                    tag: theme
                }));
    }

    // At least 4.5 to 1 between the texts and what they stand on.
    function test_textsAreReadable(data: var) {
        host.theme = data.tag;
        createView();
        const luminance = color => {
            const channels = [color.r, color.g, color.b].map(c => c <= 0.03928 ? c / 12.92 : Math.pow((c + 0.055) / 1.055, 2.4));
            return 0.2126 * channels[0] + 0.7152 * channels[1] + 0.0722 * channels[2];
        };
        const contrast = (one, other) => {
            const [light, dark] = [luminance(one), luminance(other)].sort((a, b) => b - a);
            return (light + 0.05) / (dark + 0.05);
        };
        const label = object("accelerometerControls/xSlider/rowLabel");
        const field = object("accelerometerControls/xSlider/textField");
        tryVerify(() => contrast(label.color, themeBackgroundColorNormal) >= 4.5);
        verify(contrast(object("gpsManagementButton").contentItem.color, themeBackgroundColorNormal) >= 4.5);
        verify(contrast(field.color, field.palette.base) >= 4.5);
    }

    function test_pageButtonsAreReadable_data(): var {
        return host.themes().map(theme => ({
                    tag: theme
                }));
    }

    function test_pageButtonsAreReadable(data: var) {
        host.theme = data.tag;
        createView();
        for (const page of pages) {
            const contrast = eyes.textContrast(object(page + "Button").contentItem);
            verify(contrast >= 4.5, "%1: %2".arg(page).arg(contrast));
        }
    }

    function test_allThemes() {
        verify(host.themes().length >= 9, host.themes().join(" "));
    }

    function test_switching_data(): var {
        const rows = [];
        for (const from of pages) {
            for (const to of pages) {
                for (const changed of [false, true]) {
                    rows.push({
                        tag: "from %1 to %2, values %3".arg(from).arg(to).arg(changed ? "changed" : "unchanged"),
                        from: from,
                        to: to,
                        changed: changed,
                        asks: from === "sensorsValues" && to === "smartphoneModel" && changed
                    });
                }
            }
        }
        return rows;
    }

    function test_switching(data: var) {
        object("smartphoneModelPage/timer").running = false;
        click(data.from + "Button");
        compareActive(data.from);
        if (data.changed)
            changeAModelSensor();
        host.takeFrames();
        if (data.asks)
            messageBoxes.click(MessageDialog.Ok);
        click(data.to + "Button");
        compare(messageBoxes.takeSeen().map(box => box.text), data.asks ? [warning] : []);
        compareActive(data.to);
        // Only the phone model has values to send when it is shown.
        const methods = data.to === "smartphoneModel" ? ["setAccelerometerValues", "setGyroscopeValues", "setMagnetometerValues"] : [];
        compare(host.takeFrames().map(frame => frame.split(" ")[4]), methods);
    }

    function test_switchingByKeys() {
        object("gpsManagementButton").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        compareActive("gpsManagement");
    }

    function test_warning() {
        changeAModelSensor();
        messageBoxes.click(MessageDialog.Ok);
        click("smartphoneModelButton");
        compare(messageBoxes.takeSeen(), [
            {
                buttons: MessageDialog.Ok | MessageDialog.Cancel,
                checkBoxVisible: true,
                text: warning
            }
        ]);
        compareActive("smartphoneModel");
        click("sensorsValuesButton");
        changeAModelSensor();
        messageBoxes.click(MessageDialog.Cancel); // accepted without a tick: it asks again
        click("smartphoneModelButton");
        compare(messageBoxes.takeSeen().length, 1);
    }

    function test_rejectingKeepsThePage_data(): var {
        return [
            {
                tag: "cancelled",
                tick: false
            },
            {
                tag: "cancelled with a tick",
                tick: true
            }
        ];
    }

    function test_rejectingKeepsThePage(data: var) {
        changeAModelSensor();
        for (let i = 0; i < 2; ++i) {
            // The tick of a rejected question counts for nothing
            messageBoxes.click(MessageDialog.Cancel, data.tick);
            click("smartphoneModelButton");
            compare(messageBoxes.takeSeen().length, 1);
            compareActive("sensorsValues");
            compare(object("sensorsValuesPage").modelSensorChanged, true);
        }
    }

    function test_doNotShowAgain() {
        changeAModelSensor();
        messageBoxes.click(MessageDialog.Ok, true);
        click("smartphoneModelButton");
        compare(messageBoxes.takeSeen().length, 1);
        compareActive("smartphoneModel");
        compare(object("settingsManager").readDoNotShowAgainResetSensorsDialog(), true);
        click("sensorsValuesButton");
        changeAModelSensor();
        click("smartphoneModelButton");
        compareActive("smartphoneModel");
    }

    function test_declinedLeavingChangesNothing() {
        click("sensorsManagementButton");
        object("tapCheckBox").toggle();
        messageBoxes.click(MessageDialog.Help); // no such button: the box goes without an answer
        click("sensorsValuesButton");
        compare(messageBoxes.takeSeen().length, 1);
        compareActive("sensorsManagement");
    }

    function test_clickingTheActivePageAsksItToo() {
        click("sensorsManagementButton");
        object("tapCheckBox").toggle();
        messageBoxes.click(MessageDialog.Discard);
        click("sensorsManagementButton");
        compare(messageBoxes.takeSeen().length, 1);
        compareActive("sensorsManagement");
        compare(object("tapCheckBox").checked, true);
    }

    function test_replies_data(): var {
        return [
            {
                tag: "an empty reply is ignored",
                reply: "",
                error: ""
            },
            {
                tag: "five fields without an error are a success",
                reply: "a:b:c::",
                error: ""
            },
            {
                tag: "an error is shown as its name and message",
                reply: "a:b:c:org.freedesktop.DBus.Error.Failed:boom",
                error: "org.freedesktop.DBus.Error.Failed boom"
            },
            {
                tag: "a plain message is shown as it is",
                reply: "no such service",
                error: "no such service"
            }
        ];
    }

    function test_replies(data: var) {
        const dialog = object("errorDialog");
        compare(dialog.title, "Error");
        compare(dialog.buttons, MessageDialog.Ok);
        replySpy.clear();
        invoker.sendText(data.reply);
        tryCompare(replySpy, "count", 1);
        compare(dialog.visible, data.error !== "");
        compare(dialog.text, data.error);
        dialog.close();
    }

    function test_markupIsShownAsItIsWritten_data(): var {
        return ["<b>boom</b>", "<html>", "a < b > c <i>d</i>", "&lt;b&gt; &amp;", "&lt;b>", "<?xml version='1.0'?>", "R&D <u>&lt;</u>", " <img src='qrc:/x'/>"].map(text => ({
                    tag: text
                }));
    }

    function test_markupIsShownAsItIsWritten(data: var) {
        const dialog = object("errorDialog");
        invoker.sendText(data.tag);
        tryCompare(dialog, "visible", true);
        verifyShown(eyes.find("textLabel"), data.tag);
        dialog.close();
        tryCompare(dialog, "visible", false);
    }

    function test_aHugeReplyDoesNotHang_data(): var {
        return [
            {
                tag: "one word",
                reply: "x".repeat(10 * 1024 * 1024)
            },
            {
                tag: "words",
                reply: "boom ".repeat(2 * 1024 * 1024)
            },
            {
                tag: "lines",
                reply: "boom\n".repeat(2 * 1024 * 1024)
            }
        ];
    }

    function test_aHugeReplyDoesNotHang(data: var) {
        const dialog = object("errorDialog");
        invoker.sendText(data.reply);
        tryCompare(dialog, "visible", true, 30000);
        waitForRendering(view);
        // Of a text that nobody can read to its end, the beginning shows.
        compare(dialog.text, data.reply.substring(0, 2000) + "\u2026");
        dialog.close();
    }

    function test_errorRevertsToTheRequestedState() {
        view.lastChangedSensorName = "als";
        view.lastChangedSensorEnabled = true;
        sensorsEmulationManager.setSensorEnabled("als", false);
        invoker.sendText("boom");
        tryCompare(object("errorDialog"), "visible", true);
        compare(sensorsEmulationManager.sensorsEnabledStates.als, true);
        compare(view.lastChangedSensorName, "");
        compare(object("lightSensorControls").controlsEnabled, true);
        object("errorDialog").close();
        compareFrames([]);
    }

    function test_sharedDialogs() {
        compare(object("messageDialog").buttons, MessageDialog.Ok);
        compare(object("warningDialog").text, warning);
        compare(object("warningDialog").withDoNotShowAgainCheckBox, true);
    }

    SignalSpy {
        id: replySpy

        target: root.view ? sensorsEmulationManager : null
        signalName: "replyFromEmulatorReceived"
    }
}
