// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

.pragma library

const wordJoiner = "\u2060"; // without a width, and no part of any tag

// For labels that are not ours to tell that a text of the emulator, a file or a camera is no markup: what would begin a
// tag, or make an escaped one, is broken up.
function asWritten(text) {
    return text.replace(/(<|&(?=lt;))(?!\u2060)/g, "$1" + wordJoiner);
}
