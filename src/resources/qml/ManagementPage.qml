// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// What the main view asks of a page: it shows a page by making it active, and asks it before leaving it.
Item {
    id: root

    property bool active: false

    // Calls back when the page may be left, at once or after asking the user; not at all to keep the page.
    function exitPage(callback: var) {
        callback();
    }

    visible: active
    Accessible.role: Accessible.Pane
}
