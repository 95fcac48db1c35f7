// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// Where in the track the current point lies, and the way to another one.
RowLayout {
    id: root

    required property var locale
    // -1 without a track.
    required property int lastRow
    required property int row

    signal moved(row: int)
    // The mouse holds the handle between these.
    signal grabbed
    signal released

    spacing: 5

    Label {
        text: qsTr("Track progress")
    }

    Slider {
        id: progressSlider

        objectName: "progressSlider"
        enabled: root.lastRow > 0
        from: 0
        to: root.lastRow > 0 ? root.lastRow : 1
        stepSize: 1
        snapMode: Slider.SnapAlways
        value: root.lastRow === 0 ? 1 : root.row
        Layout.fillWidth: true
        Accessible.name: qsTr("Track progress")
        Accessible.description: progressLabel.text
        onMoved: root.moved(value)
        onPressedChanged: {
            if (pressed)
                root.grabbed();
            else
                root.released();
        }
    }

    Label {
        id: progressLabel

        objectName: "progressLabel"
        horizontalAlignment: Text.AlignRight
        text: qsTr("%1%").arg((progressSlider.value / progressSlider.to * 100).toLocaleString(root.locale, "f", 2))
        Layout.preferredWidth: 5 * fontMetrics.height

        FontMetrics {
            id: fontMetrics

            font: progressLabel.font
        }
    }
}
