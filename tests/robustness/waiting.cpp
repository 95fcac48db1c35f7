// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robustness/waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace Robustness {

void deleteWhatIsDue()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool waitFor(const std::function<bool()> &condition)
{
    const QDeadlineTimer limit(1min);
    QTimer waker; // lest nothing happens
    waker.start(1s);
    while (!condition()) {
        if (limit.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        deleteWhatIsDue();
    }
    return true;
}

} // namespace Robustness
