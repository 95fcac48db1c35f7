// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtTypes>

#include <functional>
#include <future>

namespace EmulationManagement::Internal {

// Initialises GStreamer and loads what the pipelines need of it, in a thread of its own: that reads a registry of some
// hundred plugins, and the first time the plugins themselves. Waits for the end when destroyed.
class GStreamerLoading
{
    Q_DISABLE_COPY_MOVE(GStreamerLoading)

public:
    // The function is called in that thread, last.
    explicit GStreamerLoading(const std::function<void()> &onLoaded);
    ~GStreamerLoading();

    void wait() const;

private:
    std::future<void> m_loaded;
};

} // namespace EmulationManagement::Internal
