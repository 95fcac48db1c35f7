// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Rotations as three by three matrices, by the textbook: what the page's formulas are compared with.

function turnAbout(axis, degrees) {
    const angle = degrees * Math.PI / 180;
    const c = Math.cos(angle);
    const s = Math.sin(angle);
    switch (axis) {
    case "x":
        return [[1, 0, 0], [0, c, -s], [0, s, c]];
    case "y":
        return [[c, 0, s], [0, 1, 0], [-s, 0, c]];
    case "z":
        return [[c, -s, 0], [s, c, 0], [0, 0, 1]];
    }
}

function product(a, b) {
    return a.map(row => [0, 1, 2].map(column => row.reduce((sum, value, i) => sum + value * b[i][column], 0)));
}

function transposed(matrix) {
    return [0, 1, 2].map(column => matrix.map(row => row[column]));
}

function applied(matrix, vector) {
    return matrix.map(row => row.reduce((sum, value, i) => sum + value * vector[i], 0));
}

// From the phone's axes to the room's: about x, then about the phone's own y, then about its own z.
function pose(rotation) {
    const {x, y, z} = rotation;
    return product(product(turnAbout("x", x), turnAbout("y", y)), turnAbout("z", z));
}

// A vector of the room, on the phone's axes.
function onPhone(rotation, vector) {
    return applied(transposed(pose(rotation)), vector);
}

// The phone's angular velocity on its own axes, in degrees per second, by moving time a little to both sides: the turning
// of a rotation R is the skew-symmetric matrix of R^T dR/dt.
function angularVelocity(rotation, turnsPerSecond) {
    const seconds = 1e-5;
    const at = time => pose({
        x: rotation.x + 360 * turnsPerSecond.x * time,
        y: rotation.y + 360 * turnsPerSecond.y * time,
        z: rotation.z + 360 * turnsPerSecond.z * time
    });
    const before = at(-seconds);
    const after = at(seconds);
    const change = after.map((row, i) => row.map((value, j) => (value - before[i][j]) / (2 * seconds)));
    const spin = product(transposed(at(0)), change);
    return [spin[2][1], spin[0][2], spin[1][0]].map(radians => radians * 180 / Math.PI);
}
