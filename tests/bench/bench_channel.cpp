// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the channel adds to the bare socket that it sends through: the same frames, in turns, to the same kind of
// server. And what it costs while there is no server, as when the emulator is off.

#include "cputime.h"
#include "quantiles.h"

#include "remote/remotedbusinvokerservice.h"

#include "utils/recordinginvoker.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QUrl>
#include <QWebSocket>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace EmulationManagement::Internal;
using TestUtils::RecordingInvoker;

namespace {

constexpr int framesPerRound = 500;

struct Times
{
    std::vector<double> call; // until the call returned
    std::vector<double> wire; // until the other end had the frames
};

bool waitFor(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(60s);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool measure(RecordingInvoker &invoker, const std::function<void()> &send, const QString &frame, Times &times)
{
    int arrived = 0;
    const auto connection = QObject::connect(&invoker, &RecordingInvoker::frameReceived, &invoker, [&] { ++arrived; });
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < framesPerRound; ++i)
        send();
    times.call.push_back(double(timer.nsecsElapsed()));
    const bool complete = waitFor([&] { return arrived >= framesPerRound; });
    times.wire.push_back(double(timer.nsecsElapsed()));
    QObject::disconnect(connection);
    return complete && invoker.takeFrames() == QStringList(framesPerRound, frame);
}

/// Percent of a core. The test's network has nobody on the port.
double costOfWaiting(std::chrono::seconds time)
{
    RemoteDBusInvokerService channel;
    channel.connectToEmulator();
    handleEvents(500ms); // which loads what a socket needs
    return restingTime(time) / 10;
}

int fail(const char *text)
{
    std::fprintf(stderr, "bench_channel: %s\n", text);
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const bool longRun = qEnvironmentVariableIntValue("EMULATIONMANAGEMENT_LONG_RUN") != 0;
    const int rounds = longRun ? 400 : 10;
    const double waiting = costOfWaiting(longRun ? 20s : 1s);

    const QString bus = u"system"_s;
    const QString service = u"ru.kelo.SensorfwEmulationManagement"_s;
    const QString object = u"/ru/kelo/SensorfwEmulationManagement"_s;
    const QString method = u"setAccelerometerValues"_s;
    const QString arguments = u"int32:-1000 int32:0 int32:1000"_s;
    const QString frame = QStringList{bus, service, object, service, method, arguments}.join(u' ');

    RecordingInvoker invoker;
    if (!invoker.listen(RemoteDBusInvokerService::hostTcpPort))
        return fail("the port is taken");
    RemoteDBusInvokerService channel;
    channel.connectToEmulator();
    QWebSocket bare(QString(), QWebSocketProtocol::Version13, nullptr);
    bare.open(QUrl(u"ws://127.0.0.1:%1"_s.arg(RemoteDBusInvokerService::hostTcpPort)));
    bool channelConnected = false;
    QObject::connect(
        &channel, &RemoteDBusInvokerService::webSocketConnected, &application, [&] { channelConnected = true; });
    if (!waitFor([&] { return channelConnected && bare.isValid() && invoker.clients() == 2; }))
        return fail("no connection");

    const auto sendThroughChannel = [&] { channel.callDBusMethod(bus, service, object, service, method, arguments); };
    const auto sendBare = [&] { bare.sendTextMessage(frame); };
    Times channelTimes;
    Times bareTimes;
    for (int i = 0; i < rounds; ++i) {
        if (!measure(invoker, sendThroughChannel, frame, channelTimes) || !measure(invoker, sendBare, frame, bareTimes))
            return fail("frames were lost");
    }

    std::printf(
        "channel call / bare send: %.2f (aim at most 1.3)\n", median(channelTimes.call) / median(bareTimes.call));
    std::printf(
        "channel call to the other end / bare send to the other end: %.2f (aim at most 1.3)\n",
        median(channelTimes.wire) / median(bareTimes.wire));
    std::printf("channel with nobody on the port: %.2f %% of a core (aim at most 1)\n", waiting);
    std::printf("channel call: %.2f us (no aim)\n", median(channelTimes.call) / framesPerRound / 1000);
    return EXIT_SUCCESS;
}
