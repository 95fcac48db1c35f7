// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0
import "../js/smartphone-model-page-logic.js" as Logic

// Turns and moves a virtual phone. What its accelerometer, gyroscope and magnetometer read goes to the emulator.
ManagementPage {
    id: root

    readonly property SensorsEmulationManager manager: sensorsEmulationManager // qmllint disable unqualified
    readonly property bool rotationMode: rotationRadioButton.checked
    readonly property bool textEdited: scrollView.focusItem instanceof TextInput

    property var locale: Qt.locale("en_US")
    property double stepSize: 0.01
    property int numberRoundingSize: 3
    property bool integer: false
    // Degrees.
    property double rotMinValue: -180
    property double rotMaxValue: 180
    // Positions, in units of phoneSizeCoefficient metres.
    property double moveMinValue: -2
    property double moveMaxValue: 2
    property double moveBaseValue: 0
    property double phoneSizeCoefficient: 0.06

    // The pointer's last position in a drag, and where the phone's centre is: a phone farther away moves less.
    property double xBaseCoordinate
    property double yBaseCoordinate
    property double xOriginCoordinate: mouseArea.width / 2 + moveSliders.x.value * mouseArea.width / (8 * (1 + Math.abs(moveSliders.z.value)))
    property double yOriginCoordinate: mouseArea.height / 2 - moveSliders.y.value * mouseArea.height / (4 * (1 + Math.abs(moveSliders.z.value)))

    property bool controlModifierPressed: false
    // Seconds between two readings.
    property double timerInterval: 0.1
    // Whether the last readings were those of a phone that does not move.
    property bool atRest: false

    // The last two positions in metres, and the speed between them.
    property double xMovePrevPrevValue: 0
    property double yMovePrevPrevValue: 0
    property double zMovePrevPrevValue: 0
    property double xMovePrevValue: 0
    property double yMovePrevValue: 0
    property double zMovePrevValue: 0
    property double xMoveInitSpeed: 0
    property double yMoveInitSpeed: 0
    property double zMoveInitSpeed: 0

    // m/s²
    property double gravityAccelEarth: 9.80665
    property double accXValue
    property double accYValue
    property double accZValue
    // From m/s² to thousandths of g.
    property double accGravityCoef: 1000 / gravityAccelEarth

    // Whether the slider has gone past an end of its range since the gyroscope's last step.
    property bool xRotSliderReset: false
    property bool yRotSliderReset: false
    property bool zRotSliderReset: false
    // Degrees at that step, and turns per second in it.
    property double xGyroPrevValue: 0
    property double yGyroPrevValue: 0
    property double zGyroPrevValue: 0
    property double xGyroRotFrequency: 0
    property double yGyroRotFrequency: 0
    property double zGyroRotFrequency: 0
    // Degrees per second.
    property double gyroXValue
    property double gyroYValue
    property double gyroZValue

    // In the unit of the emulated field, and from there to the magnetometer's.
    property double magnetXValue
    property double magnetYValue
    property double magnetZValue
    property double microToWholeCoef: 0.000001

    // The presets, in the order of their buttons.
    readonly property var orientations: [
        {
            name: qsTr("Top up"),
            x: 0,
            y: 0,
            z: 0
        },
        {
            name: qsTr("Left side up"),
            x: 0,
            y: 0,
            z: -90
        },
        {
            name: qsTr("Top down"),
            x: 0,
            y: 0,
            z: 180
        },
        {
            name: qsTr("Right side up"),
            x: 0,
            y: 0,
            z: 90
        },
        {
            name: qsTr("Face up"),
            x: -90,
            y: 0,
            z: 0
        },
        {
            name: qsTr("Face down"),
            x: 90,
            y: 0,
            z: 0
        }
    ]
    readonly property string iconSuffix: darkUserInterface ? "_light" : "" // qmllint disable unqualified
    readonly property var iconsModel: orientations.map((_, i) => "qrc:/emulationmanagement/icons/phone_%1%2.png".arg(i + 1).arg(iconSuffix))
    // The sliders of the axes. Before there are any, the phone is where they begin.
    property var rotSliders: restingSliders
    property var moveSliders: restingSliders
    readonly property var restingSliders: ({
            x: {
                value: 0
            },
            y: {
                value: 0
            },
            z: {
                value: 0
            }
        })
    readonly property list<SensorResultLabel> sensorLabels: [accelerometerLabel, gyroscopeLabel, magnetometerLabel]

    Accessible.name: qsTr("Orientation Management")
    onActiveChanged: {
        if (active)
            Logic.handleActivation();
        else
            controlModifierPressed = false;
    }
    Window.onActiveChanged: controlModifierPressed = false // whose release another window hears
    Window.onVisibilityChanged: atRest = false // what has moved since then counts, too
    onControlModifierPressedChanged: Logic.switchMode()
    Component.onCompleted: Logic.updatePoseValues()

    Timer {
        id: timer

        objectName: "timer"
        interval: root.timerInterval * 1000
        repeat: true
        // Nobody moves the phone of a hidden window. The emulator is still told that it stands.
        running: root.active && (root.Window.visibility !== Window.Hidden || !root.atRest)
        onTriggered: Logic.handleTimer()
    }

    ButtonGroup {
        id: modeGroup
    }

    component PoseSlider: SliderWithTextField {
        locale: root.locale
        width: parent.width
        stepSize: root.stepSize
        numberRoundingSize: root.numberRoundingSize
        integer: root.integer
        additionalControlsWidth: 20
    }

    component RotationSlider: PoseSlider {
        minValue: root.rotMinValue
        maxValue: root.rotMaxValue
        valueUnits: "°"
        onSliderSubmited: Logic.updatePoseValues()
    }

    component MoveSlider: PoseSlider {
        minValue: root.moveMinValue
        maxValue: root.moveMaxValue
    }

    component ResultLabel: SensorResultLabel {
        manager: root.manager
        locale: root.locale
        decimals: root.numberRoundingSize
    }

    PageScrollView {
        id: scrollView

        objectName: "scrollView"
        contentWidth: availableWidth
        contentHeight: column.height
        Keys.enabled: root.active
        Keys.onPressed: event => Logic.handleKeyPress(event)
        Keys.onReleased: event => Logic.handleKeyRelease(event)
        onFocusItemChanged: {
            const slider = focusItem as Slider;
            if (visible && slider && slider.focusReason === Qt.MouseFocusReason)
                Qt.callLater(Logic.takeKeys);
        }
        onVisibleChanged: {
            if (visible)
                Logic.takeKeys();
        }

        Item {
            id: content

            width: scrollView.availableWidth
            height: Math.max(column.height, scrollView.height)
            Keys.onTabPressed: Logic.handleTab(true)
            Keys.onBacktabPressed: Logic.handleTab(false)

            TapHandler {
                onTapped: Logic.takeKeys()
            }

            Column {
                id: column

                x: 15
                width: parent.width - 30
                topPadding: 15
                bottomPadding: 15
                spacing: 15

                PageTitle {
                    id: titleLabel

                    objectName: "titleLabel"
                    text: qsTr("Orientation Management")
                }

                Row {
                    spacing: 15

                    RadioButton {
                        id: rotationRadioButton

                        objectName: "rotationRadioButton"
                        text: qsTr("Rotation")
                        checked: true
                        ButtonGroup.group: modeGroup
                    }

                    RadioButton {
                        id: moveRadioButton

                        objectName: "moveRadioButton"
                        text: qsTr("Move")
                        ButtonGroup.group: modeGroup
                    }
                }

                LazyLoader {
                    width: parent.width
                    sourceComponent: Column {
                        Component.onCompleted: {
                            root.rotSliders = {
                                x: xRotSlider,
                                y: yRotSlider,
                                z: zRotSlider
                            };
                            root.moveSliders = {
                                x: xMoveSlider,
                                y: yMoveSlider,
                                z: zMoveSlider
                            };
                        }

                        Column {
                            id: rotationColumn

                            objectName: "rotationColumn"
                            visible: root.rotationMode
                            width: parent.width
                            spacing: 5

                            RotationSlider {
                                id: xRotSlider

                                objectName: "xRotSlider"
                                label: qsTr("X-Rot")
                            }

                            RotationSlider {
                                id: yRotSlider

                                objectName: "yRotSlider"
                                label: qsTr("Y-Rot")
                            }

                            RotationSlider {
                                id: zRotSlider

                                objectName: "zRotSlider"
                                label: qsTr("Z-Rot")
                            }
                        }

                        Column {
                            id: moveColumn

                            objectName: "moveColumn"
                            visible: !root.rotationMode
                            width: parent.width
                            spacing: 5

                            MoveSlider {
                                id: xMoveSlider

                                objectName: "xMoveSlider"
                                label: qsTr("X")
                            }

                            MoveSlider {
                                id: yMoveSlider

                                objectName: "yMoveSlider"
                                label: qsTr("Y")
                            }

                            MoveSlider {
                                id: zMoveSlider

                                objectName: "zMoveSlider"
                                label: qsTr("Z")
                            }
                        }
                    }
                }

                Column {
                    spacing: 5

                    PageTitle {
                        id: deviceRotationLabel

                        objectName: "deviceRotationLabel"
                        text: qsTr("Device rotation")
                    }

                    LazyLoader {
                        sourceComponent: Row {
                            spacing: 5

                            Repeater {
                                model: root.iconsModel

                                IconButton {
                                    required property int index
                                    required property string modelData

                                    objectName: "orientationButton%1".arg(index)
                                    width: 40
                                    height: 40
                                    icon.source: modelData
                                    icon.width: 32
                                    icon.height: 32
                                    icon.color: "transparent" // as it was drawn
                                    name: root.orientations[index].name
                                    onClicked: Logic.switchOrientation(index)
                                }
                            }
                        }
                    }
                }

                Column {
                    id: resultingValues

                    objectName: "resultingValues"
                    visible: root.sensorLabels.some(label => label.available)
                    spacing: 5

                    PageTitle {
                        id: resultingValuesLabel

                        objectName: "resultingValuesLabel"
                        text: qsTr("Resulting values")
                    }

                    ResultLabel {
                        id: accelerometerLabel

                        objectName: "accelerometerLabel"
                        sensorName: "accelerometer"
                        title: qsTr("Accelerometer (m/s²)")
                        values: [root.accXValue, root.accYValue, root.accZValue].map(value => Logic.convertAccValue(value, root.accGravityCoef))
                    }

                    ResultLabel {
                        id: gyroscopeLabel

                        objectName: "gyroscopeLabel"
                        sensorName: "gyroscope"
                        title: qsTr("Gyroscope (°/s)")
                        values: [root.gyroXValue, root.gyroYValue, root.gyroZValue]
                    }

                    ResultLabel {
                        id: magnetometerLabel

                        objectName: "magnetometerLabel"
                        sensorName: "magnetometer"
                        title: qsTr("Magnetometer (μT)")
                        values: [root.magnetXValue, root.magnetYValue, root.magnetZValue]
                    }
                }
            }
        }
    }

    SmartphoneModel {
        id: smartphoneModel

        objectName: "smartphoneModel"
        anchors.centerIn: parent
    }

    MouseArea {
        id: mouseArea

        objectName: "mouseArea"
        anchors.fill: smartphoneModel
        onPressed: mouse => Logic.handleMousePress(mouse)
        onPositionChanged: mouse => Logic.handleMouseMove(mouse)
        onWheel: wheel => Logic.handleWheel(wheel)
    }
}
