// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "camera/gsthandles.h"

#include <QtTypes>

#include <functional>
#include <future>

namespace EmulationManagement::Internal {

// Initialises GStreamer, loads what the pipelines need of it and begins to watch cameras, in a thread of its own: that
// reads a registry of some hundred plugins, the first time the plugins themselves, and asks every camera what it can
// do. Waits for the end when destroyed.
class GStreamerLoading
{
    Q_DISABLE_COPY_MOVE(GStreamerLoading)

public:
    // The function is called in that thread, last.
    explicit GStreamerLoading(const std::function<void()> &onLoaded);

    // Waits. To be called once.
    GstDeviceMonitorPointer takeDeviceMonitor() { return m_loaded.get(); }

private:
    std::future<GstDeviceMonitorPointer> m_loaded;
};

} // namespace EmulationManagement::Internal
