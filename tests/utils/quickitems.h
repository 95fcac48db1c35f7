// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QQuickItem>
#include <QString>

namespace TestUtils {

/// By what is drawn in what: a repeater's items are no children as objects. Null when there is none of the name.
inline QQuickItem *descendant(const QString &name, const QQuickItem *parent)
{
    const QList<QQuickItem *> children = parent->childItems();
    for (QQuickItem *child : children) {
        if (child->objectName() == name)
            return child;
        if (QQuickItem *found = descendant(name, child))
            return found;
    }
    return nullptr;
}

} // namespace TestUtils
