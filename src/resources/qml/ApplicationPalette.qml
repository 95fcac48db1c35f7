// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// Gives its window the application's palette. The IDE's themes set that one, but the controls' style follows the desktop
// alone and would write in black on a dark theme.
Item {
    id: root

    readonly property list<string> roles: ["accent", "alternateBase", "base", "button", "buttonText", "dark", "highlight", "highlightedText", "light", "mid", "midlight", "placeholderText", "shadow", "text", "window", "windowText"]

    function apply() {
        if (!Window.window)
            return;
        for (const role of roles) {
            Window.window.palette[role] = activePalette[role];
            Window.window.palette.disabled[role] = disabledPalette[role];
        }
    }

    Window.onWindowChanged: apply()

    SystemPalette {
        id: activePalette

        onPaletteChanged: root.apply()
    }

    SystemPalette {
        id: disabledPalette

        colorGroup: SystemPalette.Disabled
    }
}
