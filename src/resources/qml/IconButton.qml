// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls

// An icon whose meaning is told when asked for.
Button {
    id: root

    required property string name

    implicitWidth: 40
    icon.color: palette.buttonText
    Accessible.name: name
    ToolTip.text: name
    ToolTip.visible: hovered
    ToolTip.delay: 700
}
