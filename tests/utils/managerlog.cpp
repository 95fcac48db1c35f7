// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "utils/managerlog.h"

#include <QTest>

using namespace Qt::StringLiterals;
using EmulationManagement::Internal::RemoteDBusInvokerService;

namespace TestUtils {

namespace {

constexpr int deadline = 30'000; // ms
const QString call = u"a call"_s;
const QString lastFrame = u"the last    "_s;

} // namespace

ManagerLog::ManagerLog(const QString &bus, const QString &service, const QString &object, const QString &interface)
    : m_address(u"%1 %2 %3 %4 "_s.arg(bus, service, object, interface))
{
}

bool ManagerLog::listen()
{
    return m_invoker.listen(RemoteDBusInvokerService::hostTcpPort);
}

bool ManagerLog::connectChannel()
{
    bool connected = false;
    QObject context;
    QObject::connect(
        &m_channel, &RemoteDBusInvokerService::webSocketConnected, &context, [&connected] { connected = true; });
    m_channel.connectToEmulator();
    return QTest::qWaitFor([&] { return connected && m_invoker.clients() == 1; }, deadline);
}

void ManagerLog::noteCall()
{
    m_signals.append(call);
}

bool ManagerLog::hasCalls() const
{
    return m_signals.entries().contains(call);
}

QStringList ManagerLog::takeEvents()
{
    QStringList events = m_signals.takeEntries();
    // A last frame of the test's own shows that no other one is under way.
    m_channel.callDBusMethod(u"the"_s, u"last"_s, {}, {}, {}, {});
    if (!QTest::qWaitFor([this] { return m_invoker.frames().contains(lastFrame); }, deadline))
        return {u"the frames do not arrive"_s};
    QStringList frames = m_invoker.takeFrames();
    frames.removeLast();
    if (frames.size() != events.count(call))
        return QStringList(u"frames without a call, or calls without a frame"_s) + frames;
    for (QString &event : events) {
        if (event != call)
            continue;
        const QString frame = frames.takeFirst();
        event = frame.startsWith(m_address) ? frame.sliced(m_address.size()) : frame;
    }
    return events;
}

} // namespace TestUtils
