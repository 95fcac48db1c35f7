// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import org.quova 1.0
import "../js/sensor-controls-view-logic.js" as Logic

Rectangle {
    id: root

    readonly property list<ManagementPage> pagesIds: [sensorsManagementPage, sensorsValuesPage, smartphoneModelPage, gpsManagementPage, cameraManagementPage]
    // The script and the sensors management page, which declares no such pair of its own, read and write these.
    property string lastChangedSensorName
    property bool lastChangedSensorEnabled

    function switchVisiblePage(page: ManagementPage) {
        const current = pagesIds.filter(candidate => candidate.active).pop();
        current.exitPage(() => {
            pagesIds.filter(other => other !== current).forEach(other => other.active = false);
            const change = () => changeActivePage(current, page);
            const losesValues = current === sensorsValuesPage && page === smartphoneModelPage && sensorsValuesPage.modelSensorChanged;
            if (losesValues && !settingsManager.readDoNotShowAgainResetSensorsDialog()) {
                warningDialog.acceptedCallback = change;
                warningDialog.show();
            } else {
                change();
            }
        });
    }

    function changeActivePage(current: ManagementPage, target: ManagementPage) {
        current.active = false;
        target.active = true;
    }

    width: 1100
    height: 600
    color: themeBackgroundColorNormal // qmllint disable unqualified

    ApplicationPalette {}

    ErrorMessageDialog {
        id: errorDialog

        objectName: "errorDialog"
    }

    MessageDialog {
        id: messageDialog

        objectName: "messageDialog"
        buttons: MessageDialog.Ok
    }

    SettingsManager {
        id: settingsManager

        objectName: "settingsManager"
    }

    WarningDialog {
        id: warningDialog

        property var acceptedCallback: null

        objectName: "warningDialog"
        text: qsTr("The sensors values will be reset using the smartphone 3D-model position. Do you want to continue?")
        withDoNotShowAgainCheckBox: true
        onAccepted: doNotShowAgain => {
            const callback = acceptedCallback;
            acceptedCallback = null;
            if (callback)
                callback();
            settingsManager.saveDoNotShowAgainResetSensorsDialog(doNotShowAgain);
        }
    }

    Connections {
        target: sensorsEmulationManager // qmllint disable unqualified

        function onReplyFromEmulatorReceived(reply: string) {
            Logic.replyFromEmulatorReceivedHandler(reply, errorDialog);
        }
    }

    ColumnLayout {
        id: buttonsColumn

        objectName: "buttonsColumn"
        width: 180
        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
        }
        spacing: 0

        PageButton {
            id: sensorsManagementButton

            objectName: "sensorsManagementButton"
            text: qsTr("Sensors Management")
            active: sensorsManagementPage.visible
            onClicked: root.switchVisiblePage(sensorsManagementPage)
        }

        PageButton {
            id: sensorsValuesButton

            objectName: "sensorsValuesButton"
            text: qsTr("Sensors Values")
            active: sensorsValuesPage.visible
            onClicked: root.switchVisiblePage(sensorsValuesPage)
        }

        PageButton {
            id: smartphoneModelButton

            objectName: "smartphoneModelButton"
            text: qsTr("Orientation Management")
            active: smartphoneModelPage.visible
            onClicked: root.switchVisiblePage(smartphoneModelPage)
        }

        PageButton {
            id: gpsManagementButton

            objectName: "gpsManagementButton"
            text: qsTr("GPS Management")
            active: gpsManagementPage.visible
            onClicked: root.switchVisiblePage(gpsManagementPage)
        }

        PageButton {
            id: cameraManagementButton

            objectName: "cameraManagementButton"
            text: qsTr("Camera Management")
            active: cameraManagementPage.visible
            onClicked: root.switchVisiblePage(cameraManagementPage)
        }

        Item {
            Layout.fillHeight: true
        }
    }

    Rectangle {
        id: buttonsColumnSeparator

        objectName: "buttonsColumnSeparator"
        width: 1
        anchors {
            left: buttonsColumn.right
            top: parent.top
            bottom: parent.bottom
        }
        color: themeSeparatorColor // qmllint disable unqualified
    }

    SensorsManagementPage {
        id: sensorsManagementPage

        objectName: "sensorsManagementPage"
        anchors.fill: pageArea
    }

    SensorsValuesPage {
        id: sensorsValuesPage

        objectName: "sensorsValuesPage"
        active: true
        anchors.fill: pageArea
    }

    SmartphoneModelPage {
        id: smartphoneModelPage

        objectName: "smartphoneModelPage"
        anchors.fill: pageArea
    }

    GpsManagementPage {
        id: gpsManagementPage

        objectName: "gpsManagementPage"
        errorBox: errorDialog
        messageBox: messageDialog
        anchors.fill: pageArea
    }

    CameraManagementPage {
        id: cameraManagementPage

        objectName: "cameraManagementPage"
        errorBox: errorDialog
        anchors.fill: pageArea
    }

    Item {
        id: pageArea

        anchors {
            left: buttonsColumnSeparator.right
            right: parent.right
            top: parent.top
            bottom: parent.bottom
        }
    }
}
