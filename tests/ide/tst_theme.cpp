// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ide/ide.h"
#include "ide/testregistry.h"

#include <utils/theme/theme.h>

#include <QColor>
#include <QDir>
#include <QImage>
#include <QQuickView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace IdeTests;

/// What the view takes from the IDE's theme. The screenshots are for people to look at.
class tst_Theme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dark() { check(true); }
    void light() { check(false); }

private:
    void check(bool expectedDark);
};

namespace {
const RegisterTest<tst_Theme> registration;
}

void tst_Theme::check(bool expectedDark)
{
    QCOMPARE(contextProperty(u"darkUserInterface"_s), QVariant(expectedDark));

    const Utils::Theme *theme = Utils::creatorTheme();
    const auto background = contextProperty(u"themeBackgroundColorNormal"_s).value<QColor>();
    QCOMPARE(background, theme->color(Utils::Theme::BackgroundColorNormal));
    QCOMPARE(background.lightnessF() < 0.5, expectedDark);
    QCOMPARE(contextProperty(u"themeHighlightColor"_s).value<QColor>(), theme->color(Utils::Theme::PaletteHighlight));
    QCOMPARE(
        contextProperty(u"themeSeparatorColor"_s).value<QColor>(),
        theme->color(Utils::Theme::FancyToolBarSeparatorColor));

    view()->show();
    QVERIFY(QTest::qWaitForWindowExposed(view()));
    const QImage image = view()->grabWindow();
    QVERIFY(!image.isNull());
    // The corner below the buttons shows nothing but the background; the separator stands right of it.
    QCOMPARE(image.pixelColor(90, image.height() - 5).rgb(), background.rgb());
    QCOMPARE(
        image.pixelColor(180, image.height() / 2).rgb(),
        contextProperty(u"themeSeparatorColor"_s).value<QColor>().rgb());

    const QDir screenshots(
        QDir(qEnvironmentVariable("EMULATIONMANAGEMENT_TEST_BUILD_DIR")).filePath(u"tests/ide/screenshots"_s));
    QVERIFY(screenshots.mkpath(u"."_s));
    QVERIFY(image.save(screenshots.filePath(expectedDark ? u"view-dark.png"_s : u"view-light.png"_s)));
}

#include "tst_theme.moc"
