// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import org.quova 1.0

// Chooses what the emulator's camera sees, a camera of the host or a video file, and starts and stops its stream.
ManagementPage {
    id: root

    required property MessageDialog errorBox
    readonly property CameraEmulationManager manager: cameraEmulationManager // qmllint disable unqualified

    property alias videoFileUrl: fileDialog.currentFile
    property string videoFilePath: localPath(videoFileUrl)
    // As last applied, whatever the boxes show.
    property string currentCameraName
    property string currentResolution
    property string currentFramerate

    function setupCurrentCameraStreamValues() {
        currentCameraName = manager.cameraName;
        currentResolution = qsTr("%1x%2").arg(manager.width).arg(manager.height);
        currentFramerate = manager.framerate;
    }

    function exitPage(callback: var) {
        callback();
        if (manager.streamRunning) {
            if (cameraRadioButton.checked)
                manager.stopCameraStream();
            else
                manager.stopVideoStream();
        }
        // No file ends what runs all the same: the other source's stream, or one that no longer counts as running.
        manager.startVideoStream("");
    }

    function localPath(url: url): string {
        const path = url.toString().replace(/^(file:\/{2})/, "");
        try {
            return decodeURIComponent(path); // of a URL's text, "%" and "#" are still encoded
        } catch (error) {
            return path;
        }
    }

    function startStream() {
        if (videoFileSourceRadioButton.checked)
            manager.startVideoStream(videoFilePath);
        else
            manager.startCameraStream();
    }

    function stopStream() {
        if (videoFileSourceRadioButton.checked)
            manager.stopVideoStream();
        else
            manager.stopCameraStream();
    }

    function openFile(url: url) {
        videoFilePath = localPath(url);
        manager.startVideoStream(videoFilePath);
    }

    function handleCodec(success: bool, codecName: string) {
        if (success)
            return;
        if (manager.streamRunning)
            manager.stopVideoStream();
        errorBox.text = codecName === "" ? qsTr("Could not determine the video codec of the video file. Supported codecs: VP8 and VP9.") : qsTr("Camera emulation does not support %1. Supported codecs: VP8 and VP9.").arg(codecName);
        errorBox.open();
    }

    Accessible.name: qsTr("Camera Management")
    Component.onCompleted: {
        if (!cameraRadioButton.enabled)
            videoFileSourceRadioButton.checked = true;
    }

    Connections {
        target: root.manager

        function onCameraStreamSettingsApplied() {
            root.setupCurrentCameraStreamValues();
        }

        function onVideoFileCodecChecked(success: bool, codecName: string) {
            root.handleCodec(success, codecName);
        }
    }

    ButtonGroup {
        id: sourceGroup
    }

    FileDialog {
        id: fileDialog

        objectName: "fileDialog"
        title: qsTr("Open Video File")
        nameFilters: [qsTr("Video files (*.webm *.mkv)")]
        fileMode: FileDialog.OpenFile
        onAccepted: root.openFile(currentFile)
    }

    component CurrentValue: Label {
        required property string name

        textFormat: Text.PlainText // cameras name themselves
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
        Accessible.description: name
    }

    PageScrollView {
        id: scrollView

        objectName: "scrollView"
        clip: true
        contentWidth: 620
        contentHeight: column.implicitHeight

        Column {
            id: column

            objectName: "column"
            width: 620
            padding: 15
            spacing: 15

            PageTitle {
                text: qsTr("Source")
            }

            Column {
                RadioButton {
                    id: cameraRadioButton

                    objectName: "cameraRadioButton"
                    enabled: root.manager.cameras.length > 0
                    checked: enabled // again, too, when a camera is plugged into a host without one
                    text: qsTr("Host camera")
                    ButtonGroup.group: sourceGroup
                    onCheckedChanged: {
                        if (checked && root.manager.streamRunning)
                            root.manager.startCameraStream();
                    }
                }

                RadioButton {
                    id: videoFileSourceRadioButton

                    objectName: "videoFileSourceRadioButton"
                    text: qsTr("Video file")
                    ButtonGroup.group: sourceGroup
                    onCheckedChanged: {
                        if (!checked)
                            return;
                        if (root.videoFilePath === "")
                            root.manager.stopCameraStream();
                        else if (root.manager.streamRunning)
                            root.manager.startVideoStream(root.videoFilePath);
                    }
                }
            }

            LazyLoader {
                sourceComponent: Column {
                    spacing: column.spacing

                    Row {
                        id: cameraRow

                        readonly property int half: (590 - spacing) / 2

                        objectName: "cameraRow"
                        visible: cameraRadioButton.checked
                        spacing: 15

                        Column {
                            width: cameraRow.half
                            spacing: 15

                            PageTitle {
                                text: qsTr("Current values")
                            }

                            GridLayout {
                                width: parent.width
                                columns: 2
                                columnSpacing: 10
                                rowSpacing: 5

                                Label {
                                    text: qsTr("Camera") + ":"
                                    Layout.alignment: Qt.AlignTop
                                }

                                CurrentValue {
                                    id: currentCameraLabel

                                    objectName: "currentCameraLabel"
                                    name: qsTr("Camera")
                                    text: root.currentCameraName
                                }

                                Label {
                                    text: qsTr("Resolution") + ":"
                                }

                                CurrentValue {
                                    id: currentResolutionLabel

                                    objectName: "currentResolutionLabel"
                                    name: qsTr("Resolution")
                                    text: root.currentResolution
                                }

                                Label {
                                    text: qsTr("Framerate") + ":"
                                }

                                CurrentValue {
                                    id: currentFramerateLabel

                                    objectName: "currentFramerateLabel"
                                    name: qsTr("Framerate")
                                    text: root.currentFramerate
                                }
                            }
                        }

                        Column {
                            width: cameraRow.half
                            spacing: 15

                            PageTitle {
                                text: qsTr("Settings")
                            }

                            GridLayout {
                                width: parent.width
                                columns: 2
                                columnSpacing: 10
                                rowSpacing: 5

                                Label {
                                    text: qsTr("Camera")
                                }

                                CameraSettingBox {
                                    id: cameraBox

                                    objectName: "cameraBox"
                                    implicitWidth: Math.max(0, ...root.manager.cameras.map(name => name.length)) * Application.font.pixelSize
                                    model: root.manager.cameras
                                    selectedIndex: root.manager.cameras.indexOf(root.manager.cameraName)
                                    Accessible.name: qsTr("Camera")
                                    onActivated: root.manager.cameraName = root.manager.cameras[currentIndex]
                                }

                                Label {
                                    text: qsTr("Resolution")
                                }

                                CameraSettingBox {
                                    id: resolutionBox

                                    objectName: "resolutionBox"
                                    model: root.manager.resolutions
                                    textRole: "string"
                                    selectedIndex: root.manager.resolutionIndex
                                    Accessible.name: qsTr("Resolution")
                                    onActivated: root.manager.resolutionIndex = currentIndex
                                }

                                Label {
                                    text: qsTr("Framerate")
                                }

                                CameraSettingBox {
                                    id: framerateBox

                                    objectName: "framerateBox"
                                    model: root.manager.framerates
                                    selectedIndex: root.manager.framerates.indexOf(root.manager.framerate)
                                    Accessible.name: qsTr("Framerate")
                                    onActivated: root.manager.framerate = root.manager.framerates[currentIndex]
                                }
                            }

                            Button {
                                id: setSettingsButton

                                objectName: "setSettingsButton"
                                horizontalPadding: 15
                                text: qsTr("Set settings")
                                onClicked: root.manager.setCameraStreamSettings()
                            }
                        }
                    }

                    Row {
                        id: videoFileRow

                        objectName: "videoFileRow"
                        visible: videoFileSourceRadioButton.checked
                        spacing: 5

                        Label {
                            anchors.verticalCenter: parent.verticalCenter
                            text: qsTr("Video file")
                        }

                        TextField {
                            id: videoFileField

                            objectName: "videoFileField"
                            width: 200
                            readOnly: true
                            selectByMouse: true
                            text: root.videoFileUrl
                            Accessible.name: qsTr("Video file")
                        }

                        Button {
                            id: openFileButton

                            objectName: "openFileButton"
                            width: 40
                            text: qsTr("…")
                            Accessible.name: qsTr("Open a video file")
                            onClicked: fileDialog.open()
                        }
                    }

                    Row {
                        spacing: 10

                        Button {
                            id: playButton

                            objectName: "playButton"
                            enabled: !root.manager.streamRunning && (!videoFileSourceRadioButton.checked || root.videoFilePath !== "")
                            horizontalPadding: 15
                            text: qsTr("Start stream")
                            onClicked: root.startStream()
                        }

                        Button {
                            id: stopButton

                            objectName: "stopButton"
                            enabled: root.manager.streamRunning
                            horizontalPadding: 15
                            text: qsTr("Stop")
                            onClicked: root.stopStream()
                        }
                    }

                    Item {
                        width: 590
                        height: updateCamerasButton.height

                        Button {
                            id: updateCamerasButton

                            objectName: "updateCamerasButton"
                            anchors.right: parent.right
                            horizontalPadding: 15
                            text: qsTr("Update cameras list")
                            onClicked: root.manager.updateCamerasList()
                        }
                    }
                }
            }
        }
    }
}
