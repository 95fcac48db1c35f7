// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0
import "../js/sensor-controls-view-logic.js" as Logic

// Sets the values that the emulated sensors report.
ManagementPage {
    id: root

    readonly property SensorsEmulationManager manager: sensorsEmulationManager // qmllint disable unqualified
    // A value that the phone model computes was changed since the page was shown or the values were restored.
    property bool modelSensorChanged: false
    property string lastChangedSensorName
    property bool lastChangedSensorEnabled
    readonly property list<SensorControls> sensorsControlsIds: [accelerometerControls, compassControls, orientationControls, magneticFieldControls, magnetometerControls, gyroscopeControls, lightSensorControls, proximityControls, tapControls]

    Accessible.name: qsTr("Sensors Values")
    onActiveChanged: {
        if (active)
            modelSensorChanged = false;
    }
    Component.onCompleted: {
        Logic.updateSensorsControlsEnabledState();
        Logic.updateSensorsControlsVisibility();
    }

    component ModelSensorConnections: Connections {
        function onXChanged() {
            root.modelSensorChanged = true;
        }

        function onYChanged() {
            root.modelSensorChanged = true;
        }

        function onZChanged() {
            root.modelSensorChanged = true;
        }
    }

    ModelSensorConnections {
        target: root.manager.accelerometer
    }

    ModelSensorConnections {
        target: root.manager.magnetometer
    }

    ModelSensorConnections {
        target: root.manager.magneticField
    }

    ModelSensorConnections {
        target: root.manager.gyroscope
    }

    Connections {
        target: root.manager

        function onSensorsEnabledStatesChanged() {
            Logic.updateSensorsControlsEnabledState();
        }

        function onSensorsAvailabilityChanged() {
            Logic.updateSensorsControlsVisibility();
        }

        function onSensorsInitialized() {
            root.modelSensorChanged = false;
        }
    }

    PageScrollView {
        id: scrollView

        objectName: "scrollView"
        contentWidth: grid.width + 45
        contentHeight: content.height

        Column {
            id: content

            x: 15
            topPadding: 15
            bottomPadding: 15
            spacing: 15

            Grid {
                id: grid

                objectName: "grid"
                // Half of it for each of two cells; the margins and the spacing between the cells come on top.
                width: Math.max(root.width - 45, 390)
                columns: 2
                spacing: 15

                AccelerometerControls {
                    id: accelerometerControls

                    objectName: "accelerometerControls"
                }

                MagnetometerControls {
                    id: magnetometerControls

                    objectName: "magnetometerControls"
                }

                CompassControls {
                    id: compassControls

                    objectName: "compassControls"
                }

                MagneticFieldControls {
                    id: magneticFieldControls

                    objectName: "magneticFieldControls"
                }

                OrientationSensorControls {
                    id: orientationControls

                    objectName: "orientationControls"
                }

                GyroscopeControls {
                    id: gyroscopeControls

                    objectName: "gyroscopeControls"
                }

                LightSensorControls {
                    id: lightSensorControls

                    objectName: "lightSensorControls"
                }

                ProximitySensorControls {
                    id: proximityControls

                    objectName: "proximityControls"
                }

                Item {
                    width: parent.width / 2
                    height: 1
                }

                TapSensorControls {
                    id: tapControls

                    objectName: "tapControls"
                }
            }

            Button {
                id: resetValuesButton

                objectName: "resetValuesButton"
                horizontalPadding: 15
                text: qsTr("Reset values")
                onClicked: {
                    root.sensorsControlsIds.forEach(controls => controls.clearFocus());
                    root.manager.setDefaultValues();
                }
            }
        }
    }
}
