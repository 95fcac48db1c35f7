// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtTest
import "cases.js" as Cases
import "randomlogs.js" as RandomLogs

// What holds for every reader of NMEA logs.
TestCase {
    id: root

    required property var parsing
    // A day without a change of the clocks nearby.
    readonly property var now: new Date(2024, 0, 15, 12)

    // What a list of rows becomes: one row of data each, named by its first value.
    function rows(names: var, values: var): var {
        return values.map(row => names.reduce((result, name, index) => Object.assign(result, {
                    [name]: row[index]
                }), {}));
    }

    function text(value: var): string {
        return Object.is(value, -0) ? "-0" : String(value);
    }

    function texts(points: var): var {
        return points.map(point => [point.format, point.index, point.latitude, point.longitude, point.altitude, point.time, point.interval, point.timeString].map(text).join(" "));
    }

    function errorOf(log: string): var {
        try {
            parsing.loadNmeaLog(log, now);
        } catch (thrown) {
            return thrown;
        }
        return null;
    }

    function test_points_data(): var {
        return rows(["tag", "lines", "points"], Cases.points);
    }

    function test_points(data: var) {
        for (const lineBreak of ["\n", "\r\n", "\r", "\n\n\r\n"]) {
            compare(texts(parsing.loadNmeaLog(data.lines.join(lineBreak), now)), data.points);
            compare(texts(parsing.loadNmeaLog(lineBreak + data.lines.join(lineBreak) + lineBreak, now)), data.points);
        }
    }

    function test_errors_data(): var {
        return rows(["tag", "text", "message", "line"], Cases.errors);
    }

    function test_errors(data: var) {
        const error = errorOf(data.text);
        verify(error instanceof SyntaxError);
        compare(error.message, data.message);
        compare(error.incorrectLine, data.line);
    }

    function test_lineBreaksOnlyFailWithoutALine_data(): var {
        return rows(["tag", "text"], [["a line feed", "\n"], ["a carriage return", "\r"], ["several of both", "\r\n\n\r\r\n"]]);
    }

    function test_lineBreaksOnlyFailWithoutALine(data: var) {
        const error = errorOf(data.text);
        verify(error instanceof TypeError);
        compare(error.message, "Value is null and could not be converted to an object");
        compare(error.incorrectLine, undefined);
    }

    function test_errorsLeaveNothingBehind() {
        verify(errorOf("$GPGGA") !== null);
        compare(parsing.loadNmeaLog(Cases.wpl("A"), now).length, 1);
        verify(errorOf("nothing") !== null);
    }

    function test_coordinate_data(): var {
        return rows(["tag", "coordinate", "hemisphere", "size", "value"], Cases.coordinates);
    }

    function test_coordinate(data: var) {
        compare(text(parsing.parseCoordinateFromNmea(data.coordinate, data.hemisphere, data.size)), text(data.value));
    }

    function test_latitudesAndLongitudesDifferInTheirDegrees() {
        compare(parsing.parseLatitudeFromNmea("01131.000", "N"), 3.1833333);
        compare(parsing.parseLongitudeFromNmea("01131.000", "W"), -11.5166667);
        compare(parsing.parseLatitudeFromNmea("4807.038", "S"), -48.1173);
        compare(parsing.parseLongitudeFromNmea("4807.038", "E"), 480.1173);
    }

    function test_roundValue_data(): var {
        return rows(["tag", "value", "precision", "rounded"], Cases.rounded);
    }

    function test_roundValue(data: var) {
        compare(text(parsing.roundValue(data.value, data.precision)), text(data.rounded));
    }

    function test_timeText_data(): var {
        return rows(["tag", "millis", "text"], Cases.timeTexts);
    }

    function test_timeText(data: var) {
        compare(parsing.millisToPointTime(data.millis), data.text);
    }

    function test_pointsWithoutTime_data(): var {
        return rows(["tag", "points", "result"], Cases.withoutTimes);
    }

    function test_pointsWithoutTime(data: var) {
        compare(parsing.trackHasPointsWithoutDateTime(data.points), data.result);
    }

    function test_pointsWithoutTimeOfALog_data(): var {
        return rows(["tag", "lines", "result"], [["one way point", [Cases.wpl("A")], false], ["two way points", [Cases.wpl("A"), Cases.wpl("B")], true], ["all have a time", [Cases.gll("000000"), Cases.gll("000001")], false], ["the same time", [Cases.gll("000000"), Cases.gll("000000")], true]]);
    }

    function test_pointsWithoutTimeOfALog(data: var) {
        compare(parsing.trackHasPointsWithoutDateTime(parsing.loadNmeaLog(data.lines.join("\n"), now)), data.result);
    }

    function test_date_data(): var {
        return rows(["tag", "date", "time", "expected"], Cases.dates);
    }

    function test_date(data: var) {
        compare(text(parsing.parseDateFromNmea(data.date, data.time, null, now).getTime()), text(data.expected.getTime()));
        compare(text(parsing.parseDateFromNmea(data.date, data.time, new Date(2020, 1, 28), now).getTime()), text(data.expected.getTime()));
    }

    function test_timeWithoutDate_data(): var {
        return rows(["tag", "time", "previous", "expected"], Cases.timesOfDay);
    }

    function test_timeWithoutDate(data: var) {
        compare(text(parsing.parseDateFromNmea(null, data.time, data.previous, now).getTime()), text(data.expected.getTime()));
        compare(text(parsing.parseDateFromNmea("", data.time, data.previous, now).getTime()), text(data.expected.getTime()));
    }

    function test_timeWithoutDateIsOfToday() {
        const before = new Date();
        const time = parsing.parseDateFromNmea(null, "123519.25", null);
        const after = new Date();
        verify([before, after].some(day => time.getTime() === new Date(day.getFullYear(), day.getMonth(), day.getDate(), 12, 35, 19, 250).getTime()));
    }

    function test_yearsBeginAnew() {
        const lastOf2024 = new Date(2024, 11, 31, 23, 59, 59, 999);
        const firstOf2025 = new Date(2025, 0, 1);
        compare(parsing.parseDateFromNmea("250124", "000000", null, lastOf2024).getFullYear(), 1925);
        compare(parsing.parseDateFromNmea("250124", "000000", null, firstOf2025).getFullYear(), 2025);
    }

    function test_millisBetween() {
        compare(parsing.millisBetween(new Date(5), new Date(12)), 7);
        compare(parsing.millisBetween(new Date(12), new Date(5)), -7);
        compare(parsing.millisBetween(new Date(-8640000000000000), new Date(8640000000000000)), 17280000000000000);
        compare(parsing.millisBetween(new Date(NaN), new Date(5)), NaN);
        compare(parsing.millisBetween(new Date(5), new Date(NaN)), NaN);
    }

    function test_setUpTrackPointTimeAndInterval_data(): var {
        const soon = new Date(1500);
        const late = new Date(66800);
        return rows(["tag", "points", "start", "time", "expected"], [["the first point has no time", [], soon, late, [0, 0, 0, "00:00:00.0"]], ["a later one has", [
                    {
                        time: 0
                    },
                    {
                        time: 300
                    }
                ], soon, late, [2, 65300, 65000, "00:01:05.3"]], ["without a time", [
                    {
                        time: 300
                    }
                ], soon, null, [1, 0, -300, "00:00:00.0"]], ["without a start", [
                    {
                        time: 300
                    }
                ], null, late, [1, 0, -300, "00:00:00.0"]], ["an invalid time", [
                    {
                        time: 300
                    }
                ], soon, new Date(NaN), [1, NaN, NaN, "NaN:NaN:NaN.NaN"]]]);
    }

    function test_setUpTrackPointTimeAndInterval(data: var) {
        const point = {
            latitude: 1
        };
        parsing.setUpTrackPointTimeAndInterval(data.points, point, data.start, data.time);
        compare([point.index, point.time, point.interval, point.timeString], data.expected);
        compare(point.latitude, 1);
    }

    function test_createTrackPoint() {
        const point = parsing.createTrackPoint("$GPGGA", "4807.038", "S", "01131.000", "W", 12.5);
        compare([point.format, point.latitude, point.longitude, point.altitude], ["$GPGGA", -48.1173, -11.5166667, 12.5]);
        compare(parsing.createTrackPoint("$GPWPL", "0.0", "N", "0.0", "E", undefined).altitude, undefined);
    }

    function test_printedTracksAreReadBack() {
        for (let seed = 1; seed <= 150; ++seed) {
            const track = RandomLogs.track(RandomLogs.generator(seed));
            const points = parsing.loadNmeaLog(track.text, now);
            compare(points.length, track.points.length, "seed " + seed);
            points.forEach((point, index) => {
                const expected = track.points[index];
                for (const field in expected)
                    compare(point[field], expected[field], field + " of point " + index + ", seed " + seed);
            });
        }
    }

    // A line is read as its pattern says, and where it is not, the error has its number.
    function test_linesAreAcceptedAsTheirPatternSays() {
        let accepted = 0;
        let refused = 0;
        for (let seed = 1; seed <= 3000; ++seed) {
            const random = RandomLogs.generator(seed);
            const line = RandomLogs.mutatedLine(random);
            const before = Array(random(4)).fill(Cases.wpl("A"));
            const pattern = Cases.patterns.get(line.split(",")[0]);
            const error = errorOf(before.concat(line, Cases.wpl("A")).join("\n"));
            if (!pattern || pattern.test(line)) {
                ++accepted;
                compare(error, null, line);
            } else {
                ++refused;
                verify(error !== null, line);
                compare(error.incorrectLine, before.length + 1, line);
            }
        }
        verify(accepted > 500 && refused > 500, accepted + " accepted, " + refused + " refused");
    }
}
