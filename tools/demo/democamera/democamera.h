// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QSize>
#include <QString>

#include <pipewire/pipewire.h>

#include <memory>

namespace DemoCamera {

struct LoopDeleter
{
    void operator()(pw_main_loop *loop) const { pw_main_loop_destroy(loop); }
};
using LoopPointer = std::unique_ptr<pw_main_loop, LoopDeleter>;

struct StreamDeleter
{
    void operator()(pw_stream *stream) const { pw_stream_destroy(stream); }
};
using StreamPointer = std::unique_ptr<pw_stream, StreamDeleter>;

/*!
    A camera that PipeWire offers as it does the host's: programs choose one of its sizes and rates, and get a test
    picture. It is there until the process is asked to end, or PipeWire has gone.
*/
class Camera
{
    Q_DISABLE_COPY_MOVE(Camera)

public:
    /// \a priority decides which camera a program gets that names none: the highest.
    Camera(const QString &name, const QList<QSize> &sizes, const QList<int> &rates, int priority);

    /// Returns the exit code of the process: not 0 when PipeWire cannot be reached or has gone.
    int run();

private:
    static void onStateChanged(void *camera, pw_stream_state old, pw_stream_state state, const char *error);
    static void onParamChanged(void *camera, uint32_t id, const spa_pod *param);
    static void onProcess(void *camera);
    static void onTimeout(void *camera, uint64_t expirations);
    static void onRefused(void *camera, uint64_t count);
    static void onSignal(void *camera, int signal);

    bool offer();
    void offerAgain();
    void accept(const spa_pod *format);
    void setClockRunning(bool running);
    void sendFrame();

    QList<QSize> m_sizes;
    QList<int> m_rates;
    LoopPointer m_loop;
    spa_source *m_clock; // the loop's, as is the next
    spa_source *m_refusal;
    StreamPointer m_stream;
    QSize m_size; // what was agreed on
    int m_rate = 0;
    uint64_t m_frame = 0;
    bool m_offering = false;
    int m_exitCode = 0;
};

} // namespace DemoCamera
