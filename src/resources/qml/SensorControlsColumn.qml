// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// The rows of one sensor's controls.
Column {
    id: root

    // Takes the focus from the text fields.
    function clearFocus() {
        for (const child of children) {
            const row = child as SliderWithTextField;
            if (row)
                row.textFieldFocus = false;
        }
    }

    spacing: 5
}
