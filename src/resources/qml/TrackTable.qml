// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import org.quova 1.0

// The points of a track. One of them is the current one: a click or the keys make it so, or whoever owns the table.
FocusScope {
    id: root

    required property TrackTableModel model
    // -1 without points, and before one is chosen.
    property int currentRow: -1

    readonly property int rowHeight: Math.ceil(fontMetrics.height) + 6

    function columnWidth(column: int): real {
        return column === 0 ? 70 : Math.floor(width / 6);
    }

    function showCurrentRow() {
        tableView.positionViewAtRow(currentRow, TableView.Contain);
    }

    // By the keys: the row stays within the table and in sight.
    function moveTo(row: int) {
        if (model.rowCount === 0)
            return;
        currentRow = Math.max(0, Math.min(row, model.rowCount - 1));
        showCurrentRow();
    }

    activeFocusOnTab: model.rowCount > 0
    Accessible.role: Accessible.Table
    Accessible.name: qsTr("Track points")
    Accessible.focusable: true
    Keys.onUpPressed: moveTo(currentRow - 1)
    Keys.onDownPressed: moveTo(currentRow + 1)
    Keys.onPressed: event => {
        const rows = new Map([[Qt.Key_Home, 0], [Qt.Key_End, model.rowCount - 1], [Qt.Key_PageUp, currentRow - tableView.visibleRows], [Qt.Key_PageDown, currentRow + tableView.visibleRows]]);
        event.accepted = rows.has(event.key);
        if (event.accepted)
            moveTo(rows.get(event.key));
    }

    Connections {
        target: root.model

        function onRowCountChanged() {
            root.currentRow = -1;
        }
    }

    FontMetrics {
        id: fontMetrics
    }

    Row {
        id: header

        objectName: "header"
        spacing: tableView.columnSpacing

        Repeater {
            model: root.model.columnTitles

            Label {
                required property int index
                required property string modelData

                width: root.columnWidth(index)
                height: root.rowHeight
                rightPadding: 5
                horizontalAlignment: Text.AlignRight
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                font.bold: true
                text: modelData
                Accessible.role: Accessible.ColumnHeader
            }
        }
    }

    Rectangle {
        anchors.fill: tableView
        color: palette.base
        border.width: root.activeFocus ? 2 : 0
        border.color: palette.highlight
    }

    TableView {
        id: tableView

        readonly property int visibleRows: Math.max(1, Math.floor(height / (root.rowHeight + rowSpacing)) - 1)

        objectName: "tableView"
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        columnSpacing: 1
        rowSpacing: 1
        model: root.model
        columnWidthProvider: column => root.columnWidth(column)
        rowHeightProvider: () => root.rowHeight
        pointerNavigationEnabled: false
        keyNavigationEnabled: false
        ScrollBar.vertical: ScrollBar {}

        delegate: Rectangle {
            id: cell

            required property int row
            required property string display
            readonly property bool isCurrent: row === root.currentRow

            implicitWidth: 70
            implicitHeight: root.rowHeight
            color: isCurrent ? palette.highlight : palette.base
            Accessible.role: Accessible.Cell
            Accessible.name: display

            Text {
                anchors {
                    fill: parent
                    rightMargin: 5
                }
                horizontalAlignment: Text.AlignRight
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                color: cell.isCurrent ? cell.palette.highlightedText : cell.palette.text
                text: cell.display
                Accessible.ignored: true
            }

            TapHandler {
                onTapped: {
                    root.forceActiveFocus(Qt.MouseFocusReason);
                    root.currentRow = cell.row;
                }
            }
        }
    }
}
