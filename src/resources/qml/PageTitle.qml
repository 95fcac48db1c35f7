// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls

Label {
    id: root

    font.bold: true
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
