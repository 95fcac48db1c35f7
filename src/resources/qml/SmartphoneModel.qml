// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick

// Where the phone's picture would be: nothing draws it yet, so the item is empty and has no size.
Item {
    // A three.js object whose rotation follows the mouse, once there is a picture.
    property var mesh: null
    // How far the picture's camera is rolled, in degrees.
    property real cameraAngle: 0
}
