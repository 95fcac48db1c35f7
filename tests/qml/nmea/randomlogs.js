// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

.pragma library

// Random logs, the same for the same seed.

// Returns a function that gives whole numbers from 0 to end - 1.
function generator(seed) {
    let state = seed >>> 0;
    return end => {
        state = (state + 0x6d2b79f5) >>> 0;
        let bits = Math.imul(state ^ (state >>> 15), state | 1);
        bits ^= bits + Math.imul(bits ^ (bits >>> 7), bits | 61);
        return Math.floor(((bits ^ (bits >>> 14)) >>> 0) / 0x100000000 * end);
    };
}

function oneOf(random, list) {
    return list[random(list.length)];
}

function padded(number, digits) {
    return String(number).padStart(digits, "0");
}

// Degrees with minutes that give this number of ten-millionths of a degree.
function coordinate(tenMillionths, degreesSize) {
    const degrees = Math.floor(tenMillionths / 1e7);
    const minutes = (tenMillionths % 1e7) * 60; // in ten-millionths too
    return `${padded(degrees, degreesSize)}${padded(Math.floor(minutes / 1e7), 2)}.${padded(minutes % 1e7, 7)}`;
}

// The time of day in milliseconds, as short as it can be said.
function timeOfDay(millis) {
    const seconds = Math.floor(millis / 1000);
    const text = [Math.floor(seconds / 3600), Math.floor(seconds / 60) % 60, seconds % 60].map(part => padded(part, 2)).join("");
    const fraction = padded(millis % 1000, 3);
    if (fraction === "000")
        return text;
    return text + "." + (fraction.endsWith("0") ? fraction.slice(0, 2) : fraction);
}

// A line of a sentence, with the fields that nobody reads.
function line(random, format, time, latitude, longitude, altitude) {
    const place = [coordinate(Math.abs(latitude), 2), latitude < 0 ? "S" : "N", coordinate(Math.abs(longitude), 3), longitude < 0 ? "W" : "E"].join(",");
    const clock = timeOfDay(time);
    const number = () => `${random(1000)}.${random(10)}`;
    switch (format) {
    case "$GPRMC":
        return `${format},${clock},${oneOf(random, ["A", "V", ""])},${place},${number()},${number()},150124,${number()},W*6A`;
    case "$GPGGA":
        return `${format},${clock},${place},1,0${random(10)},${number()},${Math.floor(altitude / 100)}.${padded(altitude % 100, 2)},M,${number()},M,,*47`;
    case "$GPGLL":
        return `${format},${place},${clock},A*1D`;
    default:
        return `${format},${place},WP${random(1000)}*5C`;
    }
}

// A track as it should be read, and the text of its log.
function track(random) {
    const format = oneOf(random, ["$GPRMC", "$GPGGA", "$GPGLL", "$GPWPL"]);
    const daysPass = format === "$GPGGA" || format === "$GPGLL";
    const hasTime = format !== "$GPWPL";
    const millisInDay = 86400000;
    const start = random(millisInDay / 10) * 10;
    const lines = [];
    const points = [];
    let time = 0;
    for (let i = 0, count = 1 + random(40); i < count; ++i) {
        const step = i === 0 ? 0 : random(daysPass && random(10) === 0 ? millisInDay : 5000);
        if (daysPass || start + time + step < millisInDay)
            time += step;
        const latitude = random(1800000001) - 900000000;
        const longitude = random(3600000001) - 1800000000;
        const altitude = random(1000000);
        lines.push(line(random, format, (start + time) % millisInDay, latitude, longitude, altitude));
        if (random(5) === 0)
            lines.push(oneOf(random, ["", "$GPGSA,A,3*33", "# a remark", " ", line(random, oneOf(random, ["$GPRMC", "$GPGGA", "$GPGLL", "$GPWPL"].filter(other => other !== format)), 0, 0, 0, 0)]));
        const previous = points.length > 0 ? points[points.length - 1].time : 0;
        points.push({
            format: format,
            latitude: latitude / 1e7,
            longitude: longitude / 1e7,
            altitude: format === "$GPGGA" ? altitude / 100 : 0,
            index: i,
            time: hasTime ? time : 0,
            interval: hasTime ? time - previous : 0
        });
    }
    return {
        text: lines.join(oneOf(random, ["\n", "\r\n", "\r", "\n\n"])),
        points: points
    };
}

function correctLine(random) {
    const format = oneOf(random, ["$GPRMC", "$GPGGA", "$GPGLL", "$GPWPL"]);
    return line(random, format, random(86400000), random(1800000001) - 900000000, random(3600000001) - 1800000000, random(1000000));
}

// What a field may hold that is not what it should.
function garbage(random) {
    const texts = [
        "", " ", "0", "-0", "5", "48", "123519", "123519.5", "123519.50", "123519.555", "123519.5555", "310524", "1.5", "12.5", ".5", "5.", "+1.5", "-1.5", "1e3", "1e-3",
        "1e999", "0x1F", "0X1f", "0b11", "0B2", "0o17", "0x", "0x-1", "0x0x1", "0xffffffffffffffffff", "Infinity", "-Infinity", "+Infinity", "infinity", "nan", "NaN", "1.2.3",
        "1,2", "1_0", "00012.50", "99999999999999999999.5", "0.1234567890123456789", "4.9406564584124654e-324", "123519\u00a0", "\ufeff7", "\u20035", "\u0663", "\u2028", "\u2029",
        "\ud800", "\u0000", "1\u0000", "N", "S", "E", "W", "n", "NS", "M", "A", "*5C", "1.0*5C", "4807.038", "01131.000", "$GPGGA", "\t1.5\t"
    ];
    return oneOf(random, texts);
}

// A line after a few small accidents.
function mutatedLine(random) {
    let text = correctLine(random);
    for (let i = 0, count = 1 + random(4); i < count; ++i) {
        const position = random(text.length + 1);
        const fields = text.split(",");
        const field = random(fields.length);
        switch (random(8)) {
        case 0:
            text = text.slice(0, position) + text.slice(position + 1);
            break;
        case 1:
            text = text.slice(0, position) + oneOf(random, ",.0123456789NSEWA$*- \u2028\u0661".split("")) + text.slice(position);
            break;
        case 2:
            text = text.slice(0, position);
            break;
        case 3:
            fields[field] = garbage(random);
            text = fields.join(",");
            break;
        case 4:
            fields.splice(field, 1);
            text = fields.join(",");
            break;
        case 5:
            fields.splice(field, 0, garbage(random));
            text = fields.join(",");
            break;
        case 6:
            fields.splice(field, 0, fields[random(fields.length)]);
            text = fields.join(",");
            break;
        case 7:
            text = text.slice(0, position) + oneOf(random, [",,", ",4807.038,N,01131.000,E,", ",310524,", ",1.5,"]) + text.slice(position);
            break;
        }
    }
    return text.replace(/[\r\n]/g, "");
}
