// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "eventloop.h"

#include <libvirt/libvirt.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimer>

#include <glib.h>

using namespace std::chrono_literals;

namespace Tarn::Internal {

void deliverLibvirtEvents()
{
    static bool done = false;
    if (std::exchange(done, true))
        return;

    // libvirt's own loop consists of sources in GLib's default main context. Qt's event loop serves that context on
    // the main thread, unless Qt was built or told to do without GLib.
    virEventRegisterDefaultImpl();
    if (QAbstractEventDispatcher::instance()->inherits("QEventDispatcherGlib"))
        return;
    auto *poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [] {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
    });
    poll->start(50ms);
}

} // namespace Tarn::Internal
