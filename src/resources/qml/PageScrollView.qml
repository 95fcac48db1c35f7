// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Templates as T

// A page's content, with scroll bars where the window is too small. Moving the focus by keys brings it into view.
ScrollView {
    id: root

    readonly property Flickable flickable: contentItem as Flickable
    readonly property Item focusItem: Window.activeFocusItem

    // Where to scroll so that the span from start to end is visible, starting from position.
    function scrolled(position: real, start: real, end: real, size: real): real {
        return Math.max(Math.min(position, start), Math.min(end - size, start));
    }

    function isInside(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === flickable.contentItem)
                return true;
        }
        return false;
    }

    // What the mouse presses must not move from under it.
    function isFocusedByKeys(item: Item): bool {
        const field = item as T.TextField;
        const control = item as T.Control;
        const reason = field ? field.focusReason : control ? control.focusReason : Qt.OtherFocusReason;
        return [Qt.TabFocusReason, Qt.BacktabFocusReason, Qt.ShortcutFocusReason].includes(reason);
    }

    function showFocusItem() {
        const margin = 15;
        const item = focusItem;
        if (!visible || !isFocusedByKeys(item) || !isInside(item))
            return;
        const area = item.mapToItem(flickable.contentItem, 0, 0, item.width, item.height);
        const x = scrolled(flickable.contentX, area.left - margin, area.right + margin, flickable.width);
        const y = scrolled(flickable.contentY, area.top - margin, area.bottom + margin, flickable.height);
        flickable.contentX = Math.max(0, Math.min(x, flickable.contentWidth - flickable.width));
        flickable.contentY = Math.max(0, Math.min(y, flickable.contentHeight - flickable.height));
    }

    anchors.fill: parent
    onFocusItemChanged: showFocusItem()
}
