// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

SliderWithTextField {
    id: root

    objectName: "calibrationLevelSlider"
    label: qsTr("Calib. level")
    integer: true
    minValue: 0
    maxValue: 3
    stepSize: 1
}
