// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtTest
import "qrc:/emulationmanagement/qml"

ViewTestCase {
    id: root

    readonly property CameraManagementPage page: view ? findChild(view, "cameraManagementPage") : null
    readonly property string large: "video/x-raw,format=I420,width=640,height=480,framerate={(fraction)30/1,(fraction)15/1}"
    readonly property string small: "video/x-raw,format=I420,width=320,height=240,framerate={(fraction)15/1,(fraction)5/1}"
    readonly property string unknownCodec: "Could not determine the video codec of the video file. Supported codecs: VP8 and VP9."

    function cleanupPage() {
        cameraEmulationManager.stopVideoStream();
        cameraEmulationManager.stopCameraStream();
        streams.stopReceiving();
        control("fileDialog").close();
        tryCompare(control("fileDialog"), "visible", false);
    }

    name: "CameraManagementPage"

    SignalSpy {
        id: appliedSpy

        target: cameraEmulationManager
        signalName: "cameraStreamSettingsApplied"
    }

    SignalSpy {
        id: streamRunningSpy

        target: cameraEmulationManager
        signalName: "streamRunningChanged"
    }

    // The view is shown on a host with these cameras: a red one with two sizes, and a blue one with a single one.
    function showPage(cameras: list<string>) {
        root.Window.window.requestActivate(); // after a box of the test before
        tryVerify(() => root.Window.active);
        for (const name of cameras)
            plug(name);
        cameraEmulationManager.updateCamerasList();
        host.setupCameraStreamPipeline();
        click("cameraManagementButton");
        compare(page.visible, true);
        streams.take();
        appliedSpy.clear();
        streamRunningSpy.clear();
    }

    function plug(name: string) {
        if (name === "Red")
            host.plugCamera(name, large + ";" + small, "red");
        else
            host.plugCamera(name, small, "blue");
    }

    function control(name: string): QtObject {
        return object("cameraManagementPage/" + name);
    }

    function press(name: string) {
        const item = control(name);
        verify(item.enabled && item.visible, name + " can be clicked");
        mouseClick(item, item.width / 2, item.height / 2);
    }

    function choose(name: string, index: int) {
        const box = control(name);
        box.forceActiveFocus();
        for (let steps = Math.abs(index - box.currentIndex); steps > 0; --steps)
            keyClick(box.currentIndex < index ? Qt.Key_Down : Qt.Key_Up);
        compare(box.currentIndex, index);
    }

    function openFile(url: url) {
        const dialog = control("fileDialog");
        dialog.currentFile = url;
        dialog.open();
        tryCompare(dialog, "visible", true);
        dialog.accept();
        tryCompare(dialog, "visible", false);
    }

    function selectAndCancel(url: url) {
        const dialog = control("fileDialog");
        press("openFileButton");
        tryCompare(dialog, "visible", true);
        dialog.currentFile = url;
        dialog.reject();
        tryCompare(dialog, "visible", false);
    }

    // Which source is chosen, what can be clicked, and what is there to choose from.
    function state(): string {
        const shown = ["cameraRow", "videoFileRow"].filter(name => control(name).visible);
        const checked = ["cameraRadioButton", "videoFileSourceRadioButton"].filter(name => control(name).checked);
        const enabled = ["cameraRadioButton", "playButton", "stopButton"].filter(name => control(name).enabled);
        return [...checked, "|", ...enabled, "|", ...shown].join(" ").replace(/RadioButton|Button|Row|Source/g, "").trim();
    }

    function boxTexts(): var {
        return ["cameraBox", "resolutionBox", "framerateBox"].map(name => control(name).displayText);
    }

    function currentValues(): var {
        return ["currentCameraLabel", "currentResolutionLabel", "currentFramerateLabel"].map(name => control(name).text);
    }

    function selection(): var {
        const manager = cameraEmulationManager;
        return [manager.cameraName, manager.width, manager.height, manager.framerate];
    }

    function compareError(text: string) {
        tryCompare(object("errorDialog"), "visible", true);
        compare(object("errorDialog").text, text);
        closeBox("errorDialog");
    }

    // --- Without a camera -------------------------------------------------------------------------------------------

    function test_withoutACamera() {
        showPage([]);
        compare(state(), "videoFile | | videoFile");
        compare(control("videoFileField").text, "");
        compare(control("videoFileField").readOnly, true);
        compare(control("videoFileField").width, 200);
        compare(streams.take(), []);
    }

    function test_thePageStartsWithoutACamera() {
        compare(state(), "videoFile | |");
        compare(page.active, false);
        compare([page.currentCameraName, page.currentResolution, page.currentFramerate], ["", "", ""]);
        compare([page.videoFileUrl.toString(), page.videoFilePath], ["", ""]);
        compare(cameraEmulationManager.streamRunning, false);
    }

    function test_aCameraIsPluggedIn() {
        showPage([]);
        plug("Red");
        compare(state(), "camera | camera play | camera");
        compare(cameraEmulationManager.streamRunning, false);
    }

    function test_aCameraIsThereWhenTheViewIsMade() {
        plug("Blue");
        createView();
        click("cameraManagementButton");
        compare(state(), "camera | camera play | camera");
    }

    function test_anotherCameraLeavesTheSource() {
        showPage(["Blue"]);
        press("videoFileSourceRadioButton");
        plug("Red");
        compare(state(), "videoFile | camera | videoFile");
    }

    // The page does not choose again by itself.
    function test_theLastCameraIsUnplugged() {
        showPage(["Blue"]);
        host.unplugCamera("Blue");
        compare(state(), "| play |");
        press("videoFileSourceRadioButton");
        compare(state(), "videoFile | | videoFile");
        plug("Blue");
        compare(state(), "camera | camera play | camera");
    }

    function test_aCameraPluggedInReplacesTheVideo() {
        showPage([]);
        openFile(files.writeVideo("green.webm", "lime"));
        streams.take();
        plug("Blue");
        compare(state(), "camera | camera stop | camera");
        compare(streams.take()[0], "stop video");
        streams.receive();
        tryVerify(() => streams.shows("blue"), 30000);
    }

    function test_aCameraThatIsPluggedInStreams_data(): var {
        return [
            {
                tag: "as it is",
                choices: [],
                size: Qt.size(640, 480)
            },
            {
                tag: "once it is chosen, with another size",
                choices: [["cameraBox", 0], ["resolutionBox", 1]],
                size: Qt.size(320, 240)
            }
        ];
    }

    // The list is not renewed.
    function test_aCameraThatIsPluggedInStreams(data: var) {
        showPage([]);
        plug("Red");
        compare(boxTexts(), ["", "", ""]);
        for (const [name, index] of data.choices)
            choose(name, index);
        if (data.choices.length > 0)
            press("setSettingsButton");
        streams.receive();
        press("playButton");
        tryVerify(() => streams.shows("red") && streams.size() === data.size, 30000);
    }

    // As of a laptop: its largest size, which is chosen first, comes as JPEG only.
    function test_aWebcamStreams() {
        host.plugCamera("Webcam", "video/x-raw,format=YUY2,width=320,height=240,framerate=30/1;image/jpeg,width=640,height=480,framerate=30/1;image/jpeg,width=320,height=240,framerate=30/1", "blue");
        showPage([]);
        compare(boxTexts(), ["Webcam", "640x480", "30/1"]);
        streams.receive();
        press("playButton");
        tryVerify(() => streams.shows("blue") && streams.size() === Qt.size(640, 480), 30000);
        choose("resolutionBox", 1);
        press("setSettingsButton");
        tryVerify(() => streams.shows("blue") && streams.size() === Qt.size(320, 240), 30000);
    }

    // --- Settings ---------------------------------------------------------------------------------------------------

    function test_theFirstCameraIsShown() {
        showPage(["Red", "Blue"]);
        compare(control("cameraBox").model, ["Blue", "Red"]);
        compare(boxTexts(), ["Blue", "320x240", "15/1"]);
        compare(currentValues(), ["Blue", "320x240", "15/1"]);
    }

    function test_whatIsChosenIsNotInForceYet() {
        showPage(["Red", "Blue"]);
        choose("cameraBox", 1);
        compare(boxTexts(), ["Red", "640x480", "15/1"]);
        compare(selection(), ["Red", 640, 480, "15/1"]);
        compare(currentValues(), ["Blue", "320x240", "15/1"]);
        compare(appliedSpy.count, 0);
        press("setSettingsButton");
        compare(appliedSpy.count, 1);
        compare(currentValues(), ["Red", "640x480", "15/1"]);
        compare(cameraEmulationManager.streamRunning, false);
        compare(streams.take(), []);
    }

    function test_choices_data(): var {
        return [
            {
                tag: "the highest framerate",
                choices: [["framerateBox", 0]],
                texts: ["Red", "640x480", "30/1"],
                selected: ["Red", 640, 480, "30/1"]
            },
            {
                tag: "another framerate",
                choices: [["framerateBox", 1]],
                texts: ["Red", "640x480", "15/1"],
                selected: ["Red", 640, 480, "15/1"]
            },
            {
                tag: "a resolution that does not have the framerate",
                choices: [["resolutionBox", 1]],
                texts: ["Red", "320x240", "15/1"],
                selected: ["Red", 320, 240, "15/1"]
            },
            {
                tag: "a resolution that has the framerate in another place",
                choices: [["resolutionBox", 1], ["framerateBox", 0], ["resolutionBox", 0]],
                texts: ["Red", "640x480", "15/1"],
                selected: ["Red", 640, 480, "15/1"]
            },
            {
                tag: "another camera, and back",
                choices: [["resolutionBox", 1], ["framerateBox", 1], ["cameraBox", 0], ["cameraBox", 1]],
                texts: ["Red", "640x480", "30/1"],
                selected: ["Red", 640, 480, "30/1"]
            }
        ];
    }

    function test_choices(data: var) {
        showPage(["Red", "Blue"]);
        choose("cameraBox", 1);
        choose("framerateBox", 0);
        for (const [name, index] of data.choices)
            choose(name, index);
        compare(boxTexts(), data.texts);
        compare(selection(), data.selected);
        compare(currentValues(), ["Blue", "320x240", "15/1"]);
        press("setSettingsButton");
        const [name, width, height, framerate] = data.selected;
        compare(currentValues(), [name, "%1x%2".arg(width).arg(height), framerate]);
    }

    function test_theBoxesFollowTheManager() {
        showPage(["Red", "Blue"]);
        choose("cameraBox", 1);
        choose("resolutionBox", 1);
        host.setupCameraStreamPipeline(); // the view is shown again
        compare(boxTexts(), ["Blue", "320x240", "15/1"]);
        choose("cameraBox", 1);
        host.unplugCamera("Red");
        compare(boxTexts(), ["Blue", "320x240", "15/1"]);
        compare(currentValues(), ["Blue", "320x240", "15/1"]);
    }

    function test_aCameraOfUnknownSizes() {
        host.plugCamera("Any", "video/x-raw,width=[1,1920],height=[1,1080],framerate=[1/1,30/1]", "red");
        showPage([]);
        compare(boxTexts(), ["Any", "", ""]);
        compare(currentValues(), ["Any", "-1x-1", ""]);
    }

    function test_namesOfCameras_data(): var {
        return [
            {
                tag: "short",
                name: "Blue"
            },
            {
                tag: "with blanks",
                name: "Integrated Camera: Integrated C"
            },
            {
                tag: "longer than the page is wide",
                name: "A camera whose maker had very much to say about it ".repeat(4).trim()
            },
            {
                tag: "with letters of many scripts",
                name: "Веб-камера 攝影機 <b>ü</b> & %1"
            }
        ];
    }

    function test_namesOfCameras(data: var) {
        host.plugCamera("B", small, "red");
        host.plugCamera(data.name, small, "blue");
        showPage([]);
        const box = control("cameraBox");
        compare(box.implicitWidth, data.name.length * Application.font.pixelSize);
        choose("cameraBox", box.find(data.name));
        press("setSettingsButton");
        compare(control("currentCameraLabel").text, data.name);
        compare(control("currentCameraLabel").textFormat, Text.PlainText);
        compare(cameraEmulationManager.cameraName, data.name);
        // Nothing leaves its half of the row.
        waitForItemPolished(control("column"));
        for (const name of ["currentCameraLabel", "cameraBox", "resolutionBox", "framerateBox", "setSettingsButton"]) {
            const item = control(name);
            const area = item.mapToItem(control("column"), 0, 0, item.width, item.height);
            const [left, right] = name.startsWith("current") ? [15, 302] : [317, 604];
            verify(item.width > 0 && area.left >= left && area.right <= right, name + " " + area);
        }
    }

    function test_aNameThatIsCutOffIsToldWhole() {
        const name = "A camera whose maker had very much to say about it";
        plug("B");
        plug(name);
        showPage([]);
        const box = control("cameraBox");
        choose("cameraBox", box.find(name));
        tryVerify(() => box.truncated);
        box.hoverEnabled = true; // as it is on a desktop
        box.ToolTip.delay = 0;
        let moves = 0;
        tryVerify(() => {
            mouseMove(box, box.width / 2 + ++moves % 2, box.height / 2);
            return box.ToolTip.visible;
        });
        compare(box.ToolTip.text, name);
        choose("cameraBox", box.find("B"));
        tryVerify(() => !box.truncated);
        tryVerify(() => !box.ToolTip.visible);
    }

    function test_namesAreShownAsTheyAreWritten() {
        const name = "<b>A</b> & &lt;B>, whose maker had very much to say about it";
        plug(name);
        showPage([]);
        const box = control("cameraBox");
        compare(box.displayText, name);
        box.popup.open();
        tryCompare(box.popup, "opened", true);
        const entry = box.popup.contentItem.itemAtIndex(0);
        verifyShown(entry.contentItem.children[0], name);
        box.popup.close();
        tryCompare(box.popup, "visible", false);
        box.ToolTip.show(box.ToolTip.text);
        verifyShown(box.ToolTip.toolTip.contentItem, name);
        box.ToolTip.hide();
    }

    // --- Streams ----------------------------------------------------------------------------------------------------

    function test_theCameraIsStartedAndStopped() {
        showPage(["Blue"]);
        streams.receive();
        press("playButton");
        compare(streams.take(), ["play camera"]);
        compare(state(), "camera | camera stop | camera");
        tryVerify(() => streams.shows("blue"), 30000);
        press("stopButton");
        compare(streams.take(), ["stop camera"]);
        compare(state(), "camera | camera play | camera");
    }

    function test_settingsOfARunningStream() {
        showPage(["Red", "Blue"]);
        streams.receive();
        press("playButton");
        tryVerify(() => streams.shows("blue"), 30000);
        streams.take();
        choose("cameraBox", 1);
        compare(streams.take(), []);
        press("setSettingsButton");
        compare(streams.take(), ["stop camera", "play camera"]);
        compare(state(), "camera | camera stop | camera");
        tryVerify(() => streams.shows("red") && streams.size() === Qt.size(640, 480), 30000);
    }

    function test_sourcesReplaceEachOther() {
        showPage(["Blue"]);
        press("videoFileSourceRadioButton");
        compare(state(), "videoFile | camera | videoFile");
        streams.receive();
        openFile(files.writeVideo("green.webm", "lime"));
        compare(state(), "videoFile | camera stop | videoFile");
        compare(streams.take(), ["play video"]);
        tryVerify(() => streams.shows("lime"), 30000);

        press("cameraRadioButton");
        compare(state(), "camera | camera stop | camera");
        compare(streams.take().slice(-2), ["stop video", "play camera"]);
        tryVerify(() => streams.shows("blue"), 30000);

        press("videoFileSourceRadioButton");
        compare(state(), "videoFile | camera stop | videoFile");
        compare(streams.take(), ["stop camera", "play video"]);
        tryVerify(() => streams.shows("lime"), 30000);

        press("stopButton");
        compare(streams.take().slice(-1), ["stop video"]);
        compare(state(), "videoFile | camera play | videoFile");
        press("playButton");
        compare(streams.take(), ["play video"]);
        press("stopButton");
        press("cameraRadioButton");
        press("videoFileSourceRadioButton");
        compare(streams.take(), ["stop video"]);
        compare(state(), "videoFile | camera play | videoFile");
    }

    function test_aVideoThatIsNotChosenYetEndsTheStream() {
        showPage(["Blue"]);
        press("playButton");
        streams.take();
        press("videoFileSourceRadioButton");
        compare(streams.take(), ["stop camera"]);
        compare(state(), "videoFile | camera | videoFile");
    }

    function test_theSelectedCameraIsUnpluggedWhileItStreams() {
        showPage(["Red", "Blue"]);
        press("playButton");
        host.unplugCamera("Blue");
        compare(state(), "camera | camera play | camera");
        compare(currentValues(), ["Red", "640x480", "15/1"]);
    }

    // --- Video files ------------------------------------------------------------------------------------------------

    function test_theFileDialog() {
        showPage([]);
        const dialog = control("fileDialog");
        compare(dialog.title, "Open Video File");
        compare(dialog.nameFilters, ["Video files (*.webm *.mkv)"]);
        compare(dialog.fileMode, FileDialog.OpenFile);
        press("openFileButton");
        tryCompare(dialog, "visible", true);
        dialog.reject();
        tryCompare(dialog, "visible", false);
        compare(streams.take(), []);
        compare(cameraEmulationManager.streamRunning, false);
    }

    // The field shows what the dialog has; what is played is that, too, until a file has once been accepted.
    function test_aFileThatIsCancelled() {
        showPage([]);
        const preselected = files.writeVideo("green.webm", "lime");
        selectAndCancel(preselected);
        compare(streams.take(), []);
        compare(cameraEmulationManager.streamRunning, false);
        compare(page.videoFileUrl, preselected);
        compare(control("videoFileField").text, preselected.toString());
        compare(page.videoFilePath, files.path("green.webm"));
        compare(state(), "videoFile | play | videoFile");
        streams.receive();
        press("playButton");
        compare(streams.take(), ["play video"]);
        tryVerify(() => streams.shows("lime"), 30000);
    }

    function test_aFileThatIsCancelledAfterAnother() {
        showPage([]);
        openFile(files.writeVideo("green.webm", "lime"));
        streams.take();
        const preselected = files.writeVideo("blue.webm", "blue");
        selectAndCancel(preselected);
        compare(streams.take().filter(entry => entry !== "stop video" && entry !== "play video"), []); // it may begin again
        compare(state(), "videoFile | stop | videoFile");
        compare(control("videoFileField").text, preselected.toString());
        compare(page.videoFilePath, files.path("green.webm"));
        press("stopButton");
        streams.receive();
        press("playButton");
        tryVerify(() => streams.shows("lime"), 30000);
    }

    function test_chosenFiles_data(): var {
        return [
            {
                tag: "VP8",
                name: "clip.webm"
            },
            {
                tag: "VP9",
                name: "clip9.webm",
                encoder: "vp9enc"
            },
            {
                tag: "a name with blanks",
                name: "my clip .webm"
            },
            {
                tag: "a name with signs of URLs",
                name: "100% #1 ?a=b&c %41.webm"
            },
            {
                tag: "a name in another script",
                name: "Видео 影片 ü.mkv"
            }
        ];
    }

    function test_chosenFiles(data: var) {
        showPage([]);
        const url = files.writeVideo(data.name, "lime", data.encoder ?? "vp8enc");
        streams.receive();
        openFile(url);
        compare(streams.take(), ["play video"]);
        compare(state(), "videoFile | stop | videoFile");
        compare(page.videoFileUrl, url);
        compare(control("videoFileField").text, url.toString());
        compare(page.videoFilePath, files.path(data.name));
        tryVerify(() => streams.shows("lime"), 30000);
        compare(object("errorDialog").visible, false);
    }

    function test_refusedFiles_data(): var {
        return [
            {
                tag: "H.264",
                url: () => files.writeH264("clip.mkv"),
                text: /^Camera emulation does not support H\.?264.*\. Supported codecs: VP8 and VP9\.$/
            },
            {
                tag: "MJPEG",
                url: () => files.writeVideo("jpeg.mkv", "lime", "jpegenc"),
                text: /^Camera emulation does not support .*JPEG.*\. Supported codecs: VP8 and VP9\.$/
            },
            {
                tag: "empty",
                url: () => files.write("empty.webm", "")
            },
            {
                tag: "a text",
                url: () => files.write("text.webm", "WEBM ", 1000)
            },
            {
                tag: "random bytes",
                url: () => files.writeBytes("bytes.webm", Array.from({
                        length: 4096
                    }, (_, i) => (i * 37 + 11) % 256))
            },
            {
                tag: "a folder",
                url: () => files.makeFolder("folder.webm")
            }
        ];
    }

    function test_refusedFiles(data: var) {
        showPage([]);
        const url = data.url();
        page.openFile(url);
        tryCompare(object("errorDialog"), "visible", true);
        const text = object("errorDialog").text;
        verify(data.text ? data.text.test(text) : text === unknownCodec, text);
        compare(object("errorDialog").title, "Error");
        closeBox("errorDialog");
        compare(streams.take(), []);
        compare(streamRunningSpy.count, 0);
        compare(state(), "videoFile | play | videoFile");
    }

    function test_aFileThatHasGone() {
        showPage([]);
        page.openFile(files.url("gone.webm"));
        compareError(unknownCodec);
        compare(state(), "videoFile | play | videoFile");
    }

    function test_aRefusedFileEndsTheStream_data(): var {
        return [
            {
                tag: "of a video",
                cameras: []
            },
            {
                tag: "of a camera",
                cameras: ["Blue"]
            }
        ];
    }

    function test_aRefusedFileEndsTheStream(data: var) {
        showPage(data.cameras);
        if (data.cameras.length > 0)
            press("playButton");
        else
            openFile(files.writeVideo("green.webm", "lime"));
        compare(cameraEmulationManager.streamRunning, true);
        streamRunningSpy.clear();
        page.openFile(files.write("text.webm", "no video"));
        compareError(unknownCodec);
        compare(cameraEmulationManager.streamRunning, false);
        compare(streamRunningSpy.count, 1);
        verify(control("playButton").enabled && !control("stopButton").enabled);
    }

    function test_aGoodFileAfterARefusedOne() {
        showPage([]);
        page.openFile(files.write("text.webm", "no video"));
        compareError(unknownCodec);
        openFile(files.writeVideo("green.webm", "lime"));
        compare(state(), "videoFile | stop | videoFile");
        compare(object("errorDialog").visible, false);
    }

    // --- The list of cameras ----------------------------------------------------------------------------------------

    function test_updatingTheList() {
        showPage(["Blue"]);
        press("playButton");
        plug("Red");
        streams.take();
        press("updateCamerasButton");
        compare(streams.take(), ["stop camera"]);
        compare(state(), "camera | camera play | camera");
        compare(control("cameraBox").model, ["Blue", "Red"]);
        compare(currentValues(), ["Blue", "320x240", "15/1"]);
        streams.receive();
        press("playButton");
        tryVerify(() => streams.shows("blue"), 30000);
    }

    // --- Leaving ----------------------------------------------------------------------------------------------------

    function test_leavingStopsTheStream_data(): var {
        return [
            {
                tag: "of a camera",
                cameras: ["Blue"],
                states: ["stop camera"]
            },
            {
                tag: "of a video",
                cameras: [],
                states: ["stop video"]
            }
        ];
    }

    function test_leavingStopsTheStream(data: var) {
        showPage(data.cameras);
        if (data.cameras.length > 0)
            press("playButton");
        else
            openFile(files.writeVideo("green.webm", "lime"));
        streams.take();
        const log = [];
        page.exitPage(() => log.push(page.visible, cameraEmulationManager.streamRunning));
        compare(log, [true, true]); // only then
        compare(cameraEmulationManager.streamRunning, false);
        compare(streams.take().slice(-1), data.states);
    }

    // The button of neither source is checked: then it is the video that is stopped.
    function test_leavingWithoutASource() {
        showPage(["Blue"]);
        host.unplugCamera("Blue");
        files.writeVideo("green.webm", "lime");
        cameraEmulationManager.startVideoStream(files.path("green.webm"));
        compare(state(), "| stop |");
        streams.take();
        streamRunningSpy.clear();
        page.exitPage(() => {});
        compare(streams.take().slice(-1), ["stop video"]);
        compare(cameraEmulationManager.streamRunning, false);
        compare(streamRunningSpy.count, 1);
    }

    function test_leavingTheCameraWithoutASource() {
        showPage(["Blue"]);
        control("cameraRadioButton").checked = false;
        streams.receive();
        press("playButton");
        tryVerify(() => streams.shows("blue"), 30000);
        compare(streams.take(), ["play camera"]);
        compare(state(), "| camera stop |");
        page.exitPage(() => {});
        compare(streams.take(), ["stop camera"]);
        compare(cameraEmulationManager.streamRunning, false);
    }

    function test_leavingEndsAVideoThatCountsAsStopped_data(): var {
        return [
            {
                tag: "as the selected camera was unplugged",
                stop: () => host.unplugCamera("Blue")
            },
            {
                tag: "as the list was renewed",
                stop: () => press("updateCamerasButton")
            }
        ];
    }

    function test_leavingEndsAVideoThatCountsAsStopped(data: var) {
        showPage(["Blue"]);
        press("videoFileSourceRadioButton");
        streams.receive();
        openFile(files.writeVideo("green.webm", "lime"));
        data.stop();
        compare(cameraEmulationManager.streamRunning, false);
        streams.clear();
        tryVerify(() => streams.shows("lime"), 30000); // and goes on
        streams.take();
        streamRunningSpy.clear();
        click("sensorsValuesButton");
        compare(page.visible, false);
        compare(streams.take().slice(-1), ["stop video"]);
        compare(streamRunningSpy.count, 0);
    }

    function test_leavingWithoutAStream() {
        showPage(["Blue"]);
        click("sensorsValuesButton");
        compare(page.visible, false);
        compare(streamRunningSpy.count, 0);
        compare(streams.take(), []);
    }

    function test_otherPagesDoNotStream() {
        showPage(["Blue"]);
        press("playButton");
        click("sensorsValuesButton");
        compare(page.visible, false);
        compare(cameraEmulationManager.streamRunning, false);
        click("cameraManagementButton");
        compare(state(), "camera | camera play | camera");
    }

    // --- Looks ------------------------------------------------------------------------------------------------------

    function labels(item: Item): var {
        const texts = [];
        for (const child of item.children) {
            if (child.visible)
                texts.push(...("horizontalAlignment" in child && !("cursorPosition" in child) ? [child.text] : labels(child)));
        }
        return texts;
    }

    function test_texts() {
        showPage(["Blue"]);
        compare(["cameraRadioButton", "videoFileSourceRadioButton", "setSettingsButton", "openFileButton", "playButton", "stopButton", "updateCamerasButton"].map(name => control(name).text), ["Host camera", "Video file", "Set settings", "…", "Start stream", "Stop", "Update cameras list"]);
        compare(labels(control("cameraRow")).filter(text => text && text !== "Blue" && text !== "320x240" && text !== "15/1" && text !== "Set settings"), ["Current values", "Camera:", "Resolution:", "Framerate:", "Settings", "Camera", "Resolution", "Framerate"]);
    }

    function test_layout() {
        showPage(["Blue"]);
        const column = control("column");
        compare([column.width, column.spacing, column.padding], [620, 15, 15]);
        compare(control("scrollView").clip, true);
        const rightEdge = item => item.mapToItem(column, item.width, 0).x;
        compare(rightEdge(control("updateCamerasButton")), 605);
        const stop = control("stopButton");
        const play = control("playButton");
        compare(stop.x - play.x - play.width, 10);
        compare(control("currentCameraLabel").wrapMode, Text.WordWrap);
        verify(stop.mapToItem(column, 0, 0).y < control("updateCamerasButton").mapToItem(column, 0, 0).y);
    }

    function test_aLowWindow_data(): var {
        const camera = ["cameraBox", "resolutionBox", "framerateBox", "setSettingsButton"];
        const video = ["videoFileField", "openFileButton"];
        return [
            {
                tag: "400 pixels high, of a camera",
                height: 400,
                source: "cameraRadioButton",
                controls: camera
            },
            {
                tag: "400 pixels high, of a video",
                height: 400,
                source: "videoFileSourceRadioButton",
                controls: video
            },
            {
                tag: "lower than the camera's rows",
                height: 150,
                source: "cameraRadioButton",
                controls: camera
            },
            {
                tag: "lower than the video's rows",
                height: 150,
                source: "videoFileSourceRadioButton",
                controls: video
            }
        ];
    }

    // The wheel brings every control into sight.
    function test_aLowWindow(data: var) {
        showPage(["Blue"]);
        press(data.source);
        view.height = data.height;
        const scrollView = control("scrollView");
        tryCompare(scrollView, "height", data.height);
        waitForItemPolished(control("column"));
        const areaOf = item => item.mapToItem(scrollView, 0, 0, item.width, item.height);
        const isInSight = ({
                left,
                top,
                right,
                bottom
            }) => left >= 0 && top >= 0 && right <= scrollView.width && bottom <= scrollView.height;
        const turnWheelTo = item => {
            const area = areaOf(item);
            if (isInSight(area))
                return true;
            mouseWheel(scrollView, 5, 5, 0, area.top < 0 ? 30 : -30);
            return false;
        };
        const fits = control("column").height <= data.height;
        compare(isInSight(areaOf(control("updateCamerasButton"))), fits);
        compare(fits, data.height === 400);
        const names = ["cameraRadioButton", "videoFileSourceRadioButton", ...data.controls, "playButton", "stopButton", "updateCamerasButton"];
        for (const name of [...names, ...names.slice().reverse()]) {
            verify(control(name).visible, name);
            tryVerify(() => turnWheelTo(control(name)), 30000, name);
        }
    }

    function test_spokenControls_data(): var {
        return [
            {
                tag: "of a camera",
                source: "cameraRadioButton",
                controls: ["ComboBox Camera", "ComboBox Resolution", "ComboBox Framerate", "Button Set settings", "Button Start stream"]
            },
            {
                tag: "of a video",
                source: "videoFileSourceRadioButton",
                controls: ["EditableText Video file", "Button Open a video file"]
            }
        ];
    }

    function test_spokenControls(data: var) {
        showPage(["Blue"]);
        press(data.source);
        const order = tabOrder().slice(5);
        compare(spoken(order), ["RadioButton Host camera", "RadioButton Video file", ...data.controls, "Button Update cameras list"]);
        compare(screenReader.describe(control(data.source)).checked, true);
    }

    function test_focusIsVisible() {
        showPage(["Blue"]);
        verifyFocusMarks(tabOrder());
    }

    function test_spokenValues() {
        showPage(["Blue"]);
        const values = ["currentCameraLabel", "currentResolutionLabel", "currentFramerateLabel"].map(name => screenReader.describe(control(name)));
        compare(values.map(value => [value.description, value.name]), [["Camera", "Blue"], ["Resolution", "320x240"], ["Framerate", "15/1"]]);
        const boxes = ["cameraBox", "resolutionBox", "framerateBox"].map(name => screenReader.describe(control(name)).description);
        compare(boxes, ["Blue", "320x240", "15/1"]);
    }
}
