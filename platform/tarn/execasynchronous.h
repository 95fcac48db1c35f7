// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QEventLoop>
#include <QTimer>

#include <functional>
#include <utility>

namespace Tarn {

// Calls an asynchronous operation and waits for its end in a local event loop, so that events go on being delivered:
//
//     bool ok = false;
//     execAsynchronous(ok, &VirtualMachine::addPortForwarding, machine, name, protocol, hostPort, emulatorPort);
//
// The operation takes, after the given arguments, a context object and a completion callback. Main thread only.
template<typename MemberFunction, typename Object, typename... Args>
void execAsynchronous(bool &result, MemberFunction function, Object *object, Args &&...args)
{
    QEventLoop loop;
    const std::function<void(bool)> whenDone = [&loop, &result](bool ok) {
        result = ok;
        if (loop.isRunning())
            loop.quit();
        else // reported before the loop runs: quit() would be lost
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
    };
    std::invoke(function, object, std::forward<Args>(args)..., static_cast<const QObject *>(&loop), whenDone);
    loop.exec();
}

// For callers who do not care how it ended.
inline constexpr auto IgnoreAsynchronousReturn = [](bool) {};

} // namespace Tarn
