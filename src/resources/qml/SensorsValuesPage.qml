// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick

ManagementPage {
    id: root

    property bool modelSensorChanged: false
    Accessible.name: qsTr("Sensors Values")

    PageTitle {
        anchors {
            left: parent.left
            top: parent.top
            margins: 15
        }
        text: qsTr("Sensors Values")
    }
}
