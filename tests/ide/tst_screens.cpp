// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/ide.h"
#include "ide/testregistry.h"

#include <QGuiApplication>
#include <QQuickView>
#include <QScreen>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// The view on screens of several sizes, see data/screens.json.
class tst_Screens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void viewFitsAnyScreen();
};

namespace {

const RegisterTest<tst_Screens> registration;

} // namespace

void tst_Screens::viewFitsAnyScreen()
{
    QList<QScreen *> screens = QGuiApplication::screens();
    QCOMPARE(screens.size(), 2);
    QCOMPARE(view()->minimumSize(), QSize(1000, 400).boundedTo(view()->screen()->availableSize()));
    std::ranges::sort(screens, {}, [](const QScreen *screen) { return screen->availableSize().width(); });
    QCOMPARE(screens.at(0)->availableSize(), QSize(800, 360));
    for (int i = 0; i < 2; ++i) {
        view()->setScreen(screens.at(0));
        QCOMPARE(view()->minimumSize(), QSize(800, 360));
        view()->setScreen(screens.at(1));
        QCOMPARE(view()->minimumSize(), QSize(1000, 400));
    }
    QCOMPARE(view()->size(), QSize(1100, 600)); // the document's, until whoever manages the windows changes it
}

#include "tst_screens.moc"
