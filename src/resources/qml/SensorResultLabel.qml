// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0

// The three values that a sensor reads.
Label {
    id: root

    required property SensorsEmulationManager manager
    required property string sensorName
    required property string title
    required property list<double> values
    required property var locale
    required property int decimals
    // Unlike "visible", also while the page is hidden.
    readonly property bool available: manager.sensorsAvailability[sensorName] ?? false

    function shown(value: double): string {
        const isZero = Number(value.toFixed(decimals)) === 0;
        return (isZero ? 0 : value).toLocaleString(locale, "f", decimals); // no minus for zero
    }

    visible: available
    enabled: manager.sensorsEnabledStates[sensorName] ?? false
    text: title + ": " + values.map(value => shown(value)).join(" ")
}
