// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// Gives its window the application's palette. The IDE's themes set that one, but the controls' style follows the desktop
// alone and would write in black on a dark theme.
Item {
    id: root

    // What the style derives grooves and frames from: a dark theme's own colour would leave them nearly invisible.
    readonly property color windowColor: darkUserInterface ? activePalette.mid : activePalette.window // qmllint disable unqualified

    // As a whole: each write to a window's palette goes through all its items.
    function apply() {
        if (Window.window)
            Window.window.palette = applicationPalette;
    }

    Window.onWindowChanged: apply()

    Palette {
        id: applicationPalette

        active {
            accent: activePalette.accent
            alternateBase: activePalette.alternateBase
            base: activePalette.base
            button: activePalette.button
            buttonText: activePalette.buttonText
            dark: activePalette.dark
            highlight: activePalette.highlight
            highlightedText: activePalette.highlightedText
            light: activePalette.light
            mid: activePalette.mid
            midlight: activePalette.midlight
            placeholderText: activePalette.placeholderText
            shadow: activePalette.shadow
            text: activePalette.text
            window: root.windowColor
            windowText: activePalette.windowText
        }
        inactive {
            accent: activePalette.accent
            alternateBase: activePalette.alternateBase
            base: activePalette.base
            button: activePalette.button
            buttonText: activePalette.buttonText
            dark: activePalette.dark
            highlight: activePalette.highlight
            highlightedText: activePalette.highlightedText
            light: activePalette.light
            mid: activePalette.mid
            midlight: activePalette.midlight
            placeholderText: activePalette.placeholderText
            shadow: activePalette.shadow
            text: activePalette.text
            window: root.windowColor
            windowText: activePalette.windowText
        }
        disabled {
            accent: disabledPalette.accent
            alternateBase: disabledPalette.alternateBase
            base: disabledPalette.base
            button: disabledPalette.button
            buttonText: disabledPalette.buttonText
            dark: disabledPalette.dark
            highlight: Qt.alpha(activePalette.highlight, 0.5)
            highlightedText: disabledPalette.highlightedText
            light: disabledPalette.light
            mid: disabledPalette.mid
            midlight: disabledPalette.midlight
            placeholderText: disabledPalette.placeholderText
            shadow: disabledPalette.shadow
            text: disabledPalette.text
            window: disabledPalette.window
            windowText: disabledPalette.windowText
        }
    }

    SystemPalette {
        id: activePalette

        onPaletteChanged: Qt.callLater(root.apply)
    }

    SystemPalette {
        id: disabledPalette

        colorGroup: SystemPalette.Disabled
    }
}
