// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchview.h"

#include "sensors/sensorsemulationmanager.h"
#include "utils/quickitems.h"

#include <QElapsedTimer>
#include <QQuickItem>
#include <QTest>
#include <QUrl>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using TestUtils::descendant;

BenchView::BenchView()
{
    m_host.setTheme(u"light-2024"_s);
    m_host.setUp(m_window.rootContext());
    const QStringList sensors = m_host.sensors()->sensorsEnabledStates().keys();
    for (const QString &sensor : sensors)
        m_host.sensors()->setSensorEnabled(sensor, true);
    m_window.setResizeMode(QQuickView::SizeRootObjectToView);
    m_window.setSource(QUrl(u"qrc:/emulationmanagement/qml/EmulationManagementView.qml"_s));
    QElapsedTimer timer;
    timer.start();
    m_window.show();
    m_firstShow = double(timer.nsecsElapsed()) / 1e6;
    m_window.requestActivate();
    if (!m_window.rootObject() || !QTest::qWaitForWindowActive(&m_window, patience))
        fail("no view");
    Q_EMIT m_host.sensors()->sensorsInitialized(); // the values are those of a connection: nobody has changed them
    m_host.takeFrames();
}

QQuickItem *BenchView::item(const QString &name, const QQuickItem *parent)
{
    QQuickItem *found = descendant(name, parent);
    if (!found)
        fail(qPrintable(name + u" is missing"_s));
    return found;
}

void BenchView::click(const QString &name)
{
    const QQuickItem *button = item(name);
    QTest::mouseClick(&m_window, Qt::LeftButton, {}, button->mapToScene(button->boundingRect().center()).toPoint());
}

void BenchView::fail(const char *text)
{
    std::fprintf(stderr, "benchmark: %s\n", text);
    std::exit(EXIT_FAILURE);
}
