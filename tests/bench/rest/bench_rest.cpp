// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the view costs while its window is hidden, as it is for most of the time: on each of its pages, with the
// emulator connected.

#include "benchview.h"
#include "cputime.h"

#include <QApplication>
#include <QQuickItem>
#include <QStringList>

#include <chrono>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Ten times the aim: more than any noise, and less than a clock that goes on.
constexpr double muchTooMuch = 1.0;

/// Frames of the seconds in which the resting time was measured.
qsizetype measurePage(BenchView &view, const QString &page, std::chrono::seconds time)
{
    view.window().show();
    view.click(page + u"Button"_s);
    if (!view.item(page + u"Page"_s)->isVisible())
        BenchView::fail("the page did not appear");
    handleEvents(200ms);
    view.window().hide();
    handleEvents(2s); // what was under way, and what is to be stored
    view.host().takeFrames();
    const double rest = restingTime(time);
    const qsizetype frames = view.host().takeFrames().size();
    if (rest > muchTooMuch)
        BenchView::fail("a hidden window works");
    std::printf(
        "hidden window on the page %s: %.3f ms of CPU time a second, %lld frames (aim at most 0.1, and none)\n",
        qPrintable(page),
        rest,
        static_cast<long long>(frames));
    return frames;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const std::chrono::seconds time = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") ? 20s : 1s;
    BenchView view;
    qsizetype frames = 0;
    const QStringList pages{
        u"sensorsManagement"_s, u"sensorsValues"_s, u"smartphoneModel"_s, u"gpsManagement"_s, u"cameraManagement"_s};
    for (const QString &page : pages)
        frames += measurePage(view, page, time);
    if (frames > 0)
        BenchView::fail("a hidden window sends");
    return EXIT_SUCCESS;
}
