// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a user of the view waits for: a slider's step, from the mouse's move to the frame on the wire, next to the same
// frames through a bare socket; and a page, from the click on its button to its picture. And what both leave in memory.

#include "benchview.h"
#include "quantiles.h"
#include "remote/remotedbusinvokerservice.h"
#include "sensors/sensorsemulationmanager.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QUrl>
#include <QWebSocket>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace Qt::StringLiterals;
using EmulationManagement::Internal::RemoteDBusInvokerService;

namespace {

constexpr int stepsPerRound = 1000;

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// Milliseconds of one step or send: until the call returns, with the frame in the socket, and until the other end has
/// it.
struct StepTimes
{
    double call = 0;
    double arrival = 0;
    int frames = 0;
};

class Bench : private BenchView
{
public:
    using BenchView::firstShow;

    Bench()
    {
        m_bare.open(QUrl(u"ws://127.0.0.1:%1"_s.arg(RemoteDBusInvokerService::hostTcpPort)));
        if (!QTest::qWaitFor([this] { return m_bare.isValid(); }, patience))
            fail("no connection");
    }

    /// Drags the handle of a slider to and fro, one pixel a step.
    StepTimes dragSlider()
    {
        const QQuickItem *slider = item(u"slider"_s, item(u"xSlider"_s, item(u"accelerometerControls"_s)));
        const QPoint left = slider->mapToScene(QPointF(20, slider->height() / 2)).toPoint();
        const int way = int(slider->width()) - 40;
        const auto place = [&](int step) {
            const int x = step % (2 * way);
            return left + QPoint(x < way ? x : 2 * way - x, 0);
        };
        QTest::mousePress(&window(), Qt::LeftButton, {}, place(0));
        host().takeFrames(); // the press is a step itself where the handle was elsewhere
        const StepTimes times = round([&](int step) { moveMouse(place(step + 1)); });
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, place(stepsPerRound));
        return times;
    }

    /// The same number of steps without the view: the manager with its models, or only the channel, or a bare socket.
    StepTimes callManager()
    {
        return round([this](int step) { host().sensors()->setAccelerometerX(step); });
    }

    StepTimes callChannel()
    {
        const QString name = u"ru.kelo.SensorfwEmulationManagement"_s;
        const QString object = u"/ru/kelo/SensorfwEmulationManagement"_s;
        return round([&](int step) {
            host().channel()->callDBusMethod(
                u"system"_s, name, object, name, u"setAccelerometerX"_s, u"int32:%1"_s.arg(step));
        });
    }

    StepTimes sendBare()
    {
        const QString frame = u"system ru.kelo.SensorfwEmulationManagement /ru/kelo/SensorfwEmulationManagement "
                              "ru.kelo.SensorfwEmulationManagement setAccelerometerX int32:%1"_s;
        return round([&](int step) { m_bare.sendTextMessage(frame.arg(step)); });
    }

    /// Shows the pages one after another, again and again; milliseconds of each change with its picture.
    std::vector<double> switchPages(int count)
    {
        // Not from the values to the phone model: that asks the user.
        static const QStringList pages{
            u"sensorsManagement"_s,
            u"sensorsValues"_s,
            u"gpsManagement"_s,
            u"smartphoneModel"_s,
            u"cameraManagement"_s};
        std::vector<double> times;
        for (int i = 0; i < count; ++i) {
            const QString &page = pages.at(i % pages.size());
            QCoreApplication::processEvents();
            QElapsedTimer timer;
            timer.start();
            click(page + u"Button"_s);
            const bool drawn = !window().grabWindow().isNull();
            times.push_back(milliseconds(timer));
            if (!drawn || !item(page + u"Page"_s)->isVisible())
                fail("a page did not appear");
        }
        return times;
    }

