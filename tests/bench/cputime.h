// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <ctime>

/// In milliseconds, of the whole process.
inline double cpuTime()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Handles events, and sleeps while there are none; QTest::qWait() would look for some a hundred times a second.
inline void handleEvents(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Milliseconds of CPU time a second while there is nothing to do.
inline double restingTime(std::chrono::seconds time)
{
    const double before = cpuTime();
    handleEvents(time);
    return (cpuTime() - before) / double(time.count());
}
