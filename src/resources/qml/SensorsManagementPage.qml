// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import org.quova 1.0
import "../js/sensor-controls-view-logic.js" as Logic

// Switches the emulated sensors on and off. Nothing is sent before the user applies the changes.
ManagementPage {
    id: root

    // The sensors that follow when one is checked or unchecked: those it is computed from, or that are computed from it.
    readonly property var sensorControlsRelations: ({
            accelerometer: {
                checked: ["accelerometer"],
                unchecked: ["accelerometer", "compass", "orientation"]
            },
            als: {
                checked: ["als"],
                unchecked: ["als"]
            },
            compass: {
                checked: ["compass", "accelerometer", "magnetometer"],
                unchecked: ["compass"]
            },
            gyroscope: {
                checked: ["gyroscope"],
                unchecked: ["gyroscope"]
            },
            magnetometer: {
                checked: ["magnetometer"],
                unchecked: ["magnetometer", "compass"]
            },
            proximity: {
                checked: ["proximity"],
                unchecked: ["proximity"]
            },
            tap: {
                checked: ["tap"],
                unchecked: ["tap"]
            },
            orientation: {
                checked: ["orientation", "accelerometer"],
                unchecked: ["orientation"]
            }
        })
    property list<SensorCheckBox> sensorsControlsIds

    function exitPage(callback: var) {
        if (Logic.sensorsStatesHasChanged()) {
            warningDialog.callback = callback;
            warningDialog.show();
        } else {
            callback();
        }
    }

    function submit() {
        for (const box of sensorsControlsIds)
            Logic.sensorEnabledCheckboxClickHandler(box.checked, box.sensorName);
        reset();
    }

    function reset() {
        Logic.updateSensorsControlsCheckedState();
    }

    Accessible.name: qsTr("Sensors Management")
    onVisibleChanged: {
        if (visible)
            reset();
    }

    WarningDialog {
        id: warningDialog

        property var callback: null

        objectName: "warningDialog"
        text: qsTr("The sensor configuration has been changed. Apply or discard changes?")
        standardButtons: MessageDialog.Discard | MessageDialog.Apply
        onAccepted: {
            root.submit();
            leave();
        }
        onRejected: {
            root.reset();
            leave();
        }

        function leave() {
            const leavePage = callback;
            callback = null;
            leavePage();
        }
    }

    Connections {
        target: sensorsEmulationManager // qmllint disable unqualified

        function onSensorsAvailabilityChanged() {
            Logic.updateSensorsControlsCheckedState();
            Logic.updateSensorsControlsVisibility();
        }
    }

    PageScrollView {
        id: scrollView

        objectName: "scrollView"
        contentWidth: availableWidth

        LazyLoader {
            x: 15
            width: scrollView.availableWidth - 30
            sourceComponent: Column {
                topPadding: 15
                bottomPadding: 15
                spacing: 5
                Component.onCompleted: {
                    root.sensorsControlsIds = [accelerometerCheckBox, compassCheckBox, orientationCheckBox, magnetometerCheckBox, gyroscopeCheckBox, alsCheckBox, proximityCheckBox, tapCheckBox];
                    root.reset();
                    Logic.updateSensorsControlsVisibility();
                }

                ButtonGroup {
                    buttons: root.sensorsControlsIds
                    exclusive: false
                    onClicked: button => {
                        const box = button as SensorCheckBox;
                        Logic.dependentSensorsEnabledHandler(box.checked, box.sensorName);
                    }
                }

                SensorCheckBox {
                    id: accelerometerCheckBox

                    objectName: "accelerometerCheckBox"
                    sensorName: "accelerometer"
                    text: qsTr("Accelerometer")
                }

                SensorCheckBox {
                    id: compassCheckBox

                    objectName: "compassCheckBox"
                    sensorName: "compass"
                    text: qsTr("Compass")
                }

                SensorCheckBox {
                    id: orientationCheckBox

                    objectName: "orientationCheckBox"
                    sensorName: "orientation"
                    text: qsTr("Orientation Sensor")
                }

                SensorCheckBox {
                    id: magnetometerCheckBox

                    objectName: "magnetometerCheckBox"
                    sensorName: "magnetometer"
                    text: qsTr("Magnetometer")
                }

                SensorCheckBox {
                    id: gyroscopeCheckBox

                    objectName: "gyroscopeCheckBox"
                    sensorName: "gyroscope"
                    text: qsTr("Gyroscope")
                }

                SensorCheckBox {
                    id: alsCheckBox

                    objectName: "alsCheckBox"
                    sensorName: "als"
                    text: qsTr("Light Sensor")
                }

                SensorCheckBox {
                    id: proximityCheckBox

                    objectName: "proximityCheckBox"
                    sensorName: "proximity"
                    text: qsTr("Proximity Sensor")
                }

                SensorCheckBox {
                    id: tapCheckBox

                    objectName: "tapCheckBox"
                    sensorName: "tap"
                    text: qsTr("Tap Sensor")
                }

                Label {
                    id: restartLabel

                    objectName: "restartLabel"
                    topPadding: 10
                    bottomPadding: 10
                    width: parent.width
                    wrapMode: Text.Wrap
                    text: qsTr("After applying changes, all applications retrieving data from sensors must be restarted.")
                }

                Row {
                    spacing: 10

                    Button {
                        id: resetButton

                        objectName: "resetButton"
                        horizontalPadding: 15
                        text: qsTr("Reset")
                        onClicked: root.reset()
                    }

                    Button {
                        id: applyButton

                        objectName: "applyButton"
                        horizontalPadding: 15
                        text: qsTr("Apply")
                        onClicked: root.submit()
                    }
                }
            }
        }
    }
}
