// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

.pragma library

// The rules of the plugin's own NmeaParsing once more, as short as a script can say them; slow, and at the mercy of its
// regular expressions. Where a date is wanted, the current time may be given.

const latLongRoundingSize = 7;
const altRoundingSize = 2;

const latitudeDegreesSize = 2;
const longitudeDegreesSize = 3;

const millisInSecond = 1000;
const millisInMinute = 60 * millisInSecond;
const millisInHour = 60 * millisInMinute;

// What is read of each sentence: the pattern that its line has to match, and the numbers of its fields.
const sentences = new Map([
    ["$GPRMC", {
        pattern: /^\$GPRMC,\d{6}(\.\d{2,3})?,.*,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,\d{6},.*,.*$/,
        latitude: 3,
        longitude: 5,
        time: 1,
        date: 9
    }],
    ["$GPGGA", {
        pattern: /^\$GPGGA,\d{6}(\.\d{2,3})?,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*,.*,.*,\d+\.\d+,.*,.*,.*,.*,.*$/,
        latitude: 2,
        longitude: 4,
        altitude: 9,
        time: 1
    }],
    ["$GPGLL", {
        pattern: /^\$GPGLL,\d+\.\d+,(N|S),\d+\.\d+,(E|W),(\d{6}(\.\d{2,3})?,)?.*$/,
        latitude: 1,
        longitude: 3,
        time: 5
    }],
    ["$GPWPL", {
        pattern: /^\$GPWPL,\d+\.\d+,(N|S),\d+\.\d+,(E|W),.*$/,
        latitude: 1,
        longitude: 3
    }]
]);

function nmeaError(message) {
    const error = new SyntaxError(message);
    error.incorrectLine = 0;
    return error;
}

function loadNmeaLog(text, now) {
    const error = nmeaError(qsTr("Incorrect NMEA file"));
    if (text === "") {
        error.message = qsTr("NMEA file is empty");
        throw error;
    }

    // A text of line breaks only has no lines to walk: the engine's own error is what the user sees then.
    const lines = text.match(/[^\r\n]+/g);
    const points = [];
    let format = null;
    let startTime = null;
    let previousTime = null;
    for (let i = 0; i < lines.length; ++i) {
        const line = lines[i];
        const fields = line.split(",");
        error.incorrectLine = i + 1;
        const sentence = sentences.get(fields[0]);
        if (!sentence)
            continue;
        if (!sentence.pattern.test(line))
            throw error;
        // The first point decides on the sentence that the track is made of.
        if (format !== null && fields[0] !== format)
            continue;
        format = fields[0];

        const altitude = sentence.altitude === undefined ? undefined : roundValue(Number(fields[sentence.altitude]), altRoundingSize);
        const point = createTrackPoint(format, fields[sentence.latitude], fields[sentence.latitude + 1], fields[sentence.longitude], fields[sentence.longitude + 1], altitude);
        const time = pointTime(sentence, fields, previousTime, now);
        previousTime = time;
        if (points.length === 0)
            startTime = time;
        setUpTrackPointTimeAndInterval(points, point, startTime, time);
        points.push(point);
    }

    if (points.length === 0) {
        error.message = qsTr("NMEA file has incorrect points format.\nSupported formats: GPRMC, GPGGA, GPGLL, GPWPL.");
        throw error;
    }
    for (const point of points) {
        if (point.altitude === undefined)
            point.altitude = 0;
    }
    return points;
}

// Null for sentences without a time, and where the time's field is anything else.
function pointTime(sentence, fields, previousTime, now) {
    if (sentence.time === undefined || !/^\d{6}(\.\d+)?$/.test(fields[sentence.time] ?? ""))
        return null;
    const date = sentence.date === undefined ? null : fields[sentence.date];
    return parseDateFromNmea(date, fields[sentence.time], previousTime, now);
}

function trackHasPointsWithoutDateTime(points) {
    return points.some((point, index) => index > 0 && point.time === 0);
}

function roundValue(value, precision) {
    const factor = Math.pow(10, precision);
    return Math.round(value * factor) / factor;
}

// Rounded before the sign is applied: south and west round like north and east.
function parseCoordinateFromNmea(coordinate, hemisphere, degreesSize) {
    const degrees = Number(coordinate.substring(0, degreesSize));
    const minutes = Number(coordinate.substring(degreesSize));
    const value = roundValue(degrees + minutes / 60, latLongRoundingSize);
    return hemisphere === "W" || hemisphere === "S" ? value * -1 : value;
}

function parseLatitudeFromNmea(coordinate, hemisphere) {
    return parseCoordinateFromNmea(coordinate, hemisphere, latitudeDegreesSize);
}

function parseLongitudeFromNmea(coordinate, hemisphere) {
    return parseCoordinateFromNmea(coordinate, hemisphere, longitudeDegreesSize);
}

function parseDateFromNmea(date, time, previousDate, now) {
    const currentDate = () => now === undefined ? new Date() : new Date(now.getTime());
    const hours = Number(time.substring(0, 2));
    const minutes = Number(time.substring(2, 4));
    const seconds = Number(time.substring(4, 6));
    const millis = Math.round(Number("0." + time.substring(7)) * millisInSecond);

    if (date) {
        const day = Number(date.substring(0, 2));
        const month = Number(date.substring(2, 4));
        // The year comes from the day's digits, and the month counts from 0: the same for all points of a track, so the
        // times between them are right.
        const yearDigits = Number(date.substring(0, 2));
        const year = 2000 + yearDigits > currentDate().getFullYear() ? 1900 + yearDigits : 2000 + yearDigits;
        return new Date(year, month, day, hours, minutes, seconds, millis);
    }

    const result = currentDate();
    result.setHours(hours, minutes, seconds, millis);
    if (previousDate) {
        result.setFullYear(previousDate.getFullYear(), previousDate.getMonth(), previousDate.getDate());
        if (result < previousDate) // the track has passed midnight
            result.setDate(result.getDate() + 1);
    }
    return result;
}

function millisBetween(first, second) {
    return second.getTime() - first.getTime();
}

function millisToPointTime(duration) {
    const twoDigits = number => String(number).padStart(2, "0");
    const tenths = Math.trunc((duration % millisInSecond) / 100);
    const seconds = Math.trunc(duration / millisInSecond) % 60;
    const minutes = Math.trunc(duration / millisInMinute) % 60;
    const hours = Math.trunc(duration / millisInHour) % 24;
    return twoDigits(hours) + ":" + twoDigits(minutes) + ":" + twoDigits(seconds) + "." + tenths;
}

function setUpTrackPointTimeAndInterval(points, point, startTime, time) {
    point.index = points.length;
    if (points.length === 0) {
        point.time = 0;
        point.interval = 0;
    } else {
        point.time = startTime && time ? millisBetween(startTime, time) : 0;
        point.interval = point.time - points[points.length - 1].time;
    }
    point.timeString = millisToPointTime(point.time);
}

function createTrackPoint(format, latitude, latitudeHemisphere, longitude, longitudeHemisphere, altitude) {
    return {
        format: format,
        latitude: parseLatitudeFromNmea(latitude, latitudeHemisphere),
        longitude: parseLongitudeFromNmea(longitude, longitudeHemisphere),
        altitude: altitude
    };
}
