// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

ManagementPage {
    id: root

    Accessible.name: qsTr("Orientation Management")

    PageTitle {
        anchors {
            left: parent.left
            top: parent.top
            margins: 15
        }
        text: qsTr("Orientation Management")
    }
}
