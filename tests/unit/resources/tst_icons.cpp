// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QColor>
#include <QImage>
#include <QTest>
#include <QTransform>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QImage phone(int number, bool light = false)
{
    const QString path = u":/emulationmanagement/icons/phone_%1%2.png"_s;
    return QImage(path.arg(number).arg(light ? u"_light"_s : QString()));
}

QImage turned(const QImage &image, int degreesClockwise)
{
    return image.transformed(QTransform().rotate(degreesClockwise));
}

// The largest difference in opacity of two pixels at the same place, of 255.
int difference(const QImage &first, const QImage &second)
{
    int largest = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x)
            largest = std::max(largest, qAbs(qAlpha(first.pixel(x, y)) - qAlpha(second.pixel(x, y))));
    }
    return largest;
}

} // namespace

/// The drawings of the preset orientations.
class TestIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void areThere_data();
    void areThere();
    void areTurned_data();
    void areTurned();
    void areUnlikeEachOther();
};

void TestIcons::areThere_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("light");
    for (int number = 1; number <= 6; ++number) {
        QTest::addRow("%d for light themes", number) << number << false;
        QTest::addRow("%d for dark themes", number) << number << true;
    }
}

void TestIcons::areThere()
{
    QFETCH(const int, number);
    QFETCH(const bool, light);

    const QImage image = phone(number, light);
    QCOMPARE(image.size(), QSize(64, 64));
    QVERIFY(image.hasAlphaChannel());
    for (const QPoint &corner : {QPoint(0, 0), QPoint(63, 0), QPoint(0, 63), QPoint(63, 63)})
        QCOMPARE(qAlpha(image.pixel(corner)), 0);

    int strokes = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() < 255)
                continue;
            ++strokes;
            QVERIFY(light ? color.lightness() > 200 : color.lightness() < 80);
        }
    }
    QCOMPARE_GT(strokes, 200);

    QCOMPARE_LE(difference(phone(number, false), phone(number, true)), 1);
}

void TestIcons::areTurned_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("degrees");
    QTest::newRow("its top to the right") << 2 << 90;
    QTest::newRow("upside down") << 3 << 180;
    QTest::newRow("its top to the left") << 4 << 270;
}

void TestIcons::areTurned()
{
    QFETCH(const int, number);
    QFETCH(const int, degrees);
    QCOMPARE_LE(difference(phone(number), turned(phone(1), degrees)), 32); // edges are smoothed
}

void TestIcons::areUnlikeEachOther()
{
    for (int first = 1; first <= 6; ++first) {
        for (int second = first + 1; second <= 6; ++second)
            QCOMPARE_GT(difference(phone(first), phone(second)), 128);
    }
}

QTEST_GUILESS_MAIN(TestIcons)

#include "tst_icons.moc"
