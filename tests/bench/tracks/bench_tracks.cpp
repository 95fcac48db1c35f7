// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a user of the GPS page waits for: a long log, from the file's choice until its rows are in the table and the
// track is sent, next to a TableModel that takes the same rows; and what each point costs after that.

#include "../quantiles.h"

#include "gps/gpsemulationmanager.h"
#include "gps/tracktablemodel.h"
#include "view/viewhost.h"

#include <QApplication>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QJSValue>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using EmulationManagement::Internal::GPSEmulationManager;
using EmulationManagement::Internal::TrackTableModel;

namespace {

constexpr int patience = 300'000; // ms

[[noreturn]] void fail(const char *text)
{
    std::fprintf(stderr, "bench_tracks: %s\n", text);
    std::exit(EXIT_FAILURE);
}

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

/// A receiver that writes ten lines a second.
void writeLog(const QString &path, int points)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        fail("no log");
    for (int i = 0; i < points; ++i) {
        const int tenths = i % 864'000;
        char line[128];
        const int length = std::snprintf(
            line,
            sizeof line,
            "$GPGGA,%02d%02d%02d.%d0,%02d%07.4f,N,%03d%07.4f,E,1,08,0.9,%.1f,M,46.9,M,,*47\n",
            tenths / 36'000,
            tenths / 600 % 60,
            tenths / 10 % 60,
            tenths % 10,
            40 + i / 600'000,
            (i % 600'000) / 10'000.0,
            7,
            (i * 7 % 600'000) / 10'000.0,
            100 + i % 9000 / 10.0);
        file.write(line, length);
    }
}

/// The longest time that the window does not answer.
class Watchdog : public QObject
{
public:
    void start()
    {
        m_longest = 0;
        m_sinceTick.start();
        m_timer.start(std::chrono::milliseconds(1), Qt::PreciseTimer, this);
    }
    double longest()
    {
        m_timer.stop();
        return std::max(m_longest, milliseconds(m_sinceTick));
    }

protected:
    void timerEvent([[maybe_unused]] QTimerEvent *event) override
    {
        m_longest = std::max(m_longest, milliseconds(m_sinceTick));
        m_sinceTick.start();
    }

private:
    QBasicTimer m_timer;
    QElapsedTimer m_sinceTick;
    double m_longest = 0;
};

struct Opening
{
    double time = 0;    // ms
    double silence = 0; // ms
    double bytes = 0;
};

class Bench
{
public:
    Bench()
    {
        m_host.setTheme(u"light-2024"_s);
        m_host.setUp(m_view.rootContext());
        m_view.setResizeMode(QQuickView::SizeRootObjectToView);
        m_view.setSource(QUrl(u"qrc:/emulationmanagement/qml/EmulationManagementView.qml"_s));
        m_view.show();
        if (!m_view.rootObject() || !QTest::qWaitForWindowExposed(&m_view, patience))
            fail("no view");
        m_page = m_view.rootObject()->findChild<QQuickItem *>(u"gpsManagementPage"_s);
        for (QQuickItem *page : m_view.rootObject()->childItems()) {
            if (page->property("active").isValid())
                page->setProperty("active", page == m_page);
        }
        m_model = m_page->findChild<TrackTableModel *>();
    }

    /// From the choice of a file until its track is sent, and shown.
    Opening open(const QString &path, int points)
    {
        clear();
        const double before = allocatedBytes();
        Watchdog watchdog;
        watchdog.start();
        QElapsedTimer timer;
        timer.start();
        QMetaObject::invokeMethod(m_page, "openFile", QUrl::fromLocalFile(path));
        const auto isOpen = [&] { return m_model->rowCount() == points && m_host.gps()->trackLoaded(); };
        if (!QTest::qWaitFor(isOpen, patience))
            fail("the log is not opened");
        Opening opening;
        opening.time = milliseconds(timer);
        m_host.takeFrames(); // the far end lives in this thread, too
        opening.silence = watchdog.longest();
        m_view.engine()->collectGarbage();
        opening.bytes = allocatedBytes() - before;
        return opening;
    }

    /// Milliseconds of one step from point to point, all that hangs on it included. More than in real playback, where
    /// the buttons do not notice that the timer stands still for a moment.
    double playbackStep(int steps)
    {
        std::vector<double> times;
        for (int i = 0; i < steps; ++i) {
            QMetaObject::invokeMethod(m_page, "stopTrackTimer"); // its wait is over
            QElapsedTimer timer;
            timer.start();
            QMetaObject::invokeMethod(m_page, "goToNextPoint");
            times.push_back(milliseconds(timer));
            if (i % 100 == 0)
                m_host.takeFrames();
        }
        QMetaObject::invokeMethod(m_page, "stopTrackTimer");
        m_host.takeFrames();
        return median(times);
    }

    QVariantList trackPoints() const
    {
        QVariantList list = m_page->property("actualTrackPoints").value<QJSValue>().toVariant().toList();
        if (list.isEmpty())
            list = m_page->property("actualTrackPoints").toList();
        return list;
    }

    /// The same rows into the TableModel of Qt's labs, at once.
    double fillTableModel(int points)
    {
        QQmlComponent component(m_view.engine());
        component.setData(
            R"(
            import QtQuick
            import Qt.labs.qmlmodels
            TableModel {
                function fill(count) {
                    const list = [];
                    for (let i = 0; i < count; ++i)
                        list.push({"No.": i, "Time": "00:00:01.0", "Latitude": "48.1173000", "Longitude": "11.5166667", "Altitude": "545.40"});
                    rows = list;
                }
                TableModelColumn { display: "No." }
                TableModelColumn { display: "Time" }
                TableModelColumn { display: "Latitude" }
                TableModelColumn { display: "Longitude" }
                TableModelColumn { display: "Altitude" }
            })",
            QUrl());
        const std::unique_ptr<QObject> model(component.create());
        if (!model)
            fail(qPrintable(component.errorString()));
        QElapsedTimer timer;
        timer.start();
        QMetaObject::invokeMethod(model.get(), "fill", QVariant(points));
        return milliseconds(timer);
    }

private:
    void clear()
    {
        QMetaObject::invokeMethod(m_page, "clearTrack");
        m_page->setProperty("actualTrackPoints", QVariantList());
        m_host.reconnect(); // so that the track is not loaded there
        if (!QTest::qWaitFor([this] { return !m_host.gps()->trackLoaded(); }, patience))
            fail("no new connection");
        m_view.engine()->collectGarbage();
        QTest::qWait(0);
        malloc_trim(0);
    }

    TestView::ViewHost m_host;
    QQuickView m_view;
    QQuickItem *m_page = nullptr;
    TrackTableModel *m_model = nullptr;
};

void measureOpening(Bench &bench, const QString &path, int points, int rounds)
{
    std::vector<double> times;
    std::vector<double> silences;
    std::vector<double> tableModel;
    double bytes = 0;
    for (int i = 0; i < rounds; ++i) {
        const Opening opening = bench.open(path, points);
        times.push_back(opening.time);
        silences.push_back(opening.silence);
        bytes = opening.bytes;
        if (points <= 100'000)
            tableModel.push_back(bench.fillTableModel(points));
    }
    const char *aims[] = {"no aim", "aim under 1000", "aim under 200"};
    const bool hasAim = points == 100'000;
    std::printf(
        "%d points, from file to table and upload: %.0f ms (%s)\n", points, median(times), aims[hasAim ? 1 : 0]);
    std::printf("  longest time without an answer: %.0f ms (%s)\n", median(silences), aims[hasAim ? 2 : 0]);
    std::printf("  memory for each point: %.0f bytes (no aim)\n", bytes / points);
    if (!tableModel.empty()) {
        std::printf("  a TableModel alone takes the rows in: %.0f ms (no aim)\n", median(tableModel));
        std::printf("  all of it / a TableModel alone: %.2f (no aim)\n", median(times) / median(tableModel));
    }
}

void measureSerialising(const QVariantList &points, int rounds)
{
    GPSEmulationManager manager; // without a channel: the text is made and goes nowhere
    std::vector<double> rates;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        manager.loadTrack(points);
        rates.push_back(double(points.size()) / milliseconds(timer) / 1000);
    }
    std::printf("serialising: %.2f million points a second (aim 1)\n", median(rates));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const bool longRun = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") != 0;
    const int points = longRun ? 100'000 : 10'000;
    const int rounds = longRun ? 7 : 2;

    const QTemporaryDir folder;
    const QString path = folder.filePath(u"log.nmea"_s);
    Bench bench;
    writeLog(path, points);
    bench.open(path, points); // the warm-up
    measureOpening(bench, path, points, rounds);
    std::printf("playback step: %.3f ms (aim under 1)\n", bench.playbackStep(longRun ? 2000 : 200));
    measureSerialising(bench.trackPoints(), rounds);
    if (longRun) {
        constexpr int many = 1'000'000;
        writeLog(path, many);
        measureOpening(bench, path, many, 1);
    }
    return EXIT_SUCCESS;
}
