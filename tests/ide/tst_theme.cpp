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

// A colour that lets through some of the one behind it.
QColor over(const QColor &front, const QColor &back)
{
    const float alpha = front.alphaF();
    const auto blend = [alpha](float a, float b) { return a * alpha + b * (1 - alpha); };
    return QColor::fromRgbF(
        blend(front.redF(), back.redF()), blend(front.greenF(), back.greenF()), blend(front.blueF(), back.blueF()));
}

} // namespace

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
    const QColor separator = over(contextProperty(u"themeSeparatorColor"_s).value<QColor>(), background);
    const QColor shown = image.pixelColor(180, image.height() / 2);
    QVERIFY2(
        std::abs(shown.red() - separator.red()) <= 2 && std::abs(shown.green() - separator.green()) <= 2
            && std::abs(shown.blue() - separator.blue()) <= 2,
        qPrintable(u"%1 instead of %2"_s.arg(shown.name(), separator.name())));

    const QDir screenshots(
        QDir(qEnvironmentVariable("EMULATIONMANAGEMENT_TEST_BUILD_DIR")).filePath(u"tests/ide/screenshots"_s));
    QVERIFY(screenshots.mkpath(u"."_s));
    QVERIFY(image.save(screenshots.filePath(expectedDark ? u"view-dark.png"_s : u"view-light.png"_s)));
}

#include "tst_theme.moc"
