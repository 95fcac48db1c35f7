// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

.pragma library

// What any reader of NMEA logs has to do. Each row of data begins with its tag, a sentence of behaviour.

const incorrect = "Incorrect NMEA file";
const empty = "NMEA file is empty";
const noPoints = "NMEA file has incorrect points format.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL.";

// The patterns of a line, word for word.
const patterns = new Map([
    ["$GPRMC", /^\$GPRMC,\d{6}(\.\d{2,3})?,.*,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,\d{6},.*,.*$/],
    ["$GPGGA", /^\$GPGGA,\d{6}(\.\d{2,3})?,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,.*,\d+\.\d+,.*,.*,.*,.*,.*$/],
    ["$GPGLL", /^\$GPGLL,\d+\.\d+,(N|S),\d+\.\d+,(E|W),(\d{6}(\.\d{2,3})?,)?.*$/],
    ["$GPWPL", /^\$GPWPL,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*$/]
]);

const position = "4807.038,N,01131.000,E";

function rmc(time, date = "310524", place = position) {
    return `$GPRMC,${time},A,${place},022.4,084.4,${date},003.1,W*6A`;
}

function gga(time, altitude = "545.4", place = position) {
    return `$GPGGA,${time},${place},1,08,0.9,${altitude},M,46.9,M,,*47`;
}

function gll(time, place = "4916.45,N,12311.12,W") {
    return `$GPGLL,${place},${time},A*1D`;
}

function wpl(name, place = "4807.038,S,01131.000,E") {
    return `$GPWPL,${place},${name}*5C`;
}

// A correct line whose altitude is read from anything: the altitude that the pattern finds is one field further.
function ggaOfAltitude(anything) {
    return gga("000000", `${anything},545.4`);
}

// A correct line whose position is read from anything, for the same reason.
function rmcOfPosition(anything) {
    return rmc("000000", "310524", `${anything},${position}`);
}

