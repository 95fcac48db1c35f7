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
        return column === 0 ? 70 : width / 6;
    }

    function showCurrentRow() {
        if (currentRow < 0)
            return;
        tableView.positionViewAtRow(currentRow, TableView.Contain);
        // Which is content with a part of a row.
        const cell = tableView.itemAtCell(0, currentRow);
        if (cell)
            tableView.contentY = Math.min(cell.y, Math.max(tableView.contentY, cell.y + cell.height - tableView.height));
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
    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Up:
            moveTo(currentRow - 1);
            break;
        case Qt.Key_Down:
            moveTo(currentRow + 1);
            break;
        case Qt.Key_PageUp:
            moveTo(currentRow - tableView.visibleRows);
            break;
        case Qt.Key_PageDown:
            moveTo(currentRow + tableView.visibleRows);
            break;
        case Qt.Key_Home:
            moveTo(0);
            break;
        case Qt.Key_End:
            moveTo(model.rowCount - 1);
            break;
        default:
            return;
        }
        event.accepted = true;
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
        animate: false // rows come faster than a row glides into sight
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
            Accessible.selectable: true
            Accessible.selected: isCurrent

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
