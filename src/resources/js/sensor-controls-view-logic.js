// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Shared by the main view and the sensor pages. The functions run in the scope of the document that imports the script:
// "sensorsControlsIds", "lastChangedSensorName" and "lastChangedSensorEnabled" are that document's own.

// Nobody reads more of an error, and to lay out some megabytes takes minutes.
const longestErrorText = 2000;

function replyFromEmulatorReceivedHandler(reply, errorDialog) {
    if (reply === "" || reply === "OK")
        return;
    errorDialog.text = reply.length > longestErrorText ? reply.substring(0, longestErrorText) + "\u2026" : reply;
    errorDialog.open();
    revertSensorControlsState();
}

// Sets the state that the user asked for once more, so that the controls refresh from it.
function revertSensorControlsState() {
    sensorsEmulationManager.setSensorEnabled(lastChangedSensorName, lastChangedSensorEnabled);
    lastChangedSensorName = "";
}

function sensorEnabledCheckboxClickHandler(checked, sensorName) {
    lastChangedSensorName = sensorName;
    lastChangedSensorEnabled = checked;
    if (checked)
        sensorsEmulationManager.enableSensor(sensorName);
    else
        sensorsEmulationManager.disableSensor(sensorName);
    sensorsEmulationManager.setSensorEnabled(sensorName, checked);
}

function dependentSensorsEnabledHandler(checked, sensorName) {
    const relations = sensorControlsRelations[sensorName];
    const names = checked ? relations.checked : relations.unchecked;
    for (const control of sensorsControlsIds) {
        if (names.includes(control.sensorName))
            control.checked = checked;
    }
}

// Each look at one of the manager's maps copies it: the functions below take it once.

function updateSensorsControlsVisibility() {
    const availability = sensorsEmulationManager.sensorsAvailability;
    for (const control of sensorsControlsIds)
        control.visible = availability[control.sensorName];
}

function updateSensorsControlsEnabledState() {
    const enabledStates = sensorsEmulationManager.sensorsEnabledStates;
    for (const control of sensorsControlsIds)
        control.controlsEnabled = enabledStates[control.sensorName];
}

function updateSensorsControlsCheckedState() {
    const enabledStates = sensorsEmulationManager.sensorsEnabledStates;
    for (const control of sensorsControlsIds)
        control.checked = enabledStates[control.sensorName];
}

function sensorsStatesHasChanged() {
    const enabledStates = sensorsEmulationManager.sensorsEnabledStates;
    return sensorsControlsIds.some(control => control.checked !== enabledStates[control.sensorName]);
}
