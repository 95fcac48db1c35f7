// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "view/viewhost.h"

#include <QQuickView>
#include <QString>

class QQuickItem;

/// The whole view in a window, connected and with all sensors enabled. What is missing ends the program.
class BenchView
{
public:
    static constexpr int patience = 60'000; // ms

    BenchView();

    /// Milliseconds in which the window was shown, which makes the pages' controls.
    double firstShow() const { return m_firstShow; }

    TestView::ViewHost &host() { return m_host; }
    QQuickView &window() { return m_window; }

    /// By what is drawn in what: a repeater's items are no children as objects.
    QQuickItem *item(const QString &name) { return item(name, m_window.rootObject()); }
    static QQuickItem *item(const QString &name, const QQuickItem *parent);

    /// As the mouse does it.
    void click(const QString &name);

    [[noreturn]] static void fail(const char *text);

private:
    TestView::ViewHost m_host;
    QQuickView m_window;
    double m_firstShow = 0;
};
