// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtTest
import "nmea/nmea-parsing.js" as NmeaParsing

TestCase {
    id: root

    readonly property string incorrect: "Incorrect NMEA file"
    readonly property string noPoints: "NMEA file has incorrect points format.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL."

    function rmc(time: string, date = "310524", latitude = "4807.038,N", longitude = "01131.000,E"): string {
        return "$GPRMC,%1,A,%2,%3,022.4,084.4,%4,003.1,W*6A".arg(time).arg(latitude).arg(longitude).arg(date);
    }

    function gga(time: string, altitude = "545.4"): string {
        return "$GPGGA,%1,4807.038,N,01131.000,E,1,08,0.9,%2,M,46.9,M,,*47".arg(time).arg(altitude);
    }

    function gll(time: string): string {
        return "$GPGLL,4916.45,N,12311.12,W,%1,A*1D".arg(time);
    }

    function wpl(name: string): string {
        return "$GPWPL,4807.038,S,01131.000,E,%1*5C".arg(name);
    }

    // What a list of rows becomes: one row of data each, named by its first value.
    function rows(names: var, values: var): var {
        return values.map(row => names.reduce((result, name, index) => Object.assign(result, {
                    [name]: row[index]
                }), {}));
    }

    name: "NmeaParsing"

    function test_points_data(): var {
        return rows(["tag", "lines", "points"], [["a point of every field", [gga("123519.25")], ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0"]], ["RMC has no altitude", [rmc("123519")], ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0"]], ["GLL has no altitude", [gll("225444")], ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0"]], ["way points have no time", [wpl("A"), wpl("B")], ["$GPWPL 0 -48.1173 11.5166667 0 0 0 00:00:00.0", "$GPWPL 1 -48.1173 11.5166667 0 0 0 00:00:00.0"]], ["the first point decides on the format", [rmc("123519"), gga("123520"), rmc("123521")], ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0", "$GPRMC 1 48.1173 11.5166667 0 2000 2000 00:00:02.0"]], ["other sentences and talkers are skipped", ["$GPGSA,A,3", "$GNRMC,1", "nonsense", gga("000000")], ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0"]], ["midnight passes", [gga("235959"), gga("000001")], ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0", "$GPGGA 1 48.1173 11.5166667 545.4 2000 2000 00:00:02.0"]], ["intervals count from the point before", [gga("000000"), gga("000001.50"), gga("000004.25")], ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0", "$GPGGA 1 48.1173 11.5166667 545.4 1500 1500 00:00:01.5", "$GPGGA 2 48.1173 11.5166667 545.4 4250 2750 00:00:04.2"]], ["a point may have no time", [gll("000001"), gll(""), gll("000003")], ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0", "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0", "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]], ["an RMC track that goes back has a negative interval", [rmc("000002"), rmc("000001")], ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0", "$GPRMC 1 48.1173 11.5166667 0 -1000 -1000 00:00:-1.0"]]]);
    }

    function test_points(data: var) {
        for (const lineBreak of ["\n", "\r\n", "\r", "\n\n\r\n"]) {
            const points = NmeaParsing.loadNmeaLog(lineBreak + data.lines.join(lineBreak) + lineBreak);
            compare(points.map(point => [point.format, point.index, point.latitude, point.longitude, point.altitude, point.time, point.interval, point.timeString].join(" ")), data.points);
        }
    }

    function test_errors_data(): var {
        return rows(["tag", "text", "message", "line"], [["nothing", "", "NMEA file is empty", 0], ["no points at all", "one\n\ntwo\n", noPoints, 2], ["an altitude without decimals", [gga("000000"), gga("000001", "545")].join("\n"), incorrect, 2], ["blank lines do not count", ["", gga("000000"), "", "", gga("000001"), "", "$GPGGA,"].join("\n"), incorrect, 3], ["a broken line of another format", [rmc("000000"), "$GPWPL,x"].join("\n"), incorrect, 2], ["a negative altitude", gga("000000", "-5.0"), incorrect, 1], ["one digit after the second's point", gga("000000.5"), incorrect, 1], ["four digits after it", gga("000000.5555"), incorrect, 1], ["a short time", rmc("12351"), incorrect, 1], ["a short date", rmc("123519", "31052"), incorrect, 1], ["no date", rmc("123519", ""), incorrect, 1], ["another hemisphere", rmc("123519", "310524", "4807.038,X"), incorrect, 1], ["a coordinate without decimals", rmc("123519", "310524", "4807,N"), incorrect, 1], ["a blank before the sentence", " " + rmc("123519"), noPoints, 1]]);
    }

    function test_errors(data: var) {
        let error = null;
        try {
            NmeaParsing.loadNmeaLog(data.text);
        } catch (thrown) {
            error = thrown;
        }
        verify(error instanceof SyntaxError);
        compare(error.message, data.message);
        compare(error.incorrectLine, data.line);
    }

    function test_lineBreaksOnlyFailWithoutALine() {
        let error = null;
        try {
            NmeaParsing.loadNmeaLog("\r\n\n");
        } catch (thrown) {
            error = thrown;
        }
        verify(error instanceof TypeError);
        compare(error.incorrectLine, undefined);
    }

    function test_oneDigitAfterTheSecondOfGll() {
        const points = NmeaParsing.loadNmeaLog([gll("000000"), gll("000000.5")].join("\n"));
        compare(points[1].interval, 500);
    }

    function test_coordinate_data(): var {
        return rows(["tag", "coordinate", "hemisphere", "size", "value"], [["north", "4807.038", "N", 2, 48.1173], ["south", "4807.038", "S", 2, -48.1173], ["west", "01131.000", "W", 3, -11.5166667], ["any other letter counts as positive", "01131.000", "Q", 3, 11.5166667], ["south rounds like north", "0000.000003", "S", 2, -1e-7], ["no minutes", "48", "N", 2, 48]]);
    }

    function test_coordinate(data: var) {
        compare(NmeaParsing.parseCoordinateFromNmea(data.coordinate, data.hemisphere, data.size), data.value);
    }

    function test_roundValue_data(): var {
        return rows(["tag", "value", "precision", "rounded"], [["up", 1.005001, 2, 1.01], ["halves up", 0.5, 0, 1], ["negative halves up", -0.5, 0, 0], ["down", 1.234, 2, 1.23]]);
    }

    function test_roundValue(data: var) {
        fuzzyCompare(NmeaParsing.roundValue(data.value, data.precision), data.rounded, 1e-12);
    }

    function test_timeText_data(): var {
        return rows(["tag", "millis", "text"], [["nothing", 0, "00:00:00.0"], ["one millisecond", 1, "00:00:00.0"], ["a minute and more", 65300, "00:01:05.3"], ["the last tenth of a day", 86399999, "23:59:59.9"], ["a day begins anew", 86400000, "00:00:00.0"], ["negative", -1500, "00:00:-1.-5"]]);
    }

    function test_timeText(data: var) {
        compare(NmeaParsing.millisToPointTime(data.millis), data.text);
    }

    function test_pointsWithoutTime_data(): var {
        return rows(["tag", "points", "result"], [["none", [], false], ["one", [
                    {
                        time: 0
                    }
                ], false], ["the first does not count", [
                    {
                        time: 0
                    },
                    {
                        time: 1
                    }
                ], false], ["the second does", [
                    {
                        time: 0
                    },
                    {
                        time: 0
                    }
                ], true], ["a field of another name does not", [
                    {},
                    {}
                ], false]]);
    }

    function test_pointsWithoutTime(data: var) {
        compare(NmeaParsing.trackHasPointsWithoutDateTime(data.points), data.result);
    }

    function test_date_data(): var {
        return rows(["tag", "date", "time", "expected"], [["the day's digits make the year, the month counts from 0", "310524", "123519", new Date(1931, 5, 31, 12, 35, 19)], ["a year that has been", "100124", "000000.25", new Date(2010, 1, 10, 0, 0, 0, 250)], ["December is the next January", "101224", "235959.999", new Date(2010, 12, 10, 23, 59, 59, 999)], ["hour 24 is the next day", "100124", "240000", new Date(2010, 1, 11, 0, 0, 0)], ["a rounded-up second", "100124", "000000.9999", new Date(2010, 1, 10, 0, 0, 1)]]);
    }

    function test_date(data: var) {
        compare(NmeaParsing.parseDateFromNmea(data.date, data.time, null).getTime(), data.expected.getTime());
    }

    function test_timeWithoutDateIsOfToday() {
        const before = new Date();
        const time = NmeaParsing.parseDateFromNmea(null, "123519.25", null);
        const after = new Date();
        verify([before, after].some(day => time.getTime() === new Date(day.getFullYear(), day.getMonth(), day.getDate(), 12, 35, 19, 250).getTime()));
    }

    function test_timeWithoutDateFollowsThePreviousPoint() {
        const previous = new Date(2020, 1, 28, 23, 59, 59);
        compare(NmeaParsing.parseDateFromNmea(null, "235959", previous).getTime(), previous.getTime());
        compare(NmeaParsing.parseDateFromNmea(null, "000001", previous).getTime(), new Date(2020, 1, 29, 0, 0, 1).getTime());
    }
}
