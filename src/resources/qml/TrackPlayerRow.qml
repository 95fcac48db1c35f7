// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0

// Plays the track, at a speed of the user's choice.
Row {
    id: root

    required property GPSEmulationManager manager
    // Objects with "key", which is shown, and "value".
    required property var speeds
    required property bool playing
    required property bool stopped
    required property bool onlyDefaultInterval

    signal playRequested
    signal pauseRequested
    signal stopRequested

    spacing: 10

    IconButton {
        id: playButton

        objectName: "playButton"
        enabled: !root.playing
        icon.source: "qrc:/emulationmanagement/play.png"
        name: qsTr("Play")
        onClicked: root.playRequested()
    }

    IconButton {
        id: pauseButton

        objectName: "pauseButton"
        enabled: root.playing
        icon.source: "qrc:/emulationmanagement/pause.png"
        name: qsTr("Pause")
        onClicked: root.pauseRequested()
    }

    IconButton {
        id: stopButton

        objectName: "stopButton"
        enabled: !root.stopped
        icon.source: "qrc:/emulationmanagement/stop.png"
        name: qsTr("Stop")
        onClicked: root.stopRequested()
    }

    ComboBox {
        id: speedBox

        objectName: "speedBox"
        width: 80
        model: root.speeds
        textRole: "key"
        valueRole: "value"
        currentIndex: root.manager.trackSpeed - 1
        Accessible.name: qsTr("Track speed")
        Accessible.description: displayText
        onActivated: root.manager.setTrackSpeed(currentValue)
    }

    CheckBox {
        id: ownSpeedCheckBox

        objectName: "ownSpeedCheckBox"
        enabled: !root.onlyDefaultInterval
        checked: !root.manager.useDefaultInterval
        text: qsTr("Use own track speed")
        Accessible.name: text
        onClicked: root.manager.setTrackIntervalMode(!checked)
    }

    CheckBox {
        id: loopCheckBox

        objectName: "loopCheckBox"
        checked: root.manager.trackLooped
        text: qsTr("Loop track")
        Accessible.name: text
        onClicked: root.manager.setTrackLooped(checked)
    }
}
