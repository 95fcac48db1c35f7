// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a user of the view waits for: a slider's step, by a key, until its frame is at the other end, next to the same
// frames through a bare socket; and a page, from the click on its button to its picture. And what both leave in memory.

#include "remote/remotedbusinvokerservice.h"
#include "sensors/sensorsemulationmanager.h"
#include "view/viewhost.h"

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

constexpr int stepsPerRound = 100;
constexpr int patience = 60'000; // ms

[[noreturn]] void fail(const char *text)
{
    std::fprintf(stderr, "bench_pages: %s\n", text);
    std::exit(EXIT_FAILURE);
}

double quantile(std::vector<double> values, double part)
{
    const auto place = values.begin() + std::ptrdiff_t(double(values.size() - 1) * part);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

class Bench
{
public:
    Bench()
    {
        m_host.setTheme(u"light-2024"_s);
        m_host.setUp(m_view.rootContext());
        const QStringList sensors = m_host.sensors()->sensorsEnabledStates().keys();
        for (const QString &sensor : sensors)
            m_host.sensors()->setSensorEnabled(sensor, true);
        m_view.setResizeMode(QQuickView::SizeRootObjectToView);
        m_view.setSource(QUrl(u"qrc:/emulationmanagement/qml/EmulationManagementView.qml"_s));
        m_view.show();
        m_view.requestActivate();
        QObject::connect(&m_view, &QQuickWindow::frameSwapped, &m_view, [this] { ++m_pictures; });
        if (!m_view.rootObject() || !QTest::qWaitForWindowActive(&m_view, patience))
            fail("no view");

        m_bare.open(QUrl(u"ws://127.0.0.1:%1"_s.arg(RemoteDBusInvokerService::hostTcpPort)));
        if (!QTest::qWaitFor([this] { return m_bare.isValid(); }, patience))
            fail("no connection");
        m_host.takeFrames();
        m_bare.sendTextMessage(u"hello"_s);
        awaitFrames(1);
        m_host.takeFrames();
    }

    /// Steps up to the round's end and back, and gives the milliseconds of each of them, events and pictures included.
    double moveSlider()
    {
        QQuickItem *slider = item(u"slider"_s, item(u"xSlider"_s, item(u"accelerometerControls"_s)));
        slider->forceActiveFocus();
        return round(
            [this](int step) { QTest::keyClick(&m_view, step < stepsPerRound / 2 ? Qt::Key_Right : Qt::Key_Left); });
    }

    /// The same frames without the view.
    double sendBare()
    {
        const QStringList frames = roundOfFrames();
        return round([&](int step) { m_bare.sendTextMessage(frames.at(step)); });
    }

    /// Shows the pages one after another, again and again; milliseconds of each change.
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
            const QQuickItem *button = item(page + u"Button"_s);
            const QPoint center = button->mapToScene(button->boundingRect().center()).toPoint();
            QCoreApplication::processEvents();
            const int before = m_pictures;
            QElapsedTimer timer;
            timer.start();
            QTest::mouseClick(&m_view, Qt::LeftButton, {}, center);
            if (!await([&] { return m_pictures > before; }) || !item(page + u"Page"_s)->isVisible())
                fail("a page did not appear");
            times.push_back(double(timer.nsecsElapsed()) / 1e6);
        }
        return times;
    }

    /// Resident memory in KiB when everything that can be given back is.
    double memory()
    {
        m_view.engine()->collectGarbage();
        QTest::qWait(0);
        malloc_trim(0);
        QFile statm(u"/proc/self/statm"_s);
        if (!statm.open(QIODevice::ReadOnly))
            fail("no numbers of memory");
        return statm.readAll().split(' ').at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024;
    }

    /// Frames at the other end so far.
    qsizetype frames() const { return m_frames; }

private:
    QQuickItem *item(const QString &name) { return item(name, m_view.rootObject()); }

    static QQuickItem *item(const QString &name, const QQuickItem *parent)
    {
        QQuickItem *found = descendant(name, parent);
        if (!found)
            fail(qPrintable(name + u" is missing"_s));
        return found;
    }

    /// By what is drawn in what: a repeater's items are no children as objects.
    static QQuickItem *descendant(const QString &name, const QQuickItem *parent)
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

    /// Waits without the pauses of a polling wait.
    template<typename Condition>
    static bool await(const Condition &condition)
    {
        const QDeadlineTimer deadline(patience);
        while (!condition()) {
            if (deadline.hasExpired())
                return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return true;
    }

    void awaitFrames(int count)
    {
        if (!await([&] { return m_host.invoker()->frames().size() >= count; }))
            fail("frames were lost");
    }

    static QStringList roundOfFrames()
    {
        QStringList frames;
        for (int step = 0; step < stepsPerRound; ++step) {
            const int value = step < stepsPerRound / 2 ? step + 1 : stepsPerRound - step - 1;
            frames.append(u"system ru.kelo.SensorfwEmulationManagement /ru/kelo/SensorfwEmulationManagement "
                          "ru.kelo.SensorfwEmulationManagement setAccelerometerX int32:%1"_s.arg(value));
        }
        return frames;
    }

    template<typename Step>
    double round(const Step &step)
    {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < stepsPerRound; ++i) {
            step(i);
            awaitFrames(i + 1);
        }
        const double time = double(timer.nsecsElapsed()) / 1e6 / stepsPerRound;
        const QStringList frames = m_host.takeFrames();
        m_frames += frames.size();
        if (frames != roundOfFrames())
            fail("the frames are not those of the steps");
        return time;
    }

    TestView::ViewHost m_host;
    QQuickView m_view;
    QWebSocket m_bare;
    int m_pictures = 0;
    qsizetype m_frames = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const bool longRun = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") != 0;

    Bench bench;
    bench.switchPages(10); // every page has been shown, and the warm-up ends at the camera page
    bench.switchPages(2);  // on the values
    bench.moveSlider();
    bench.sendBare();

    std::vector<double> steps;
    std::vector<double> bare;
    qsizetype frames = 0;
    for (int i = 0; i < 1000 / stepsPerRound; ++i) {
        const qsizetype earlier = bench.frames();
        steps.push_back(bench.moveSlider());
        frames += bench.frames() - earlier;
        bare.push_back(bench.sendBare());
    }
    std::printf("frames of 1000 slider steps: %d (aim 1000)\n", int(frames));
    std::printf("slider step to the other end: %.3f ms (aim under 16.7)\n", quantile(steps, 0.5));
    std::printf(
        "slider step / bare send, both to the other end: %.2f (no aim)\n", quantile(steps, 0.5) / quantile(bare, 0.5));

    const std::vector<double> switches = bench.switchPages(longRun ? 200 : 50);
    std::printf("page switch, median: %.2f ms (aim under 16.7)\n", quantile(switches, 0.5));
    std::printf("page switch, 95 of 100 at most: %.2f ms (aim under 16.7)\n", quantile(switches, 0.95));

    const int rounds = (longRun ? 10'000 : 1000) / stepsPerRound;
    bench.switchPages(2);
    const double before = bench.memory();
    for (int i = 0; i < rounds; ++i)
        bench.moveSlider();
    const double afterSteps = bench.memory();
    bench.switchPages(longRun ? 200 : 50);
    const double afterSwitches = bench.memory();
    std::printf(
        "memory growth over %d slider steps: %.0f KiB (aim under 1024)\n", rounds * stepsPerRound, afterSteps - before);
    std::printf(
        "memory growth over %d page switches: %.0f KiB (aim under 1024)\n",
        longRun ? 200 : 50,
        afterSwitches - afterSteps);
    return EXIT_SUCCESS;
}