    /// Resident memory in KiB when everything that can be given back is.
    double memory()
    {
        window().engine()->collectGarbage();
        QTest::qWait(0);
        malloc_trim(0);
        QFile statm(u"/proc/self/statm"_s);
        if (!statm.open(QIODevice::ReadOnly))
            fail("no numbers of memory");
        return statm.readAll().split(' ').at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024;
    }

private:
    /// Delivered at once, and nothing else with it: drawing is no part of a step.
    void moveMouse(const QPoint &place)
    {
        QMouseEvent event(
            QEvent::MouseMove, place, window().mapToGlobal(place), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &event);
    }

    /// Every step is a frame, no more and no less.
    template<typename Step>
    StepTimes round(const Step &step)
    {
        host().takeFrames();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < stepsPerRound; ++i)
            step(i);
        StepTimes times;
        times.call = milliseconds(timer) / stepsPerRound;
        const QDeadlineTimer deadline(patience);
        while (host().invoker()->frames().size() < stepsPerRound && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::ExcludeUserInputEvents);
        times.arrival = milliseconds(timer) / stepsPerRound;
        times.frames = int(host().takeFrames().size());
        if (times.frames != stepsPerRound)
            fail("the frames are not as many as the steps");
        return times;
    }

    QWebSocket m_bare;
};

struct Series
{
    void add(const StepTimes &times)
    {
        calls.push_back(times.call);
        arrivals.push_back(times.arrival);
        frames = times.frames;
    }
    double call() const { return quantile(calls, 0.5); }
    double arrival() const { return quantile(arrivals, 0.5); }

    std::vector<double> calls;
    std::vector<double> arrivals;
    int frames = 0;
};

void measureSteps(Bench &bench, int rounds)
{
    Series step;
    Series manager;
    Series channel;
    Series bare;
    for (int i = 0; i < rounds; ++i) {
        step.add(bench.dragSlider());
        manager.add(bench.callManager());
        channel.add(bench.callChannel());
        bare.add(bench.sendBare());
    }
    std::printf("frames of %d slider steps: %d (aim %d)\n", stepsPerRound, step.frames, stepsPerRound);
    std::printf("slider step: %.4f ms (aim under 0.15)\n", step.call());
    std::printf("  of which mouse and slider: %.4f ms (no aim)\n", step.call() - manager.call());
    std::printf("  of which manager, models and what shows them: %.4f ms (no aim)\n", manager.call() - channel.call());
    std::printf("  of which channel: %.4f ms (no aim)\n", channel.call());
    std::printf("slider step / bare send: %.1f (no aim)\n", step.call() / bare.call());
    std::printf("slider step / bare send, both to the other end: %.1f (no aim)\n", step.arrival() / bare.arrival());
}

void measurePages(Bench &bench, int count)
{
    const std::vector<double> switches = bench.switchPages(count);
    std::printf("first show of the window, without its picture: %.1f ms (no aim)\n", bench.firstShow());
    std::printf("page switch with its picture, median: %.2f ms (aim under 16.7)\n", quantile(switches, 0.5));
    std::printf(
        "page switch with its picture, 95 of 100 at most: %.2f ms (aim under 16.7)\n", quantile(switches, 0.95));
}

void measureMemory(Bench &bench, int steps, int switches)
{
    const double before = bench.memory();
    for (int i = 0; i < steps; i += stepsPerRound)
        bench.dragSlider();
    const double afterSteps = bench.memory();
    bench.switchPages(switches);
    const double afterSwitches = bench.memory();
    std::printf("memory growth over %d slider steps: %.0f KiB (aim under 1024)\n", steps, afterSteps - before);
    std::printf(
        "memory growth over %d page switches: %.0f KiB (aim under 1024)\n", switches, afterSwitches - afterSteps);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const bool longRun = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") != 0;

    Bench bench;
    bench.switchPages(10); // every page has been shown, and the warm-up ends at the camera page
    bench.switchPages(2);  // on the values
    bench.dragSlider();

    measureSteps(bench, longRun ? 20 : 3);
    measurePages(bench, longRun ? 200 : 50);
    bench.switchPages(2);
    measureMemory(bench, 10'000, 200);
    return EXIT_SUCCESS;
}