// tag, lines, points
const points = [
    ["a point of every field", [gga("123519.25")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0"]],
    ["RMC has no altitude", [rmc("123519")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0"]],
    ["GLL has no altitude", [gll("225444")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0"]],
    ["way points have no time", [wpl("A"), wpl("B")],
        ["$GPWPL 0 -48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPWPL 1 -48.1173 11.5166667 0 0 0 00:00:00.0"]],
    ["the first point decides on the format", [rmc("123519"), gga("123520"), wpl("A"), gll("123520"), rmc("123521")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPRMC 1 48.1173 11.5166667 0 2000 2000 00:00:02.0"]],
    ["points of another format do not move the time", [gga("235959"), rmc("000000"), gga("235959.50")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 500 500 00:00:00.5"]],
    ["other sentences and talkers are skipped",
        ["$GPGSA,A,3", "$GNRMC,1", "$GPGGA*47", "$gpgga,1", "$GPRMC ,1", "$GPRMCX,1", "nonsense", ",", "$", gga("000000")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0"]],
    ["words that scripts know are skipped", ["constructor,1", "__proto__,1", "toString", "length", gga("000000")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0"]],
    ["midnight passes", [gga("235959"), gga("000001")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 2000 2000 00:00:02.0"]],
    ["midnight passes in GLL", [gll("235959"), gll("000001")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["midnight passes twice", [gga("180000"), gga("060000"), gga("180000"), gga("060000")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 43200000 43200000 12:00:00.0",
         "$GPGGA 2 48.1173 11.5166667 545.4 86400000 43200000 00:00:00.0",
         "$GPGGA 3 48.1173 11.5166667 545.4 129600000 43200000 12:00:00.0"]],
    ["a time that comes again is the same time", [gga("120000"), gga("120000")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 0 0 00:00:00.0"]],
    ["a time before the previous one is of the next day", [gga("120001"), gga("120000")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 86399000 86399000 23:59:59.0"]],
    ["intervals count from the point before", [gga("000000"), gga("000001.50"), gga("000004.25")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 1500 1500 00:00:01.5",
         "$GPGGA 2 48.1173 11.5166667 545.4 4250 2750 00:00:04.2"]],
    ["milliseconds count", [gga("000000.001"), gga("000000.999")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 998 998 00:00:00.9"]],
    ["a minute and more", [gga("000000"), gga("000105.30")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 65300 65300 00:01:05.3"]],
    ["hours, minutes and seconds may be too large", [gga("126199"), gga("130239")],
        ["$GPGGA 0 48.1173 11.5166667 545.4 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 545.4 0 0 00:00:00.0"]],
    ["a point may have no time", [gll("000001"), gll(""), gll("000003")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["after a point without a time, midnight is not seen", [gll("000002"), gll(""), gll("000001")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 -1000 -1000 00:00:-1.0"]],
    ["a point without a time goes back to the start", [gll("000001"), gll("000003"), gll("")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 2000 2000 00:00:02.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 0 -2000 00:00:00.0"]],
    ["without a time at the start there is none later", [gll(""), gll("000001"), gll("000003")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 0 0 00:00:00.0"]],
    ["GLL takes a second with one decimal", [gll("000000"), gll("000000.5")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 500 500 00:00:00.5"]],
    ["GLL rounds a second with many decimals", [gll("000000"), gll("000000.9995")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 1000 1000 00:00:01.0"]],
    ["GLL may have a checksum for a time", [gll("000001"), "$GPGLL,4916.45,N,12311.12,W,*1D"],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0"]],
    ["a checksum right behind GLL's time makes it none", [gll("000000"), "$GPGLL,4916.45,N,12311.12,W,000001*31", gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["a fraction that is none makes no time", [gll("000000"), gll("000001.x"), gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["digits and something else are no fraction", [gll("000000"), gll("000001.5x"), gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["a point without digits is no fraction", [gll("000000"), gll("000001."), gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["five digits are no time", [gll("000000"), gll("00001"), gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["seven digits are no time", [gll("000000"), gll("0000010"), gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["a blank is no part of a time", [gll("000000"), gll("000001 "), gll("000002")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 2000 2000 00:00:02.0"]],
    ["what is no time at the start leaves all without one", [gll("000001.x"), gll("000002"), gll("000003")],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 1 49.2741667 -123.1853333 0 0 0 00:00:00.0",
         "$GPGLL 2 49.2741667 -123.1853333 0 0 0 00:00:00.0"]],
    ["an RMC track that goes back has a negative interval", [rmc("000002"), rmc("000001")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPRMC 1 48.1173 11.5166667 0 -1000 -1000 00:00:-1.0"]],
    ["RMC's month counts from 0 and goes on in the next year", [rmc("000000", "101124"), rmc("000000", "101224")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPRMC 1 48.1173 11.5166667 0 2678400000 2678400000 00:00:00.0"]],
    ["RMC's day is the year too", [rmc("000000", "100124"), rmc("000000", "110124")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPRMC 1 48.1173 11.5166667 0 31622400000 31622400000 00:00:00.0"]],
    ["an RMC date may come later than in its field", [rmc("000000", "310524,1"), rmc("000001", "x,310524"), rmc("000002", ",310524")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPRMC 1 48.1173 11.5166667 0 NaN NaN NaN:NaN:NaN.NaN",
         "$GPRMC 2 48.1173 11.5166667 0 NaN NaN NaN:NaN:NaN.NaN"]],
    ["RMC without a date in its field is of today", [rmc("000000", ",310524"), rmc("000002", ",310524"), rmc("000001", ",310524")],
        ["$GPRMC 0 48.1173 11.5166667 0 0 0 00:00:00.0",
         "$GPRMC 1 48.1173 11.5166667 0 2000 2000 00:00:02.0",
         "$GPRMC 2 48.1173 11.5166667 0 86401000 86399000 00:00:01.0"]],
    ["an RMC position may come later than in its fields", [rmcOfPosition("x")],
        ["$GPRMC 0 NaN NaN 0 0 0 00:00:00.0"]],
    ["two positions are no problem", [rmcOfPosition("0130.0,S,1.1,x")],
        ["$GPRMC 0 -1.5 1.1 0 0 0 00:00:00.0"]],
    ["what looks like a position may be its second half", [rmcOfPosition("0130.0,S")],
        ["$GPRMC 0 -1.5 480.1173 0 0 0 00:00:00.0"]],
    ["what looks like a latitude may be none", [rmcOfPosition("0130.0")],
        ["$GPRMC 0 1.5 NaN 0 0 0 00:00:00.0"]],
    ["south and west are negative", [gga("000000", "0.0", "3352.128,S,15112.558,W")],
        ["$GPGGA 0 -33.8688 -151.2093 0 0 0 00:00:00.0"]],
    ["zero in the south and in the west is negative too", [gga("000000", "0.0", "0000.000,S,00000.000,W")],
        ["$GPGGA 0 -0 -0 0 0 0 00:00:00.0"]],
    ["coordinates are rounded to 7 decimals", [gga("000000", "0.0", "0000.00000299,N,00000.00000301,E")],
        ["$GPGGA 0 0 1e-7 0 0 0 00:00:00.0"]],
    ["short coordinates are degrees only", [gga("000000", "0.0", "4.5,N,1.5,E")],
        ["$GPGGA 0 4.0833333 1.5 0 0 0 00:00:00.0"]],
    ["long coordinates are not cut", [gga("000000", "0.0", "4807.03800000000000000000000001,N,0113100000000000000000.000,E")],
        ["$GPGGA 0 48.1173 51666666666666670 0 0 0 00:00:00.0"]],
    ["altitudes are rounded to 2 decimals", [gga("000000", "1.005"), gga("000000", "1.015"), gga("000000", "0.125")],
        ["$GPGGA 0 48.1173 11.5166667 1 0 0 00:00:00.0",
         "$GPGGA 1 48.1173 11.5166667 1.01 0 0 00:00:00.0",
         "$GPGGA 2 48.1173 11.5166667 0.13 0 0 00:00:00.0"]],
    ["an empty altitude is 0", [ggaOfAltitude("")], ["$GPGGA 0 48.1173 11.5166667 0 0 0 00:00:00.0"]],
    ["a blank altitude is 0", [ggaOfAltitude("   ")], ["$GPGGA 0 48.1173 11.5166667 0 0 0 00:00:00.0"]],
    ["an altitude of letters is none", [ggaOfAltitude("M")], ["$GPGGA 0 48.1173 11.5166667 NaN 0 0 00:00:00.0"]],
    ["an altitude may have a sign", [ggaOfAltitude("-5.0")], ["$GPGGA 0 48.1173 11.5166667 -5 0 0 00:00:00.0"]],
    ["an altitude may have a plus", [ggaOfAltitude("+7")], ["$GPGGA 0 48.1173 11.5166667 7 0 0 00:00:00.0"]],
    ["an altitude may have blanks around", [ggaOfAltitude("\t 12.5 ")], ["$GPGGA 0 48.1173 11.5166667 12.5 0 0 00:00:00.0"]],
    ["an altitude may be hexadecimal", [ggaOfAltitude("0x10")], ["$GPGGA 0 48.1173 11.5166667 16 0 0 00:00:00.0"]],
    ["an altitude may be octal", [ggaOfAltitude("0o17")], ["$GPGGA 0 48.1173 11.5166667 15 0 0 00:00:00.0"]],
    ["an altitude may be binary", [ggaOfAltitude("0b11")], ["$GPGGA 0 48.1173 11.5166667 3 0 0 00:00:00.0"]],
    ["an altitude may have an exponent", [ggaOfAltitude("1e3")], ["$GPGGA 0 48.1173 11.5166667 1000 0 0 00:00:00.0"]],
    ["an altitude may be infinite", [ggaOfAltitude("-Infinity")], ["$GPGGA 0 48.1173 11.5166667 -Infinity 0 0 00:00:00.0"]],
    ["an altitude may be too large", [ggaOfAltitude("1e999")], ["$GPGGA 0 48.1173 11.5166667 Infinity 0 0 00:00:00.0"]],
    ["an altitude may end with its point", [ggaOfAltitude("5.")], ["$GPGGA 0 48.1173 11.5166667 5 0 0 00:00:00.0"]],
    ["an altitude may begin with its point", [ggaOfAltitude(".5")], ["$GPGGA 0 48.1173 11.5166667 0.5 0 0 00:00:00.0"]],
    ["an altitude of two points is none", [ggaOfAltitude("1.2.3")], ["$GPGGA 0 48.1173 11.5166667 NaN 0 0 00:00:00.0"]],
    ["an altitude of a point is none", [ggaOfAltitude(".")], ["$GPGGA 0 48.1173 11.5166667 NaN 0 0 00:00:00.0"]],
    ["an altitude of foreign digits is none", [ggaOfAltitude("\u0663\u0664")], ["$GPGGA 0 48.1173 11.5166667 NaN 0 0 00:00:00.0"]],
    ["a small negative altitude becomes a negative zero", [ggaOfAltitude("-0.004")], ["$GPGGA 0 48.1173 11.5166667 -0 0 0 00:00:00.0"]],
    ["negative halves go up", [ggaOfAltitude("-0.125")], ["$GPGGA 0 48.1173 11.5166667 -0.12 0 0 00:00:00.0"]],
    ["names may have any characters", [wpl("\u0000\u0085\ud800\u{1f600},,,\u2027\u202a")], ["$GPWPL 0 -48.1173 11.5166667 0 0 0 00:00:00.0"]],
    ["a GLL line may end with the comma behind its position", ["$GPGLL,4916.45,N,12311.12,W,"],
        ["$GPGLL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0"]],
    ["a WPL line may end with the comma behind its position", ["$GPWPL,4916.45,N,12311.12,W,"],
        ["$GPWPL 0 49.2741667 -123.1853333 0 0 0 00:00:00.0"]]
];

// tag, text, message, line
const errors = [
    ["nothing", "", empty, 0],
    ["no points at all", "one\n\ntwo\n", noPoints, 2],
    ["no points in a single line", "one", noPoints, 1],
    ["an altitude without decimals", [gga("000000"), gga("000001", "545")].join("\n"), incorrect, 2],
    ["an altitude without digits in front of its point", gga("000000", ".5"), incorrect, 1],
    ["an altitude without digits behind its point", gga("000000", "5."), incorrect, 1],
    ["an empty altitude", gga("000000", ""), incorrect, 1],
    ["a negative altitude", gga("000000", "-5.0"), incorrect, 1],
    ["an altitude of foreign digits", gga("000000", "\u0663.\u0664"), incorrect, 1],
    ["blank lines do not count", ["", gga("000000"), "", "", gga("000001"), "", "$GPGGA,"].join("\n"), incorrect, 3],
    ["lines of other sentences count", ["one", gga("000000"), "two", "$GPGGA,"].join("\r\n"), incorrect, 4],
    ["lines of blanks count", [" ", "\t", gga("000000"), "$GPGGA,"].join("\r"), incorrect, 4],
    ["a broken line of another format", [rmc("000000"), "$GPWPL,x"].join("\n"), incorrect, 2],
    ["an id alone", "$GPGLL", incorrect, 1],
    ["the first broken line of several", [rmc("000000"), "$GPWPL", rmc("000001"), "$GPGLL"].join("\n"), incorrect, 2],
    ["one digit after the second's point", gga("000000.5"), incorrect, 1],
    ["four digits after it", gga("000000.5555"), incorrect, 1],
    ["no digits after it", gga("000000."), incorrect, 1],
    ["another character than a point", gga("000000,50"), incorrect, 1],
    ["an empty time of GGA", gga(""), incorrect, 1],
    ["an empty time of RMC", rmc(""), incorrect, 1],
    ["a short time", rmc("12351"), incorrect, 1],
    ["a long time", rmc("1235190"), incorrect, 1],
    ["a short date", rmc("123519", "31052"), incorrect, 1],
    ["a long date", rmc("123519", "3105240"), incorrect, 1],
    ["no date", rmc("123519", ""), incorrect, 1],
    ["a date too early", "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,310524,,", incorrect, 1],
    ["a date too late", "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,310524,", incorrect, 1],
    ["another latitude's hemisphere", rmc("123519", "310524", "4807.038,X,01131.000,E"), incorrect, 1],
    ["another longitude's hemisphere", rmc("123519", "310524", "4807.038,N,01131.000,N"), incorrect, 1],
    ["a hemisphere in small letters", gga("123519", "0.0", "4807.038,n,01131.000,E"), incorrect, 1],
    ["a hemisphere of two letters", wpl("A", "4807.038,N,01131.000,EW"), incorrect, 1],
    ["no hemisphere", gll("123519", "4807.038,,01131.000,E"), incorrect, 1],
    ["a coordinate without decimals", rmc("123519", "310524", "4807,N,01131.000,E"), incorrect, 1],
    ["a coordinate with a sign", gga("123519", "0.0", "-4807.038,N,01131.000,E"), incorrect, 1],
    ["a coordinate with blanks", gga("123519", "0.0", " 4807.038,N,01131.000,E"), incorrect, 1],
    ["a coordinate of two points", gll("123519", "4807.03.8,N,01131.000,E"), incorrect, 1],
    ["a GGA position that comes later", gga("123519", "0.0", `x,${position}`), incorrect, 1],
    ["a GGA altitude that comes too late", "$GPGGA,123519,4807.038,N,01131.000,E,1,08,,,545.4,M,46.9,M,", incorrect, 1],
    ["a GGA altitude that comes too early", "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,M,M,,M,,*47", incorrect, 1],
    ["too few fields behind the altitude", "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,*47", incorrect, 1],
    ["nothing behind the position of GLL", "$GPGLL,4916.45,N,12311.12,W", incorrect, 1],
    ["nothing behind the position of WPL", "$GPWPL,4916.45,N,12311.12,W", incorrect, 1],
    ["a line separator in a line", wpl("A\u2028B"), incorrect, 1],
    ["a paragraph separator in a line", gga("000000") + "\u2029", incorrect, 1],
    ["a separator breaks no line", `one\u2028two\u2029${gga("000000")}`, noPoints, 1],
    ["nor do other control characters", `one\u000b\u000c\u0085${gga("000000")}`, noPoints, 1],
    ["a blank before the sentence", " " + rmc("123519"), noPoints, 1],
    ["a byte order mark before the sentence", "\ufeff" + rmc("123519"), noPoints, 1]
];

// tag, coordinate, hemisphere, size, value
const coordinates = [
    ["north", "4807.038", "N", 2, 48.1173],
    ["south", "4807.038", "S", 2, -48.1173],
    ["east", "01131.000", "E", 3, 11.5166667],
    ["west", "01131.000", "W", 3, -11.5166667],
    ["any other letter counts as positive", "01131.000", "Q", 3, 11.5166667],
    ["small letters count as positive", "01131.000", "w", 3, 11.5166667],
    ["south rounds like north", "0000.000003", "S", 2, -1e-7],
    ["north rounds halves up", "0000.000003", "N", 2, 1e-7],
    ["no minutes", "48", "N", 2, 48],
    ["too few degrees", "4", "N", 2, 4],
    ["nothing", "", "N", 2, 0],
    ["nothing in the south", "", "S", 2, -0],
    ["no number", "north", "N", 2, NaN],
    ["minutes that are none", "48north", "N", 2, NaN],
    ["minutes with an exponent", "481e1", "N", 2, 48.1666667],
    ["endless minutes", "48Infinity", "S", 2, -Infinity],
    ["no degrees digits", "48.5", "N", 0, 0.8083333],
    ["a negative size counts as none", "48.5", "N", -1, 0.8083333],
    ["more degrees than there are characters", "48", "N", 9, 48]
];

// tag, value, precision, rounded
const rounded = [
    ["up", 1.005001, 2, 1.01],
    ["down", 1.234, 2, 1.23],
    ["halves up", 0.5, 0, 1],
    ["odd halves up", 2.5, 0, 3],
    ["negative halves up", -0.5, 0, -0],
    ["larger negative halves up", -2.5, 0, -2],
    ["below a half", 0.49999999999999994, 0, 0],
    ["below zero", -0.4, 0, -0],
    ["zero", 0, 2, 0],
    ["negative zero", -0, 2, -0],
    ["nothing to round", 123456789, 7, 123456789],
    ["endless", Infinity, 2, Infinity],
    ["negative and endless", -Infinity, 2, -Infinity],
    ["no number", NaN, 2, NaN],
    ["tens", 125, -1, 130]
];

// tag, milliseconds, text
const timeTexts = [
    ["nothing", 0, "00:00:00.0"],
    ["one millisecond", 1, "00:00:00.0"],
    ["just below a tenth", 99, "00:00:00.0"],
    ["a tenth", 100, "00:00:00.1"],
    ["just below a second", 999, "00:00:00.9"],
    ["a second", 1000, "00:00:01.0"],
    ["a minute and more", 65300, "00:01:05.3"],
    ["just below an hour", 3599999, "00:59:59.9"],
    ["an hour", 3600000, "01:00:00.0"],
    ["the last tenth of a day", 86399999, "23:59:59.9"],
    ["a day begins anew", 86400000, "00:00:00.0"],
    ["days do not show", 1234567890123, "23:31:30.1"],
    ["negative", -1500, "00:00:-1.-5"],
    ["a little negative", -50, "00:00:00.0"],
    ["negative by more than a day", -90061100, "-1:-1:-1.-1"],
    ["fractions are dropped", 1999.9, "00:00:01.9"],
    ["no number", NaN, "NaN:NaN:NaN.NaN"],
    ["endless", Infinity, "NaN:NaN:NaN.NaN"]
];

// tag, points, result
const withoutTimes = [
    ["none", [], false],
    ["one", [{ time: 0 }], false],
    ["the first does not count", [{ time: 0 }, { time: 1 }], false],
    ["the second does", [{ time: 0 }, { time: 0 }], true],
    ["the last does", [{ time: 5 }, { time: 1 }, { time: 0 }], true],
    ["a negative zero does", [{ time: 1 }, { time: -0 }], true],
    ["a field of another name does not", [{}, { Time: 0 }], false],
    ["a text does not", [{}, { time: "0" }], false],
    ["nothing does not", [{}, { time: null }], false],
    ["false does not", [{}, { time: false }], false],
    ["what is no number does not", [{}, { time: NaN }], false]
];

// tag, date, time, expected; in 2024
const dates = [
    ["the day's digits make the year, the month counts from 0", "310524", "123519", new Date(1931, 5, 31, 12, 35, 19)],
    ["a year that has been", "100124", "000000.25", new Date(2010, 1, 10, 0, 0, 0, 250)],
    ["this year", "240124", "000000", new Date(2024, 1, 24)],
    ["next year is of the last century", "250124", "000000", new Date(1925, 1, 25)],
    ["day 0", "000124", "000000", new Date(2000, 1, 0)],
    ["day 99", "990124", "000000", new Date(1999, 1, 99)],
    ["month 0 is January", "100024", "000000", new Date(2010, 0, 10)],
    ["December is the next January", "101224", "235959.999", new Date(2010, 12, 10, 23, 59, 59, 999)],
    ["month 99", "109924", "000000", new Date(2010, 99, 10)],
    ["the leap day", "290124", "000000", new Date(1929, 1, 29)],
    ["hour 24 is the next day", "100124", "240000", new Date(2010, 1, 11, 0, 0, 0)],
    ["everything at its largest", "100124", "999999.999", new Date(2010, 1, 10, 99, 99, 99, 999)],
    ["one digit after the second's point", "100124", "000000.5", new Date(2010, 1, 10, 0, 0, 0, 500)],
    ["a rounded-up second", "100124", "000000.9999", new Date(2010, 1, 10, 0, 0, 1)],
    ["any character for the point", "100124", "000000x25", new Date(2010, 1, 10, 0, 0, 0, 250)],
    ["nothing behind the point", "100124", "000000.", new Date(2010, 1, 10)],
    ["many digits behind the point", "100124", "000000.12345678901234567890", new Date(2010, 1, 10, 0, 0, 0, 123)],
    ["only hours", "100124", "12", new Date(2010, 1, 10, 12)],
    ["no time", "100124", "", new Date(2010, 1, 10)],
    ["only a day", "10", "12", new Date(2010, 0, 10, 12)],
    ["one digit", "1", "12", new Date(2001, 0, 1, 12)],
    ["signs", "+5-124", "-1-2-3", new Date(2005, -1, 5, -1, -2, -3)],
    ["points", "1.5.", "1.2.3.", new Date(2001, 5, 1, 1, 2, 3)],
    ["no numbers in the date", "xx0524", "123519", new Date(NaN)],
    ["no numbers in the time", "100124", "12xx19", new Date(NaN)],
    ["no numbers behind the point", "100124", "123519.x", new Date(NaN)],
    ["two points", "100124", "123519.5.5", new Date(NaN)]
];

// tag, time, previous, expected; on the 15th of January 2024
const timesOfDay = [
    ["today", "123519.25", null, new Date(2024, 0, 15, 12, 35, 19, 250)],
    ["later today", "235959.999", null, new Date(2024, 0, 15, 23, 59, 59, 999)],
    ["hour 24 is tomorrow", "240000", null, new Date(2024, 0, 16)],
    ["the previous point's day", "235959", new Date(2020, 1, 28, 23, 59, 59), new Date(2020, 1, 28, 23, 59, 59)],
    ["the day after the previous point's", "000001", new Date(2020, 1, 28, 23, 59, 59), new Date(2020, 1, 29, 0, 0, 1)],
    ["the new year", "000000", new Date(2020, 11, 31, 23, 59, 59, 999), new Date(2021, 0, 1)],
    ["hour 24 is taken back to the previous point's day", "240000", new Date(2020, 1, 28, 0, 0, 0), new Date(2020, 1, 28)],
    ["an invalid previous point", "123519", new Date(NaN), new Date(NaN)],
    ["an invalid time", "12xx19", null, new Date(NaN)],
    ["an invalid time is midnight after a previous point", "12xx19", new Date(2020, 1, 28), new Date(2020, 1, 28)],
    ["that is of the next day", "12xx19", new Date(2020, 1, 28, 1), new Date(2020, 1, 29)]
];
