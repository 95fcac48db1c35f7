// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtTest
import "randomlogs.js" as RandomLogs

// Two readers of NMEA logs make the same of anything, at any time of the year.
TestCase {
    id: root

    required property var one
    required property var other

    // The changes of the clocks in the zones that this runs in, the ends of February, the turn of the year.
    readonly property var days: [[2024, 0, 1], [2024, 1, 29], [2023, 1, 28], [2024, 2, 10], [2024, 2, 31], [2024, 3, 7], [2024, 3, 14], [2024, 9, 6], [2024, 9, 27], [2024, 10, 3], [2024, 11, 31]]

    function text(value: var): string {
        return Object.is(value, -0) ? "-0" : String(value);
    }

    function result(parsing: var, log: string, now: var): string {
        try {
            return parsing.loadNmeaLog(log, now).map(point => [point.format, point.index, point.latitude, point.longitude, point.altitude, point.time, point.interval, point.timeString].map(text).join(" ")).join("\n");
        } catch (error) {
            return [error.name, error.message, error.incorrectLine].join(" ");
        }
    }

    function anyDay(random: var): var {
        const day = RandomLogs.oneOf(random, days);
        return new Date(day[0], day[1], day[2], random(24), random(60), random(60), random(1000));
    }

    function anyTime(random: var): string {
        const digits = () => String(random(100)).padStart(2, "0");
        switch (random(4)) {
        case 0:
            return digits() + digits() + digits();
        case 1:
            return digits() + digits() + digits() + "." + digits() + RandomLogs.oneOf(random, ["", "5", "9999", "x", "*31"]);
        case 2:
            return RandomLogs.timeOfDay(random(4 * 3600) * 1000); // where the clocks change
        default:
            return RandomLogs.garbage(random);
        }
    }

    function test_randomLogs() {
        let read = 0;
        for (let seed = 1; seed <= 1500; ++seed) {
            const random = RandomLogs.generator(seed);
            const lines = [];
            for (let count = 1 + random(6); count > 0; --count)
                lines.push(random(3) === 0 ? RandomLogs.mutatedLine(random) : RandomLogs.correctLine(random));
            const log = lines.join("\n");
            const now = anyDay(random);
            const expected = result(one, log, now);
            compare(result(other, log, now), expected, "seed " + seed + ": " + log);
            if (expected.startsWith("$"))
                ++read;
        }
        verify(read > 300, read + " logs were read");
    }

    // All lines have correct positions, so that the times are what matters.
    function test_timesAtAnyTimeOfTheYear() {
        for (let seed = 1; seed <= 600; ++seed) {
            const random = RandomLogs.generator(seed);
            const now = anyDay(random);
            const lines = [];
            for (let i = 0; i < 8; ++i)
                lines.push(`$GPGLL,4916.45,N,12311.12,W,${anyTime(random)},A*1D`);
            const log = lines.join("\n");
            compare(result(other, log, now), result(one, log, now), "seed " + seed + " at " + now + ": " + log);
        }
    }

    function test_datesAtAnyTimeOfTheYear() {
        for (let seed = 1; seed <= 600; ++seed) {
            const random = RandomLogs.generator(seed);
            const now = anyDay(random);
            const lines = [];
            for (let i = 0; i < 6; ++i) {
                const dates = [RandomLogs.garbage(random), String(random(1000000)).padStart(6, "0"), "310324", "100224", "271024", "061024", ""];
                lines.push(`$GPRMC,${RandomLogs.timeOfDay(random(6 * 3600) * 1000)},A,4807.038,N,01131.000,E,1,2,${RandomLogs.oneOf(random, dates)},310524,1,2`);
            }
            const log = lines.join("\n");
            compare(result(other, log, now), result(one, log, now), "seed " + seed + " at " + now + ": " + log);
        }
    }

    function test_pointInTime() {
        for (let seed = 1; seed <= 3000; ++seed) {
            const random = RandomLogs.generator(seed);
            const now = anyDay(random);
            const date = RandomLogs.oneOf(random, [null, null, "", "310324", String(random(1000000)).padStart(6, "0"), RandomLogs.garbage(random)]);
            const time = anyTime(random);
            const previous = RandomLogs.oneOf(random, [null, anyDay(random), anyDay(random), new Date(NaN)]);
            const times = [one, other].map(parsing => text(parsing.parseDateFromNmea(date, time, previous, now).getTime()));
            compare(times[1], times[0], `seed ${seed} at ${now}: ${date} ${time} after ${previous}`);
        }
    }

    function test_numbers() {
        for (let seed = 1; seed <= 3000; ++seed) {
            const random = RandomLogs.generator(seed);
            const number = RandomLogs.garbage(random) + RandomLogs.oneOf(random, ["", "", RandomLogs.garbage(random)]);
            const size = random(5);
            const coordinates = [one, other].map(parsing => text(parsing.parseCoordinateFromNmea(number, RandomLogs.oneOf(RandomLogs.generator(seed), ["N", "S", "W", "NS", ""]), size)));
            compare(coordinates[1], coordinates[0], `seed ${seed}: "${number}" with ${size} degrees' digits`);

            const value = RandomLogs.oneOf(random, [random(1000) / 1000, random(1000000) / 1000 - 500, Number(number), random(100) - 50.5, Math.pow(2, 50 + random(5)) + random(2) / 2 + random(100)]);
            const rounded = [one, other].map(parsing => text(parsing.roundValue(value, size)));
            compare(rounded[1], rounded[0], `seed ${seed}: ${value} to ${size} decimals`);
            const durations = [one, other].map(parsing => parsing.millisToPointTime(value * 1000));
            compare(durations[1], durations[0], `seed ${seed}: ${value} s`);
        }
    }

    function test_numbersOfAnyLength_data(): var {
        return [1, 14, 15, 16, 17, 300, 400, 16381, 16382, 16383, 16384, 16385].map(length => ({
                    tag: length + " digits",
                    digits: "1234567890".repeat(length / 10 + 1).slice(0, length)
                }));
    }

    function test_numbersOfAnyLength(data: var) {
        const zeros = "0".repeat(data.digits.length - 1);
        for (const number of [data.digits, zeros + "1", data.digits + ".5", "1." + data.digits, "0." + zeros + "1"]) {
            compare(text(other.parseCoordinateFromNmea(number, "N", 0)), text(one.parseCoordinateFromNmea(number, "N", 0)));
            compare(text(other.parseDateFromNmea("100124", "000000." + number, null).getTime()), text(one.parseDateFromNmea("100124", "000000." + number, null).getTime()));
        }
    }
}
