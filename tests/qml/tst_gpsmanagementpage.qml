// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Dialogs
import QtTest
import "qrc:/emulationmanagement/qml"

ViewTestCase {
    id: root

    readonly property GpsManagementPage page: view ? findChild(view, "gpsManagementPage") : null
    // Longer than any test, so that only next() moves on.
    readonly property int longInterval: 3600
    // The three points of threePoints().
    readonly property list<string> uploadedPoints: ["59.9386300,30.3141300,12.50,0", "59.9386400,30.3141400,0.00,3.6e+06", "-33.8688000,-151.2093000,999.99,3.6e+06"]

    function cleanupPage() {
        invoker.clearAnswers();
    }

    name: "GpsManagementPage"

    SignalSpy {
        id: repliesSpy

        target: gpsEmulationManager
        signalName: "replyFromEmulatorReceived"
    }

    FontMetrics {
        id: labelMetrics
    }

    function showPage() {
        click("gpsManagementButton");
        compare(page.visible, true);
        const sync = object("syncTimer");
        compare([sync.interval, sync.repeat, sync.running], [100, true, false]);
        // The test itself is the clock.
        object("syncTimer").interval = 2000000000;
    }

    // --- The wire ---------------------------------------------------------------------------------------------------

    function gps(call: string): string {
        const name = "ru.kelo.GeoclueEmulationManagement";
        const [method, callArguments] = call.split(" ", 1).concat(call.substring(call.indexOf(" ") + 1));
        return ["system", name, "/ru/kelo/GeoclueEmulationManagement", name, method, call.includes(" ") ? callArguments : ""].join(" ");
    }

    function compareCalls(calls: var) {
        compareFrames(calls.map(gps));
    }

    function upload(points = uploadedPoints): string {
        return "loadTrack array:array:double:" + points.join(";");
    }

    function jump(index: int): string {
        return "goToPositionOnTrack int32:" + index;
    }

    // --- Tracks -----------------------------------------------------------------------------------------------------

    function gga(hour: int, latitude: string, longitude: string, altitude: string): string {
        return `$GPGGA,${String(hour).padStart(2, "0")}0000.00,${latitude},${longitude},1,08,0.9,${altitude},M,46.9,M,,*47`;
    }

    // An hour apart.
    function threePoints(): string {
        return [gga(0, "5956.3178,N", "03018.8478,E", "12.5"), gga(1, "5956.3184,N", "03018.8484,E", "1250.0"), gga(2, "3352.128,S", "15112.558,W", "999.99")].join("\n");
    }

    function wayPoints(count: int): string {
        return Array.from({
            length: count
        }, (_, i) => `$GPWPL,48${String(i % 60).padStart(2, "0")}.000,N,01131.000,E,P*5C`).join("\n");
    }

    function load(text: string) {
        page.loadNmeaLog(text);
        tryCompare(object("nmeaLogLoader"), "busy", false, 30000);
    }

    function loadThree() {
        showPage();
        load(threePoints());
        compare(table().rowCount, 3);
        host.takeFrames();
    }

    function table(): QtObject {
        return object("trackTableModel");
    }

    function rowTexts(row: int): var {
        return [0, 1, 2, 3, 4].map(column => String(table().data(table().index(row, column))));
    }

    // --- The clock --------------------------------------------------------------------------------------------------

    function timer(): Timer {
        return object("trackTimer") as Timer;
    }

    // The wait is over.
    function next() {
        verify(timer().running);
        timer().stop();
        timer().triggered();
    }

    function play() {
        click("playButton");
        host.takeFrames();
    }

    function state(): string {
        compare(object("syncTimer").running, timer().running);
        const enabled = ["play", "pause", "stop"].filter(name => object(name + "Button").enabled);
        return [timer().running ? "running" : "waiting"].concat(enabled).join(" ");
    }

    function position(): var {
        const position = gpsEmulationManager.currentPosition;
        return [position.latitude, position.longitude, position.altitude];
    }

    // --- The position -----------------------------------------------------------------------------------------------

    function test_atFirst() {
        showPage();
        compare(state(), "waiting");
        compare(["currentLatitudeLabel", "currentLongitudeLabel", "currentAltitudeLabel"].map(name => object(name).text), ["0.0000000", "0.0000000", "0.00"]);
        compare(["latitudeField", "longitudeField", "altitudeField"].map(name => object(name).text), ["0", "0", "0"]);
        compare(object("progressLabel").text, "0.00%");
        compare(object("progressSlider").enabled, false);
        compare(object("speedBox").currentText, "1x");
        compare(object("ownSpeedCheckBox").checked, true);
        compare(object("loopCheckBox").checked, false);
        compare(object("speedBox").enabled, false);
        compare(object("trackFileField").text, "");
        compare(object("trackFileField").readOnly, true);
        compareCalls([]);
    }

    function test_fields_data(): var {
        return [
            {
                tag: "latitude",
                field: "latitude",
                text: "-33.8688",
                call: "setLatitude double:-33.8688000",
                label: "-33.8688000"
            },
            {
                tag: "longitude",
                field: "longitude",
                text: "179.9999999",
                call: "setLongitude double:179.9999999",
                label: "179.9999999"
            },
            {
                tag: "altitude",
                field: "altitude",
                text: "1250.5",
                call: "setAltitude double:1250.50",
                label: "1,250.50"
            },
            {
                tag: "altitude below the sea",
                field: "altitude",
                text: "-12.5",
                call: "setAltitude double:-12.50",
                label: "-12.50"
            }
        ];
    }

    function type(name: string, text: string) {
        const field = object(name);
        field.forceActiveFocus();
        field.selectAll();
        tryCompare(field, "activeFocus", true);
        for (const character of text)
            keyClick(character);
    }

    function test_fields(data: var) {
        showPage();
        type(data.field + "Field", data.text);
        compareCalls([]);
        keyClick(Qt.Key_Return);
        compareCalls([data.call]);
        compare(object("current%1Label".arg(data.field[0].toUpperCase() + data.field.substring(1))).text, data.label);
    }

    function test_oddNumbers_data(): var {
        return [
            {
                tag: "too far north: the last digit is refused",
                name: "latitudeField",
                text: "91",
                call: "setLatitude double:9.0000000"
            },
            {
                tag: "too far south",
                name: "latitudeField",
                text: "-90.1",
                call: "setLatitude double:-90.0000000"
            },
            {
                tag: "too far east",
                name: "longitudeField",
                text: "181",
                call: "setLongitude double:18.0000000"
            },
            {
                tag: "too high",
                name: "altitudeField",
                text: "10001",
                call: "setAltitude double:1000.00"
            },
            {
                tag: "too many decimals",
                name: "altitudeField",
                text: "1.234",
                call: "setAltitude double:1.23"
            },
            {
                tag: "no number at all, which leaves the first text",
                name: "latitudeField",
                text: "x",
                call: "setLatitude double:0.0000000"
            },
            {
                tag: "a minus alone",
                name: "latitudeField",
                text: "-",
                call: ""
            },
            {
                tag: "an exponent, whose e is refused on its own",
                name: "altitudeField",
                text: "1e2",
                call: "setAltitude double:12.00"
            },
            {
                tag: "a plus",
                name: "altitudeField",
                text: "+1",
                call: "setAltitude double:1.00"
            }
        ];
    }

    function test_oddNumbers(data: var) {
        showPage();
        type(data.name, data.text);
        keyClick(Qt.Key_Return);
        compareCalls(data.call === "" ? [] : [data.call]);
    }

    function test_setSendsAllThree() {
        showPage();
        type("latitudeField", "59.93863");
        type("longitudeField", "30.31413");
        type("altitudeField", "12.5");
        click("setPositionButton");
        compareCalls(["setPosition double:59.9386300 double:30.3141300 double:12.50"]);
        compare(position(), [59.93863, 30.31413, 12.5]);
    }

    function test_setTakesTheFieldsAsTheyStand_data(): var {
        return [
            {
                tag: "nothing",
                text: ""
            },
            {
                tag: "a minus",
                text: "-"
            }
        ];
    }

    function test_setTakesTheFieldsAsTheyStand(data: var) {
        showPage();
        object("latitudeField").text = data.text;
        click("setPositionButton");
        compareCalls(["setPosition double:0.0000000 double:0.0000000 double:0.00"]);
    }

    function test_setLeavesATrackThatIsNotPlayingAlone() {
        loadThree();
        click("setPositionButton");
        compareCalls(["setPosition double:0.0000000 double:0.0000000 double:0.00"]);
        compare(state(), "waiting play");
    }

    function test_setPausesATrack() {
        loadThree();
        play();
        click("setPositionButton");
        compareCalls(["pauseTrack", jump(0), "setPosition double:0.0000000 double:0.0000000 double:0.00"]);
        compare(state(), "waiting play stop");
    }

    // --- Loading ----------------------------------------------------------------------------------------------------

    function test_loadingSendsTheTrack() {
        showPage();
        load(threePoints());
        // Choosing the first row uploads a track that the emulator does not have yet; then it is uploaded anyway.
        compareCalls([upload(), jump(0), "stopTrack", upload()]);
        load(threePoints());
        compareCalls([jump(0), "stopTrack", upload()]);
    }

    function test_loadingFillsTheTable() {
        loadThree();
        compare(table().columnTitles, ["No.", "Time", "Latitude", "Longitude", "Altitude"]);
        compare([0, 1, 2].map(rowTexts), [["0", "00:00:00.0", "59.9386300", "30.3141300", "12.50"], ["1", "01:00:00.0", "59.9386400", "30.3141400", "1,250.00"], ["2", "02:00:00.0", "-33.8688000", "-151.2093000", "999.99"]]);
        compare(Array.from(page.actualTrackPoints).map(point => [point.latitude, point.longitude, point.altitude, point.interval]), [["59.9386300", "30.3141300", "12.50", 0], ["59.9386400", "30.3141400", "1,250.00", 3600000], ["-33.8688000", "-151.2093000", "999.99", 3600000]]);
        compare(object("trackTable").currentRow, 0);
        compare(position(), [59.93863, 30.31413, 12.5]);
        compare(page.onlyDefaultInterval, false);
        compare(state(), "waiting play");
        compare(object("progressSlider").to, 2);
        compare(object("progressLabel").text, "0.00%");
    }

    function test_loadingWhilePlaying() {
        loadThree();
        play();
        next();
        host.takeFrames();
        load(threePoints());
        // The first row starts playing the new track, until it is stopped before its upload.
        compareCalls([jump(0), "startTrack", "stopTrack", upload()]);
        compare(state(), "waiting play");
    }

    function test_aTrackReplacesTheOneBefore() {
        loadThree();
        page.selectRow(2);
        load(wayPoints(2));
        compare(table().rowCount, 2);
        compare(object("trackTable").currentRow, 0);
        compare(gpsEmulationManager.currentPositionIndex, 0);
    }

    function test_aTrackWithoutTimesMayBePlayedAtItsOwnSpeed() {
        showPage();
        load(wayPoints(3));
        compare(page.onlyDefaultInterval, false);
        compare(object("messageDialog").visible, false);
        verify(host.takeFrames().every(frame => !frame.includes("setTrackIntervalMode")));
    }

    function test_noTimesAreTold() {
        showPage();
        page.onlyDefaultInterval = true;
        tryCompare(object("messageDialog"), "visible", true);
        compare(object("messageDialog").text, "The loaded NMEA file has no temporal information. Thus you cannot play it at its own speed.");
        compare(object("ownSpeedCheckBox").enabled, false);
        closeBox("messageDialog");
    }

    function test_brokenFiles_data(): var {
        const incorrect = "Incorrect NMEA file, line: ";
        const noPoints = "NMEA file has incorrect points format.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL.";
        return [
            {
                tag: "empty",
                url: files.write("empty.nmea", ""),
                message: "NMEA file is empty"
            },
            {
                tag: "line breaks only",
                url: files.write("breaks.nmea", "\r\n\n\r"),
                message: "Value is null and could not be converted to an object"
            },
            {
                tag: "binary",
                url: files.writeBytes("binary.nmea", Array.from({
                    length: 4096
                }, (_, i) => (i * 37 + 11) % 256)),
                pattern: /^NMEA file has incorrect points format\.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL\., line: \d+$/
            },
            {
                tag: "zeros",
                url: files.writeBytes("zeros.nmea", Array(1000).fill(0)),
                message: noPoints + ", line: 1"
            },
            {
                tag: "gone",
                url: files.url("gone.nmea"),
                message: "NMEA file is empty"
            },
            {
                tag: "a folder",
                url: files.makeFolder("folder.nmea"),
                message: "NMEA file is empty"
            },
            {
                tag: "unreadable",
                url: files.makeLinkToItself("loop.nmea"),
                message: "NMEA file is empty"
            },
            {
                tag: "other text",
                url: files.write("text.nmea", "one\n\ntwo\n"),
                message: noPoints + ", line: 2"
            },
            {
                tag: "a broken line",
                url: files.write("broken.nmea", threePoints() + "\n\n$GPGGA,x\n"),
                message: incorrect + 4
            },
            {
                tag: "a line of 50 MB",
                url: files.write("long.nmea", "$GPGGA,000000,", 3600000),
                message: incorrect + 1
            },
            {
                tag: "50 MB of another line",
                url: files.write("other.nmea", "0123456789", 5000000),
                message: noPoints + ", line: 1"
            }
        ];
    }

    function test_brokenFiles(data: var) {
        loadThree();
        page.nmeaFileUrl = "before";
        const dialog = object("errorDialog");
        page.openFile(data.url);
        tryCompare(dialog, "visible", true, 60000);
        if (data.pattern)
            verify(data.pattern.test(dialog.text), dialog.text);
        else
            compare(dialog.text, data.message);
        closeBox("errorDialog");
        compare(table().rowCount, 0);
        compare(page.nmeaFileUrl, data.shown ?? data.url.toString());
        compare(page.actualTrackPoints.length, 3);
        compare(state(), "waiting");
        compareCalls([]);
    }

    // A "%" may not be mistaken for the beginning of a code.
    function shown(name: string): string {
        return files.url("x").toString().slice(0, -1) + name.replace(/[%#?]/g, encodeURIComponent);
    }

    function test_aRefusedFileEndsPlaying() {
        loadThree();
        play();
        load("$GPGGA,x");
        closeBox("errorDialog");
        compare(state(), "waiting");
        compare(timer().running, false);
        compareCalls(["stopTrack"]);
        load(threePoints());
        compare(state(), "waiting play");
        host.takeFrames();
    }

    function test_aRefusedFileUnderTheSlider() {
        loadThree();
        play();
        const slider = object("progressSlider");
        mousePress(slider, sliderX(0), slider.height / 2);
        load("$GPGGA,x");
        closeBox("errorDialog");
        mouseRelease(slider, sliderX(0), slider.height / 2);
        compareCalls(["stopTrack"]);
        compare(state(), "waiting");
    }

    function test_aRefusedFileLeavesAPausedTrackPaused() {
        loadThree();
        play();
        click("pauseButton");
        host.takeFrames();
        load("$GPGGA,x");
        closeBox("errorDialog");
        compareCalls([]);
        compare(state(), "waiting");
    }

    function test_aTrackThatIsReadWhileTheSliderIsHeld_data(): var {
        return [false, true].map(loop => ({
                    tag: loop ? "in a loop" : "once",
                    loop: loop
                }));
    }

    function test_aTrackThatIsReadWhileTheSliderIsHeld(data: var) {
        loadThree();
        gpsEmulationManager.setTrackLooped(data.loop);
        play();
        const slider = object("progressSlider");
        mousePress(slider, sliderX(0), slider.height / 2);
        mouseMove(slider, sliderX(1), slider.height / 2);
        host.takeFrames();
        load(threePoints());
        mouseRelease(slider, sliderX(1), slider.height / 2);
        compareCalls([jump(0), "stopTrack", upload()]);
        compare(state(), "waiting play");
    }

    function test_files_data(): var {
        const names = ["plain.nmea", "with blanks.nmea", "a#b.nmea", "100%.nmea", "50%41.nmea", "a?b.nmea", "маршрут – Ωμέγα.nmea", "a+b&c;d.nmea"];
        const rows = names.map(name => ({
                    tag: name,
                    url: files.write(name, threePoints()),
                    shown: shown(name)
                }));
        rows.push({
            tag: "CRLF",
            shown: shown("crlf.nmea"),
            url: files.write("crlf.nmea", threePoints().replace(/\n/g, "\r\n"))
        }, {
            tag: "UTF-8 with BOM",
            shown: shown("bom.nmea"),
            url: files.write("bom.nmea", "\uFEFF" + threePoints())
        }, {
            tag: "no line break at the end, blank lines",
            shown: shown("blank.nmea"),
            url: files.write("blank.nmea", "\n\n" + threePoints().replace(/\n/g, "\n\n\n"))
        });
        return rows;
    }

    function test_files(data: var) {
        showPage();
        page.openFile(data.url);
        tryCompare(table(), "rowCount", 3, 30000);
        compare(object("trackFileField").text, data.shown);
        compareCalls([upload(), jump(0), "stopTrack", upload()]);
    }

    // The second comes while the first is read.
    function test_theFileChosenLastCounts() {
        showPage();
        page.openFile(files.write("first.nmea", wayPoints(1) + "\n", 500000));
        page.openFile(files.write("second.nmea", threePoints()));
        tryCompare(table(), "rowCount", 3, 30000);
        tryCompare(object("nmeaLogLoader"), "busy", false, 30000);
        compareCalls([upload(), jump(0), "stopTrack", upload()]);
        compare(page.nmeaFileUrl, files.url("second.nmea").toString());
    }

    function test_aHugeFileLetsTheWindowAnswer() {
        showPage();
        const line = gga(0, "5956.3178,N", "03018.8478,E", "12.5") + "\n";
        const count = Math.ceil(files.hugeSize / line.length);
        const url = files.write("huge.nmea", line, count);
        watchdog.start();
        page.openFile(url);
        tryVerify(() => table().rowCount === count, 120000);
        // Decoding the text and uploading the points are done at once: 2 s on a machine at rest, many times that on a busy
        // one. Anything that walks the points one by one in QML takes minutes.
        verify(watchdog.longestSilence() < 60000);
        compare(rowTexts(count - 1)[0], String(count - 1));
        const calls = host.takeFrames();
        compare(calls.length, 4);
        compare(calls[3].length, gps(upload([])).length + count * "59.9386300,30.3141300,12.50,0;".length - 1);
    }

    function test_theFileDialog() {
        showPage();
        const dialog = object("fileDialog");
        compare(dialog.title, "Open NMEA File");
        compare(dialog.nameFilters, ["NMEA files (*.nmea)"]);
        compare(dialog.fileMode, FileDialog.OpenFile);
        dialog.selectedFile = files.write("chosen.nmea", threePoints());
        dialog.accepted();
        tryCompare(table(), "rowCount", 3, 30000);
    }

    // --- Playback ---------------------------------------------------------------------------------------------------

    function test_playing() {
        loadThree();
        click("playButton");
        compareCalls(["startTrack"]);
        compare(state(), "running pause stop");
        compare(timer().interval, 3600000);

        next();
        // Choosing the row tells the emulator.
        compareCalls([jump(1)]);
        compare(state(), "running pause stop");
        compare(object("trackTable").currentRow, 1);
        compare(object("progressLabel").text, "50.00%");
        compare(position(), [59.93864, 30.31414, 0]); // the altitude's text has a group separator

        next();
        // Once for the row, and once more because the clock stands still now.
        compareCalls([jump(2), jump(2)]);
        compare(state(), "waiting play");
        compare(object("progressLabel").text, "100.00%");
        compare(position(), [-33.8688, -151.2093, 999.99]);

        click("playButton");
        compareCalls(["stopTrack", jump(0), "startTrack"]);
        compare(state(), "running pause stop");
        compare(object("trackTable").currentRow, 0);
    }

    function test_waits_data(): var {
        return [
            {
                tag: "the point's own interval",
                text: threePoints(),
                waits: [3600000, 3600000]
            },
            {
                tag: "its speed",
                text: threePoints(),
                speed: 3,
                waits: [1200000, 1200000]
            },
            {
                tag: "the default interval",
                text: threePoints(),
                own: false,
                waits: [2000, 2000]
            },
            {
                tag: "the default interval, at five times the speed",
                text: threePoints(),
                own: false,
                speed: 5,
                waits: [400, 400]
            },
            {
                tag: "fractions are dropped",
                text: threePoints(),
                own: false,
                speed: 3,
                waits: [666, 666]
            },
            {
                tag: "the way back to the first takes 2 s at any speed",
                text: threePoints(),
                loop: true,
                speed: 4,
                waits: [900000, 900000, 2000, 900000]
            },
            {
                tag: "points without times",
                text: wayPoints(3),
                loop: true,
                waits: [1, 1, 2000, 1]
            },
            {
                tag: "a time that goes back",
                text: ["000002", "000001"].map(time => "$GPRMC,%1,A,4807.038,N,01131.000,E,022.4,084.4,100124,003.1,W*6A".arg(time)).join("\n"),
                waits: [1]
            },
            {
                tag: "less than a millisecond",
                text: ["000000.000", "000000.004"].map(time => gga(0, "5956.3178,N", "03018.8478,E", "1.0").replace("000000.00", time)).join("\n"),
                speed: 5,
                waits: [1]
            },
            {
                tag: "one and a half milliseconds",
                text: ["000000.000", "000000.003"].map(time => gga(0, "5956.3178,N", "03018.8478,E", "1.0").replace("000000.00", time)).join("\n"),
                speed: 2,
                waits: [1]
            },
            {
                tag: "years",
                text: ["010124", "310124"].map(date => "$GPRMC,000000,A,4807.038,N,01131.000,E,022.4,084.4,%1,003.1,W*6A".arg(date)).reverse().join("\n"),
                waits: [2147483647]
            }
        ];
    }

    function test_waits(data: var) {
        showPage();
        load(data.text);
        gpsEmulationManager.setTrackSpeed(data.speed ?? 1);
        gpsEmulationManager.setTrackIntervalMode(!(data.own ?? true));
        gpsEmulationManager.setTrackLooped(data.loop ?? false);
        // The clock must not be faster than the test.
        const waits = [];
        page.startTrack();
        for (let i = 0; i < data.waits.length; ++i) {
            verify(timer().running);
            waits.push(timer().interval);
            next();
        }
        compare(waits, data.waits);
    }

    function test_looping() {
        loadThree();
        click("loopCheckBox");
        compareCalls(["setTrackLooped boolean:1"]);
        play();
        next();
        next();
        compareCalls([jump(1), jump(2)]);
        compare(state(), "running pause stop");
        compare(timer().interval, 2000);
        next();
        compareCalls([jump(0)]);
        compare(timer().interval, 3600000);
        click("loopCheckBox");
        compareCalls(["setTrackLooped boolean:0"]);
    }

    // Real time: a wait of 2 s at fivefold speed, and jumps every 100 ms meanwhile.
    function test_theEmulatorIsToldAllTheTime() {
        loadThree();
        object("syncTimer").interval = 100;
        click("ownSpeedCheckBox");
        gpsEmulationManager.setTrackSpeed(5);
        compareCalls(["setTrackIntervalMode boolean:1", "setTrackSpeed int32:5"]);
        click("playButton");
        tryCompare(timer(), "running", false, 30000);
        compare(state(), "waiting play");
        const calls = host.takeFrames();
        compare(calls[0], gps("startTrack"));
        const jumps = calls.slice(1).map(call => Number(call.split(":").pop()));
        compare(calls.slice(1), jumps.map(index => gps(jump(index))));
        compare(jumps, Array.from(jumps).sort());
        compare(new Set(jumps).size, 3);
        compare(jumps.slice(-2), [2, 2]);
        // Two waits of 400 ms have room for some, a slow machine takes longer but not more of them.
        verify(jumps.length >= 5 && jumps.length <= 12, jumps.join(" "));
    }

    // Jumps between the rows, too: the rhythm does not begin anew with each of them.
    function test_rowsDoNotDelayTheJumps() {
        showPage();
        const times = Array.from({
            length: 12
        }, (_, i) => "0000%1.%2".arg(String(Math.floor(i * 0.09)).padStart(2, "0")).arg(String(Math.round(i * 90) % 1000).padStart(3, "0")));
        load(times.map(time => threePoints().split("\n")[0].replace("000000.00", time)).join("\n"));
        host.takeFrames();
        object("syncTimer").interval = 100;
        click("playButton");
        tryCompare(timer(), "running", false, 30000);
        const jumps = host.takeFrames().slice(1).map(call => Number(call.split(":").pop()));
        for (let row = 1; row < 12; ++row)
            verify(jumps.includes(row), "each row but the first tells itself");
        // And once more at the end. Rows that come faster than every 100 ms would leave no room for others.
        verify(jumps.length >= 11 + 1 + 3, jumps.join(" "));
    }

    function test_pausing() {
        loadThree();
        play();
        next();
        host.takeFrames();
        click("pauseButton");
        compareCalls(["pauseTrack", jump(1)]);
        compare(state(), "waiting play stop");
        click("playButton");
        compareCalls(["startTrack"]);
        compare(state(), "running pause stop");
        compare(gpsEmulationManager.currentPositionIndex, 1);
    }

    function test_stopping() {
        loadThree();
        play();
        next();
        host.takeFrames();
        click("stopButton");
        compareCalls(["stopTrack", jump(0)]);
        compare(state(), "waiting play");
        compare(object("trackTable").currentRow, 0);
    }

    function test_stoppingAPausedTrack() {
        loadThree();
        play();
        click("pauseButton");
        host.takeFrames();
        click("stopButton");
        compareCalls(["stopTrack"]);
        compare(state(), "waiting play");
    }

    function test_aTrackOfOnePoint() {
        showPage();
        load(wayPoints(1));
        host.takeFrames();
        const slider = object("progressSlider");
        compare([slider.enabled, slider.value, slider.to], [false, 1, 1]);
        compare(object("progressLabel").text, "100.00%");
        click("playButton");
        compareCalls(["stopTrack", "startTrack"]);
        compare(state(), "waiting play");
        click("loopCheckBox");
        click("playButton");
        compareCalls(["setTrackLooped boolean:1", "stopTrack", "startTrack"]);
        compare(timer().interval, 2000);
        compare(state(), "running pause stop");
        next();
        compareCalls([]);
        compare(state(), "running pause stop");
    }

    function test_speeds() {
        loadThree();
        const box = object("speedBox");
        compare(Array.from(page.trackSpeedList).map(entry => [entry.key, entry.value]), [["1x", 1], ["2x", 2], ["3x", 3], ["4x", 4], ["5x", 5]]);
        box.forceActiveFocus();
        for (const speed of [2, 3, 4, 5]) {
            keyClick(Qt.Key_Down);
            compareCalls(["setTrackSpeed int32:%1".arg(speed)]);
            compare(box.currentIndex, speed - 1);
        }
        gpsEmulationManager.setTrackSpeed(2);
        compare(box.currentText, "2x");
    }

    function test_boxesFollowTheManager() {
        loadThree();
        click("ownSpeedCheckBox");
        compareCalls(["setTrackIntervalMode boolean:1"]);
        gpsEmulationManager.setTrackIntervalMode(false);
        compare(object("ownSpeedCheckBox").checked, true);
        click("ownSpeedCheckBox");
        compare(gpsEmulationManager.useDefaultInterval, true);
        gpsEmulationManager.setTrackLooped(true);
        compare(object("loopCheckBox").checked, true);
    }

    // --- Seeking ----------------------------------------------------------------------------------------------------

    function clickRow(row: int) {
        const cells = findChild(object("trackTable"), "tableView");
        waitForRendering(cells);
        mouseClick(cells, 30, (object("trackTable").rowHeight + 1) * (row + 0.5));
    }

    function test_clickingARow() {
        loadThree();
        clickRow(2);
        compareCalls([jump(2)]);
        compare(gpsEmulationManager.currentPositionIndex, 2);
        compare(object("progressSlider").value, 2);
        clickRow(2);
        compareCalls([]);
        clickRow(1);
        compareCalls([jump(1)]);
        compare(state(), "waiting play");
    }

    function test_clickingARowWhilePlaying() {
        loadThree();
        play();
        clickRow(1);
        compareCalls([jump(1), "startTrack"]);
        compare(state(), "running pause stop");
        // The last row is where a track is over, so it begins anew.
        clickRow(2);
        compareCalls([jump(2), "stopTrack", jump(0), "startTrack"]);
        compare(object("trackTable").currentRow, 0);
        compare(state(), "running pause stop");
    }

    function test_draggingToTheLastRowWhilePlaying() {
        loadThree();
        play();
        const slider = object("progressSlider");
        mousePress(slider, sliderX(0), slider.height / 2);
        mouseMove(slider, sliderX(2), slider.height / 2);
        mouseRelease(slider, sliderX(2), slider.height / 2);
        compareCalls([jump(2), jump(2), "stopTrack", jump(0), "startTrack"]);
        compare(object("trackTable").currentRow, 0);
        compare(state(), "running pause stop");
    }

    function test_theLoopEndsOnTheLastRow() {
        loadThree();
        click("loopCheckBox");
        play();
        next();
        next();
        click("loopCheckBox");
        host.takeFrames();
        object("syncTimer").triggered();
        compareCalls([jump(2)]);
        compare(state(), "running pause stop");
        next(); // back to the first row once more
        compareCalls([jump(0)]);
        compare(state(), "running pause stop");
    }

    function test_anIndexWithoutATrack_data(): var {
        return [false, true].map(loop => ({
                    tag: loop ? "in a loop" : "once",
                    loop: loop
                }));
    }

    function test_anIndexWithoutATrack(data: var) {
        showPage();
        gpsEmulationManager.setTrackLooped(data.loop);
        page.trackStopped = false;
        gpsEmulationManager.currentPositionIndex = 0;
        compare(page.trackStopped, !data.loop);
        host.takeFrames();
    }

    function test_keysInTheTable() {
        loadThree();
        object("trackTable").forceActiveFocus(Qt.TabFocusReason);
        for (const [key, row] of [[Qt.Key_Down, 1], [Qt.Key_End, 2], [Qt.Key_Home, 0], [Qt.Key_PageDown, 2], [Qt.Key_Up, 1], [Qt.Key_PageUp, 0]]) {
            keyClick(key);
            compareCalls([jump(row)]);
        }
        keyClick(Qt.Key_Up);
        compareCalls([]);
    }

    function sliderX(value: int): real {
        const slider = object("progressSlider");
        const handle = slider.handle.width;
        return slider.leftPadding + handle / 2 + (slider.availableWidth - handle) * value / slider.to;
    }

    function test_draggingTheSlider() {
        loadThree();
        const slider = object("progressSlider");
        const y = slider.height / 2;
        mousePress(slider, sliderX(0), y);
        mouseMove(slider, sliderX(1), y);
        // Once by the row, once by the slider itself.
        compareCalls([jump(1), jump(1)]);
        mouseMove(slider, sliderX(2), y);
        mouseRelease(slider, sliderX(2), y);
        compareCalls([jump(2), jump(2)]);
        compare(state(), "waiting play");
        compare(object("trackTable").currentRow, 2);
    }

    function test_draggingTheSliderWhilePlaying() {
        loadThree();
        play();
        const slider = object("progressSlider");
        const y = slider.height / 2;
        mousePress(slider, sliderX(0), y);
        compare(timer().running, false);
        mouseMove(slider, sliderX(1), y);
        mouseRelease(slider, sliderX(1), y);
        compareCalls([jump(1), jump(1), "startTrack"]);
        compare(state(), "running pause stop");
        compare(timer().interval, 3600000);
    }

    function test_losingTheTrackUnderTheSlider_data(): var {
        return [
            {
                tag: "once",
                loop: false
            },
            {
                tag: "in a loop",
                loop: true
            }
        ];
    }

    function test_losingTheTrackUnderTheSlider(data: var) {
        loadThree();
        gpsEmulationManager.setTrackLooped(data.loop);
        play();
        const slider = object("progressSlider");
        mousePress(slider, sliderX(0), slider.height / 2);
        host.takeFrames();
        invoker.sendText("boom");
        tryCompare(table(), "rowCount", 0);
        closeBox("errorDialog");
        mouseRelease(slider, sliderX(0), slider.height / 2);
        compareCalls(["stopTrack", "stopTrack"]);
        compare(timer().running, false);
        compare(state(), "waiting");
    }

    function test_arrowKeysMoveTheSlider() {
        loadThree();
        object("progressSlider").forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Right);
        compareCalls([jump(1), jump(1)]);
    }

    // --- What the emulator says -------------------------------------------------------------------------------------

    function test_aFailedCallGivesTheTrackUp_data(): var {
        return ["a:b:c:org.freedesktop.DBus.Error.Failed:boom", "boom", ""].map(reply => ({
                    tag: "<%1>".arg(reply),
                    reply: reply
                }));
    }

    function test_aFailedCallGivesTheTrackUp(data: var) {
        loadThree();
        page.nmeaFileUrl = "file";
        play();
        next();
        host.takeFrames();
        invoker.sendText(data.reply);
        tryCompare(table(), "rowCount", 0);
        compare(page.nmeaFileUrl, "");
        compare(state(), "waiting");
        // The reply is heard twice.
        compareCalls(["stopTrack", jump(0), "stopTrack"]);
        if (data.reply !== "")
            closeBox("errorDialog");
    }

    // It must not be asked over and over: the stops that it refuses stop nothing.
    function test_aServiceThatRefusesEveryCall() {
        loadThree();
        repliesSpy.clear();
        invoker.setAnswerToAll("a:b:c:broken:boom");
        click("playButton");
        tryCompare(repliesSpy, "count", 6, 30000); // three calls, each refusal heard twice
        compareCalls(["startTrack", "stopTrack", "stopTrack"]);
        compare(state(), "waiting");
        closeBox("errorDialog");
    }

    // How many refusals come in one turn of the event loop depends on the machine.
    function test_aServiceThatRefusesATrack() {
        showPage();
        repliesSpy.clear();
        invoker.setAnswerToAll("a:b:c:broken:boom");
        load(threePoints());
        const calls = [];
        let answers = 0;
        for (let taken = null; calls.length < 100 && taken?.length !== 0; ) {
            taken = host.takeFrames();
            calls.push(...taken);
            answers += taken.length + 1; // taking makes a call, too
            tryVerify(() => repliesSpy.count >= 2 * answers, 30000);
        }
        const [loading, stops] = [calls.slice(0, 4), calls.slice(4)];
        compare(loading, [upload(), jump(0), "stopTrack", upload()].map(gps));
        verify(stops.length >= 2 && stops.length <= 2 * (loading.length + 1), calls.join("\n"));
        compare(stops, stops.map(() => gps("stopTrack")));
        compare(state(), "waiting");
        closeBox("errorDialog");
    }

    function test_aFailedCallEndsReading() {
        showPage();
        page.openFile(files.write("read.nmea", wayPoints(1) + "\n", 300000));
        page.handleReply("boom");
        compare(page.nmeaFileUrl, "");
        compare(object("nmeaLogLoader").busy, false);
        compareCalls(["stopTrack"]);
        // Another one is read as ever, and the first does not come after all.
        page.openFile(files.write("other.nmea", threePoints()));
        tryCompare(table(), "rowCount", 3, 30000);
        tryCompare(object("nmeaLogLoader"), "busy", false, 30000);
        compareCalls([upload(), jump(0), "stopTrack", upload()]);
    }

    function test_aFailedCallLeavesNothingToBeReadLater() {
        showPage();
        const url = files.write("read.nmea", wayPoints(1) + "\n", 2000);
        page.openFile(url);
        page.handleReply("boom");
        // What was asked for before this has been read when this has.
        const state = {
            read: false
        };
        const request = new XMLHttpRequest(); // qmllint disable unqualified
        request.onreadystatechange = () => {
            state.read = request.readyState === request.DONE;
        };
        request.open("GET", files.write("later.nmea", wayPoints(1) + "\n", 4000));
        request.send();
        tryVerify(() => state.read, 60000);
        tryCompare(object("nmeaLogLoader"), "busy", false, 60000);
        compare(table().rowCount, 0);
        compareCalls(["stopTrack"]);
    }

    function test_aFailedCallAfterARefusedFile() {
        showPage();
        page.nmeaFileUrl = "refused";
        page.handleReply("boom");
        compareCalls(["stopTrack"]);
        compare(page.nmeaFileUrl, "");
        page.handleReply("boom");
        compareCalls([]);
    }

    function test_goodRepliesChangeNothing() {
        loadThree();
        invoker.sendText("a:b:c::");
        compareCalls([]);
        compare(table().rowCount, 3);
    }

    function setup(): var {
        return ["stopTrack", "setTrackLooped boolean:0", "setTrackIntervalMode boolean:0", "setTrackSpeed int32:1", "setPosition double:59.9386300 double:30.3141300 double:12.50"];
    }

    function gpsFrames(): var {
        return host.takeFrames().filter(frame => frame.includes("Geoclue"));
    }

    function test_afterAReconnectionTheNextClickUploads() {
        loadThree();
        host.reconnect();
        tryCompare(gpsEmulationManager, "trackLoaded", false);
        compare(gpsFrames(), setup().concat(setup()).map(gps));
        clickRow(1);
        compareCalls([upload(), jump(1)]);
        clickRow(2);
        compareCalls([jump(2)]);
    }

    function test_aReconnectionWhilePlaying() {
        loadThree();
        play();
        next();
        host.takeFrames();
        host.reconnect();
        tryCompare(gpsEmulationManager, "trackLoaded", false);
        // Back to the first row, which is told while the track still counts as loaded. The position stored last is that
        // of this row.
        compare(gpsFrames(), ["stopTrack", jump(0), ...setup().slice(1), ...setup()].map(gps));
        compare(state(), "waiting play");
        click("playButton");
        compareCalls(["startTrack"]);
        next();
        compareCalls([upload(), jump(1)]);
    }

    function test_aReconnectionUnderTheSlider() {
        loadThree();
        play();
        const slider = object("progressSlider");
        mousePress(slider, sliderX(0), slider.height / 2);
        host.takeFrames();
        host.reconnect();
        tryCompare(gpsEmulationManager, "trackLoaded", false);
        mouseRelease(slider, sliderX(0), slider.height / 2);
        compare(gpsFrames(), [...setup(), ...setup()].map(gps));
        compare(state(), "waiting play");
    }

    function test_aReconnectionOfAPausedTrack() {
        loadThree();
        play();
        next();
        click("pauseButton");
        host.takeFrames();
        host.reconnect();
        tryCompare(gpsEmulationManager, "trackLoaded", false);
        compare(gpsFrames(), ["stopTrack", jump(0), ...setup().slice(1), ...setup()].map(gps));
        compare(state(), "waiting play");
    }

    // --- The end of playing -----------------------------------------------------------------------------------------

    function test_whateverEndsPlayingStopsTheEmulator_data(): var {
        const ends = [
            {
                end: "Stop",
                by: () => click("stopButton"),
                state: "waiting play"
            },
            {
                end: "a refused call",
                by: () => {
                    invoker.sendText("a:b:c:broken:boom");
                    closeBox("errorDialog");
                },
                state: "waiting"
            },
            {
                end: "a refused file",
                by: () => {
                    load("$GPGGA,x");
                    closeBox("errorDialog");
                },
                state: "waiting"
            },
            {
                end: "a connection that is lost and comes back",
                by: () => {
                    host.reconnect();
                    tryCompare(gpsEmulationManager, "trackLoaded", false);
                },
                state: "waiting play"
            },
            {
                end: "a lost connection of which the plugin tells",
                by: () => {
                    gpsEmulationManager.replyFromEmulatorReceived("");
                    host.reconnect();
                    tryCompare(gpsEmulationManager, "trackLoaded", false);
                },
                state: "waiting"
            },
            {
                end: "another track",
                by: () => load(wayPoints(3)),
                state: "waiting play"
            }
        ];
        return [].concat(...ends.map(end => [false, true].map(loop => Object.assign({
                    tag: "%1, %2".arg(end.end).arg(loop ? "in a loop" : "once"),
                    loop: loop
                }, end))));
    }

    // On the second row, from which the way back to the first goes through the page.
    function test_whateverEndsPlayingStopsTheEmulator(data: var) {
        loadThree();
        gpsEmulationManager.setTrackLooped(data.loop);
        play();
        next();
        compare(gpsEmulationManager.currentPositionIndex, 1);
        host.takeFrames();
        data.by();
        compare(state(), data.state);
        compare(gpsEmulationManager.currentPositionIndex, 0);
        const commands = gpsFrames().map(frame => frame.split(" ")[4]).filter(method => ["startTrack", "pauseTrack", "stopTrack"].includes(method));
        compare(commands.pop(), "stopTrack");
        compare(page.trackStopped, true);
    }

    // --- Looks ------------------------------------------------------------------------------------------------------

    function test_theTableFillsThePage() {
        loadThree();
        const trackTable = object("trackTable");
        compare(trackTable.height, Math.max(100, page.height - trackTable.y - 15));
        verify(trackTable.height > 100);
        view.height = 400;
        compare(trackTable.height, 100);
    }

    function test_playingKeepsTheRowInSight() {
        showPage();
        load(wayPoints(100));
        gpsEmulationManager.setTrackIntervalMode(true);
        click("playButton");
        const cells = findChild(object("trackTable"), "tableView");
        for (let row = 1; row < 40; ++row) {
            next();
            verify(waitForRendering(cells));
            compare(object("trackTable").currentRow, row);
            const cell = cells.itemAtCell(0, row);
            verify(cell, "row %1".arg(row));
            const top = cell.mapToItem(cells, 0, 0).y;
            verify(top >= 0 && top + cell.height <= cells.height, "row %1 is at %2 of %3".arg(row).arg(top).arg(cells.height));
        }
        host.takeFrames();
    }

    function test_playingScrollsTheRowIntoView() {
        showPage();
        load(wayPoints(1000));
        click("playButton");
        timer().stop();
        timer().interval = 2000000000;
        timer().start();
        gpsEmulationManager.currentPositionIndex = 800;
        const cells = findChild(object("trackTable"), "tableView");
        tryVerify(() => cells.topRow <= 800 && cells.bottomRow >= 800);
        timer().stop();
        gpsEmulationManager.currentPositionIndex = 998;
        timer().triggered();
        compare(state(), "waiting play");
        tryVerify(() => cells.bottomRow === 999);
        host.takeFrames();
    }

    function test_spokenControls() {
        loadThree();
        object("gpsManagementButton").forceActiveFocus(Qt.TabFocusReason);
        const names = ["latitudeField", "longitudeField", "altitudeField", "setPositionButton", "trackFileField", "openFileButton", "progressSlider", "playButton", "pauseButton", "stopButton", "speedBox", "ownSpeedCheckBox", "loopCheckBox", "trackTable"].map(object);
        compare(spoken(names), ["EditableText Latitude", "EditableText Longitude", "EditableText Altitude", "Button Set the position", "EditableText Track file", "Button Open a track file", "Slider Track progress", "Button Play", "Button Pause", "Button Stop", "ComboBox Track speed", "CheckBox Use own track speed", "CheckBox Loop track", "Table Track points"]);
    }

    function test_leaving() {
        loadThree();
        play();
        let left = false;
        page.exitPage(() => left = true);
        compare(left, true);
        click("sensorsValuesButton");
        compare(page.visible, false);
        next(); // goes on out of sight
        compareCalls([jump(1)]);
    }

    function test_layout() {
        loadThree();
        const column = object("gpsManagementPage/trackTable").parent;
        compare([column.width, column.spacing, column.padding], [620, 15, 15]);
        for (const name of ["latitudeField", "longitudeField", "altitudeField"])
            compare([object(name).width, object(name).horizontalAlignment], [90, TextInput.AlignRight], name);
        for (const name of ["play", "pause", "stop"]) {
            const button = object("gpsManagementPage/" + name + "Button");
            compare([button.width, String(button.icon.source)], [40, "qrc:/emulationmanagement/%1.png".arg(name)]);
        }
        const row = object("gpsManagementPage/playButton").parent;
        compare([row.spacing, object("speedBox").width, row.parent.width, row.parent.spacing], [10, 80, 450, 5]);
        const label = object("progressLabel");
        labelMetrics.font = label.font;
        compare([label.width, label.horizontalAlignment], [5 * labelMetrics.height, Text.AlignRight]);
        const table = object("trackTable");
        compare(table.columnWidth(0), 70);
        compare(table.columnWidth(1), table.width / 6);
        compare([object("tableView").columnSpacing, object("tableView").rowSpacing], [1, 1]);
    }
}
