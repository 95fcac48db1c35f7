// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// A number as the channel writes it: six digits, and an exponent of at least two where it is small or large.
function real(value) {
    if (value === 0)
        return "0";
    const [digits, exponent] = value.toExponential(5).split("e").map(Number);
    if (exponent >= -4 && exponent < 6)
        return String(Number(value.toPrecision(6)));
    return "%1e%2%3".arg(digits).arg(exponent < 0 ? "-" : "+").arg(String(Math.abs(exponent)).padStart(2, "0"));
}

// As a script's number becomes a parameter that is a whole one.
function whole(value) {
    return String(Math.trunc(value) + 0);
}
