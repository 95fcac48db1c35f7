// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// Makes what it shows when the window is first shown: an IDE whose user does not open it starts without paying for it.
Loader {
    id: root

    active: Window.visibility !== Window.Hidden
    onLoaded: active = true // from now on also while the window is hidden
}
