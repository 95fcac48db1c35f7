// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the phone model costs: a tick of its clock with the frames it sends, its page's first and later shows, the
// module of vectors and angles at the start of the IDE, and what is left of all this while another page is shown.

#include "benchview.h"
#include "quantiles.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>
#include <QTest>

#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// The page's clock, which ticks only when it is told to.
QObject *stoppedClock(BenchView &view)
{
    auto *clock = view.item(u"smartphoneModelPage"_s)->findChild<QObject *>(u"timer"_s);
    if (!clock)
        BenchView::fail("the page has no clock");
    QQmlProperty::write(clock, u"running"_s, false); // unlike setProperty(), it ends the binding
    return clock;
}

/// Each tick turns or moves the phone and sends one frame.
void measureTicks(
    BenchView &view,
    QObject *clock,
    const char *name,
    const QString &mode,
    const QString &slider,
    double step,
    int rounds)
{
    constexpr int ticks = 500;
    view.click(u"smartphoneModelButton"_s);
    view.click(mode);
    QQuickItem *moved = view.item(slider);
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        moved->setProperty("value", 0.0);
        view.host().takeFrames();
        QElapsedTimer timer;
        timer.start();
        for (int tick = 1; tick <= ticks; ++tick) {
            moved->setProperty("value", step * tick);
            QMetaObject::invokeMethod(clock, "triggered");
        }
        times.push_back(milliseconds(timer) / ticks);
        const qsizetype frames = view.host().takeFrames().size();
        if (frames != ticks)
            BenchView::fail(qPrintable(u"%1 frames of %2 ticks"_s.arg(frames).arg(ticks)));
    }
    std::printf("tick in %s mode, from the clock to the frame: %.4f ms (aim under 1)\n", name, median(times));
}

double showPage(BenchView &view)
{
    view.click(u"gpsManagementButton"_s);
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    view.click(u"smartphoneModelButton"_s);
    const bool drawn = !view.window().grabWindow().isNull();
    const double time = milliseconds(timer);
    if (!drawn || !view.item(u"smartphoneModelPage"_s)->isVisible())
        BenchView::fail("the page did not appear");
    return time;
}

void measureShows(BenchView &view, int count)
{
    std::printf("page shown with its picture, the first time: %.2f ms (no aim)\n", showPage(view));
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
        times.push_back(showPage(view));
    std::printf("page shown with its picture, later, median: %.2f ms (aim under 16)\n", median(times));
    std::printf(
        "page shown with its picture, later, 95 of 100 at most: %.2f ms (aim under 16)\n", quantile(times, 0.95));
}

/// Milliseconds until a document with these imports is there, in an engine of its own.
double loadTime(const QByteArray &imports)
{
    QQmlEngine engine;
    QQmlComponent warm(&engine);
    warm.setData("import QtQml\nQtObject {}", QUrl(u"qrc:/warm.qml"_s));
    delete warm.create();
    QElapsedTimer timer;
    timer.start();
    QQmlComponent component(&engine);
    component.setData("import QtQml\n" + imports + "\nQtObject {}", QUrl(u"qrc:/import.qml"_s));
    const std::unique_ptr<QObject> object(component.create());
    const double time = milliseconds(timer);
    if (!object)
        BenchView::fail(qPrintable(component.errorString()));
    return time;
}

void measureImport(int count)
{
    std::vector<double> without;
    std::vector<double> with;
    for (int i = 0; i < count; ++i) {
        without.push_back(loadTime({}));
        with.push_back(loadTime("import \"qrc:/emulationmanagement/js/three.mjs\" as Three"));
    }
    // The first is what an IDE pays; later ones find the compiled module in the process.
    std::printf("importing the module of vectors and angles, the first time: %.2f ms (aim under 5)\n", with.front());
    std::printf("importing it later - importing nothing: %.2f ms (no aim)\n", median(with) - median(without));
}

/// In milliseconds, of the whole process.
double cpuTime()
{
    return double(std::clock()) / CLOCKS_PER_SEC * 1000;
}

/// Milliseconds of CPU time a second while another page is shown; the window, the channel and its other end included.
double idleTime(BenchView &view, int seconds)
{
    view.click(u"gpsManagementButton"_s);
    view.host().takeFrames();
    const double before = cpuTime();
    QTest::qWait(seconds * 1000);
    const double used = cpuTime() - before;
    if (!view.host().takeFrames().isEmpty())
        BenchView::fail("a page that is not shown sends");
    return used / seconds;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const bool longRun = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") != 0;

    measureImport(longRun ? 51 : 5);
    BenchView view;
    const int seconds = longRun ? 30 : 2;
    const double before = idleTime(view, seconds);
    measureShows(view, longRun ? 200 : 20);
    const double after = idleTime(view, seconds);
    std::printf(
        "idle, after the page was shown - before: %.2f - %.2f ms of CPU time a second (aim equal)\n", after, before);
    QObject *clock = stoppedClock(view);
    measureTicks(view, clock, "rotation", u"rotationRadioButton"_s, u"zRotSlider"_s, 0.3, longRun ? 20 : 3);
    measureTicks(view, clock, "move", u"moveRadioButton"_s, u"xMoveSlider"_s, 0.003, longRun ? 20 : 3);
    return EXIT_SUCCESS;
}
