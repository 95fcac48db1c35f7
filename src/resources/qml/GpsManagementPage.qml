// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import org.quova 1.0

// Sets the emulator's position, and moves it along a track. The track's clock runs here: the emulator plays the track
// too, but is told the current point all the time.
ManagementPage {
    id: root

    required property MessageDialog errorBox
    required property MessageDialog messageBox
    readonly property GPSEmulationManager manager: gpsEmulationManager // qmllint disable unqualified

    readonly property var locale: Qt.locale("en_US")
    readonly property double latitudeMinValue: -90
    readonly property double latitudeMaxValue: 90
    readonly property double longitudeMinValue: -180
    readonly property double longitudeMaxValue: 180
    readonly property double altitudeMinValue: -1000
    readonly property double altitudeMaxValue: 10000
    readonly property int altRoundingSize: 2
    readonly property int latLongRoundingSize: 7
    readonly property int defaultInterval: 2000
    readonly property var trackSpeedList: [1, 2, 3, 4, 5].map(speed => ({
                key: speed + "x",
                value: speed
            }))

    property var actualTrackPoints: []
    property bool onlyDefaultInterval: false
    property bool trackStopped: true
    property string nmeaFileUrl: ""

    // The slider was grabbed while the track played, which goes on when it is let go.
    property bool playsOnAfterSeeking: false
    // Until this turn of the event loop is over.
    property bool givesTrackUp: false

    readonly property bool playing: trackTimer.running || playsOnAfterSeeking
    readonly property bool hasTrack: trackTableModel.rowCount > 0
    readonly property int lastRow: trackTableModel.rowCount - 1

    QtObject {
        id: loading

        property var request: null

        // Ends without a word what is being read or parsed.
        function cancel() {
            const running = request;
            request = null;
            if (running)
                running.abort();
            nmeaLogLoader.cancel();
        }
    }

    // --- A track's file ---------------------------------------------------------------------------------------------

    function openFile(url: url) {
        nmeaFileUrl = url;
        loading.cancel(); // a file that takes long must not come after the one chosen later
        const request = new XMLHttpRequest(); // qmllint disable unqualified
        loading.request = request;
        request.onreadystatechange = () => {
            if (request.readyState === request.DONE && request === loading.request) {
                loading.request = null;
                loadNmeaLog(request.responseText);
            }
        };
        request.open("GET", url);
        request.send();
    }

    // Goes on when the text is parsed, which takes a while for a long log.
    function loadNmeaLog(text: string) {
        nmeaLogLoader.load(text);
    }

    function showTrack(points: var) {
        playsOnAfterSeeking = false; // without rows, the slider lets go
        loadTableRows(points);
        loadTrackPoints(points);
        // Asked of the table's rows, which have the columns' titles for fields and no "time" among them: so the answer
        // is no for every track, and two rows are enough to tell.
        if (NmeaParsing.trackHasPointsWithoutDateTime(trackTableModel.firstRows(2))) {
            onlyDefaultInterval = true;
            manager.setTrackIntervalMode(true);
        }
        manager.currentPositionIndex = 0;
        selectRow(0);
        setCurrentTrackPointAsCurrentCoordinate();
        if (hasTrack) {
            stopTrack();
            manager.loadTrack(actualTrackPoints);
        }
    }

    function showError(message: string, line: int) {
        if (playing)
            stopTrack();
        clearTrack();
        errorBox.text = line > 0 ? qsTr("%1, line: %2").arg(message).arg(line) : message;
        errorBox.open();
    }

    function loadTableRows(points: var) {
        if (hasTrack)
            trackTableModel.clear();
        trackTableModel.appendPoints(points);
    }

    function loadTrackPoints(points: var) {
        actualTrackPoints = trackTableModel.playerTrackPoints(points);
    }

    function clearTrack() {
        stopTrackTimer();
        playsOnAfterSeeking = false;
        trackTableModel.clear();
    }

    // --- Playback ---------------------------------------------------------------------------------------------------

    // Starts the wait for the next point.
    function runTrackTimer() {
        const index = manager.currentPositionIndex;
        if (index < lastRow) {
            const interval = manager.useDefaultInterval ? defaultInterval : trackTableModel.playerTrackPoint(index + 1).interval;
            startTrackTimer(interval / manager.trackSpeed);
        } else if (manager.trackLooped) {
            startTrackTimer(defaultInterval); // whatever the speed
        }
    }

    function startTrackTimer(wait: real) {
        const longest = 2147483647;
        trackTimer.interval = wait >= 1 ? Math.min(Math.trunc(wait), longest) : 1;
        trackTimer.restart();
        trackStopped = false; // whoever has started it: the last row may have been passed on the way
    }

    function stopTrackTimer() {
        trackTimer.stop();
    }

    function goToNextPoint() {
        const index = manager.currentPositionIndex;
        manager.currentPositionIndex = index >= lastRow ? 0 : index + 1;
        if (manager.currentPositionIndex < lastRow || manager.trackLooped)
            runTrackTimer();
        else
            synchronize(); // the timer stops before it would tell the last point
        trackTable.showCurrentRow(); // the timer stands still until here, so choosing the row has not
    }

    function synchronize() {
        manager.goToPositionOnTrack(manager.currentPositionIndex);
    }

    function startTrack() {
        if (manager.currentPositionIndex === lastRow)
            manager.stopTrack(); // back to the first point
        manager.startTrack();
        runTrackTimer();
    }

    function pauseTrack() {
        manager.pauseTrack();
        manager.goToPositionOnTrack(manager.currentPositionIndex);
        stopTrackTimer();
    }

    // The timer first: while it runs, the step back to the first row would start the track again.
    function stopTrack() {
        stopPlaying();
        manager.stopTrack();
    }

    // Here alone.
    function stopPlaying() {
        stopTrackTimer();
        playsOnAfterSeeking = false;
        trackStopped = true;
    }

    // --- The current point ------------------------------------------------------------------------------------------

    function selectRow(row: int) {
        trackTable.currentRow = row;
        if (trackTimer.running)
            trackTable.showCurrentRow();
    }

    // Here and in the settings: the emulator knows it from the track.
    function setCurrentTrackPointAsCurrentCoordinate() {
        if (!hasTrack)
            return;
        const point = trackTableModel.playerTrackPoint(manager.currentPositionIndex);
        manager.setLocalPosition(Number(point.latitude), Number(point.longitude), Number(point.altitude));
    }

    function handleIndexChanged() {
        if (hasTrack) {
            selectRow(manager.currentPositionIndex);
            setCurrentTrackPointAsCurrentCoordinate();
        }
        // A track whose loop was switched off on its last row still goes back to the first.
        if (manager.currentPositionIndex >= lastRow && !manager.trackLooped && !trackTimer.running)
            trackStopped = true;
    }

    function handleRowChanged() {
        if (!hasTrack || trackTable.currentRow < 0)
            return;
        if (!manager.trackLoaded) // the emulator was connected anew
            manager.loadTrack(actualTrackPoints);
        manager.goToPositionOnTrack(trackTable.currentRow);
        if (trackTimer.running) {
            stopTrackTimer();
            startTrack();
        }
    }

    // Whatever call it answers. Each reply is heard as often as the manager is bound, and each hearing stops the track.
    // Later replies find nothing to give up: the stop that a broken service refuses must not lead to the next one.
    function handleReply(reply: string) {
        if (reply === "OK" || !(hasTrack || nmeaFileUrl !== "" || givesTrackUp))
            return;
        givesTrackUp = true;
        Qt.callLater(endGivingTrackUp);
        loading.cancel();
        stopTrack();
        nmeaFileUrl = "";
        clearTrack();
    }

    function endGivingTrackUp() {
        givesTrackUp = false;
    }

    // --- Numbers ----------------------------------------------------------------------------------------------------

    function degreesText(degrees: double): string {
        return degrees.toLocaleString(locale, "f", latLongRoundingSize);
    }

    function metresText(metres: double): string {
        return metres.toLocaleString(locale, "f", altRoundingSize);
    }

    Accessible.name: qsTr("GPS Management")
    onOnlyDefaultIntervalChanged: {
        if (onlyDefaultInterval) {
            messageBox.text = qsTr("The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.");
            messageBox.open();
        }
    }

    Connections {
        target: root.manager

        function onCurrentPositionIndexChanged() {
            root.handleIndexChanged();
        }

        // The manager, which hears of it after all handlers in QML, stops the emulator's player.
        function onEmulatorConnected() {
            root.stopPlaying();
        }

        function onReplyFromEmulatorReceived(reply: string) {
            root.handleReply(reply);
        }
    }

    NmeaLogLoader {
        id: nmeaLogLoader

        objectName: "nmeaLogLoader"
        onLoaded: points => root.showTrack(points)
        onFailed: (message, incorrectLine) => root.showError(message, incorrectLine)
    }

    TrackTableModel {
        id: trackTableModel

        objectName: "trackTableModel"
    }

    Timer {
        id: trackTimer

        objectName: "trackTimer"
        onTriggered: root.goToNextPoint()
    }

    // Keeps its rhythm from row to row: while the timer of the track fires, nobody has been told yet that it has ended,
    // and then it runs again.
    Timer {
        id: syncTimer

        objectName: "syncTimer"
        interval: 100
        repeat: true
        running: trackTimer.running
        onTriggered: root.synchronize()
    }

    FileDialog {
        id: fileDialog

        objectName: "fileDialog"
        title: qsTr("Open NMEA File")
        nameFilters: [qsTr("NMEA files (*.nmea)")]
        fileMode: FileDialog.OpenFile
        onAccepted: root.openFile(selectedFile)
    }

    PageScrollView {
        id: scrollView

        objectName: "scrollView"
        contentWidth: 620
        contentHeight: column.implicitHeight

        Column {
            id: column

            width: 620
            padding: 15
            spacing: 15

            LazyLoader {
                sourceComponent: Column {
                    spacing: column.spacing

                    PageTitle {
                        text: qsTr("Current Position")
                    }

                    CurrentPosition {
                        latitude: root.degreesText(root.manager.currentPosition.latitude)
                        longitude: root.degreesText(root.manager.currentPosition.longitude)
                        altitude: root.metresText(root.manager.currentPosition.altitude)
                    }

                    PageTitle {
                        text: qsTr("Coordinate")
                    }

                    Row {
                        spacing: 10

                        CoordinateField {
                            id: latitudeField

                            fieldName: "latitudeField"
                            label: qsTr("Latitude")
                            locale: root.locale
                            minValue: root.latitudeMinValue
                            maxValue: root.latitudeMaxValue
                            decimals: root.latLongRoundingSize
                            onSubmitted: value => root.manager.setLatitude(value)
                        }

                        CoordinateField {
                            id: longitudeField

                            fieldName: "longitudeField"
                            label: qsTr("Longitude")
                            locale: root.locale
                            minValue: root.longitudeMinValue
                            maxValue: root.longitudeMaxValue
                            decimals: root.latLongRoundingSize
                            onSubmitted: value => root.manager.setLongitude(value)
                        }

                        CoordinateField {
                            id: altitudeField

                            fieldName: "altitudeField"
                            label: qsTr("Altitude")
                            locale: root.locale
                            minValue: root.altitudeMinValue
                            maxValue: root.altitudeMaxValue
                            decimals: root.altRoundingSize
                            onSubmitted: value => root.manager.setAltitude(value)
                        }

                        Button {
                            id: setPositionButton

                            objectName: "setPositionButton"
                            horizontalPadding: 15
                            text: qsTr("Set")
                            Accessible.name: qsTr("Set the position")
                            onClicked: {
                                if (trackTimer.running)
                                    root.pauseTrack();
                                root.manager.setPosition(latitudeField.value, longitudeField.value, altitudeField.value);
                            }
                        }
                    }

                    PageTitle {
                        text: qsTr("Track")
                    }

                    Column {
                        width: 450
                        spacing: 5

                        TrackFileRow {
                            width: parent.width
                            url: root.nmeaFileUrl
                            loading: nmeaLogLoader.busy
                            onOpenRequested: fileDialog.open()
                        }

                        TrackProgressRow {
                            width: parent.width
                            enabled: root.hasTrack
                            locale: root.locale
                            lastRow: root.lastRow
                            row: root.manager.currentPositionIndex
                            onMoved: row => {
                                // Choosing the row tells the emulator, too.
                                root.selectRow(row);
                                root.manager.goToPositionOnTrack(row);
                            }
                            onGrabbed: {
                                root.playsOnAfterSeeking = trackTimer.running;
                                root.stopTrackTimer();
                            }
                            onReleased: {
                                if (root.playsOnAfterSeeking) {
                                    root.playsOnAfterSeeking = false;
                                    root.startTrack();
                                }
                            }
                        }

                        TrackPlayerRow {
                            enabled: root.hasTrack
                            manager: root.manager
                            speeds: root.trackSpeedList
                            playing: trackTimer.running
                            stopped: root.trackStopped
                            onlyDefaultInterval: root.onlyDefaultInterval
                            onPlayRequested: {
                                root.trackStopped = false;
                                root.startTrack();
                            }
                            onPauseRequested: root.pauseTrack()
                            onStopRequested: root.stopTrack()
                        }
                    }
                }
            }

            TrackTable {
                id: trackTable

                objectName: "trackTable"
                width: 590
                height: Math.max(100, root.height - y - 15)
                model: trackTableModel
                onCurrentRowChanged: root.handleRowChanged()
            }
        }
    }
}
