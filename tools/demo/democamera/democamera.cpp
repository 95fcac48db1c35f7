// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "democamera.h"

#include "testpicture.h"

#include <spa/param/video/format-utils.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace DemoCamera {

namespace {

constexpr uint32_t podBufferSize = 4096;

spa_rectangle rectangle(const QSize &size)
{
    return {uint32_t(size.width()), uint32_t(size.height())};
}

// One size with all rates, the first being the one that is preferred.
const spa_pod *newFormat(spa_pod_builder *builder, const QSize &size, const QList<int> &rates)
{
    spa_pod_frame object;
    spa_pod_builder_push_object(builder, &object, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    spa_pod_builder_prop(builder, SPA_FORMAT_mediaType, 0);
    spa_pod_builder_id(builder, SPA_MEDIA_TYPE_video);
    spa_pod_builder_prop(builder, SPA_FORMAT_mediaSubtype, 0);
    spa_pod_builder_id(builder, SPA_MEDIA_SUBTYPE_raw);
    spa_pod_builder_prop(builder, SPA_FORMAT_VIDEO_format, 0);
    spa_pod_builder_id(builder, SPA_VIDEO_FORMAT_YUY2);
    spa_pod_builder_prop(builder, SPA_FORMAT_VIDEO_size, 0);
    const spa_rectangle area = rectangle(size);
    spa_pod_builder_rectangle(builder, area.width, area.height);
    spa_pod_builder_prop(builder, SPA_FORMAT_VIDEO_framerate, 0);
    spa_pod_frame choice;
    spa_pod_builder_push_choice(builder, &choice, SPA_CHOICE_Enum, 0);
    spa_pod_builder_fraction(builder, uint32_t(rates.first()), 1);
    for (const int rate : rates)
        spa_pod_builder_fraction(builder, uint32_t(rate), 1);
    spa_pod_builder_pop(builder, &choice);
    return static_cast<const spa_pod *>(spa_pod_builder_pop(builder, &object));
}

const spa_pod *newBuffers(spa_pod_builder *builder, int stride, int height)
{
    spa_pod_frame object;
    spa_pod_builder_push_object(builder, &object, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers);
    spa_pod_builder_prop(builder, SPA_PARAM_BUFFERS_buffers, 0);
    spa_pod_frame choice;
    spa_pod_builder_push_choice(builder, &choice, SPA_CHOICE_Range, 0);
    for (const int count : {8, 2, 16}) // preferred, least, most
        spa_pod_builder_int(builder, count);
    spa_pod_builder_pop(builder, &choice);
    spa_pod_builder_prop(builder, SPA_PARAM_BUFFERS_blocks, 0);
    spa_pod_builder_int(builder, 1);
    spa_pod_builder_prop(builder, SPA_PARAM_BUFFERS_size, 0);
    spa_pod_builder_int(builder, stride * height);
    spa_pod_builder_prop(builder, SPA_PARAM_BUFFERS_stride, 0);
    spa_pod_builder_int(builder, stride);
    return static_cast<const spa_pod *>(spa_pod_builder_pop(builder, &object));
}

const spa_pod *newHeader(spa_pod_builder *builder)
{
    spa_pod_frame object;
    spa_pod_builder_push_object(builder, &object, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta);
    spa_pod_builder_prop(builder, SPA_PARAM_META_type, 0);
    spa_pod_builder_id(builder, SPA_META_Header);
    spa_pod_builder_prop(builder, SPA_PARAM_META_size, 0);
    spa_pod_builder_int(builder, sizeof(spa_meta_header));
    return static_cast<const spa_pod *>(spa_pod_builder_pop(builder, &object));
}

pw_properties *newProperties(const QString &name, int priority)
{
    const QByteArray utf8 = name.toUtf8();
    // clang-format off: pairs
    return pw_properties_new(
        PW_KEY_MEDIA_CLASS, "Video/Source",
        PW_KEY_MEDIA_TYPE, "Video",
        PW_KEY_MEDIA_ROLE, "Camera",
        PW_KEY_NODE_NAME, utf8.constData(),
        PW_KEY_NODE_DESCRIPTION, utf8.constData(),
        PW_KEY_PRIORITY_SESSION, QByteArray::number(priority).constData(),
        nullptr);
    // clang-format on
}

timespec nanoseconds(int64_t value)
{
    constexpr int64_t second = SPA_NSEC_PER_SEC;
    return {.tv_sec = value / second, .tv_nsec = value % second};
}

} // namespace

Camera::Camera(const QString &name, const QList<QSize> &sizes, const QList<int> &rates, int priority)
    : m_sizes(sizes)
    , m_rates(rates)
    , m_loop(pw_main_loop_new(nullptr))
    , m_clock(pw_loop_add_timer(pw_main_loop_get_loop(m_loop.get()), &Camera::onTimeout, this))
    , m_refusal(pw_loop_add_event(pw_main_loop_get_loop(m_loop.get()), &Camera::onRefused, this))
{
    pw_loop *loop = pw_main_loop_get_loop(m_loop.get());
    for (const int signal : {SIGINT, SIGTERM})
        pw_loop_add_signal(loop, signal, &Camera::onSignal, this);

    static const pw_stream_events events = [] {
        pw_stream_events callbacks = {};
        callbacks.version = PW_VERSION_STREAM_EVENTS;
        callbacks.state_changed = &Camera::onStateChanged;
        callbacks.param_changed = &Camera::onParamChanged;
        callbacks.process = &Camera::onProcess;
        return callbacks;
    }();
    m_stream.reset(pw_stream_new_simple(loop, qUtf8Printable(name), newProperties(name, priority), &events, this));
}

int Camera::run()
{
    if (!m_stream || !offer()) {
        std::fprintf(stderr, "PipeWire cannot be reached\n");
        return EXIT_FAILURE;
    }
    pw_main_loop_run(m_loop.get());
    return m_exitCode;
}

bool Camera::offer()
{
    std::array<uint8_t, podBufferSize> memory;
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size()));
    std::vector<const spa_pod *> formats;
    for (const QSize &size : std::as_const(m_sizes))
        formats.push_back(newFormat(&builder, size, m_rates));
    // The camera keeps the time for those who look through it. NOLINTNEXTLINE(*EnumCastOutOfRange): flags are added up.
    constexpr auto flags = pw_stream_flags(PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS);
    return pw_stream_connect(
               m_stream.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, formats.data(), uint32_t(formats.size()))
        >= 0;
}

void Camera::onStateChanged(void *data, pw_stream_state, pw_stream_state state, const char *)
{
    auto *camera = static_cast<Camera *>(data);
    camera->setClockRunning(state == PW_STREAM_STATE_STREAMING);
    // A program wanted what the camera does not offer, or PipeWire has gone. Not in here can it be offered again.
    if (!camera->m_offering && (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED))
        pw_loop_signal_event(pw_main_loop_get_loop(camera->m_loop.get()), camera->m_refusal);
}

void Camera::onRefused(void *data, uint64_t)
{
    static_cast<Camera *>(data)->offerAgain();
}

void Camera::offerAgain()
{
    m_offering = true;
    pw_stream_disconnect(m_stream.get());
    const bool offered = offer();
    m_offering = false;
    if (offered)
        return;
    std::fprintf(stderr, "PipeWire has gone\n");
    m_exitCode = EXIT_FAILURE;
    pw_main_loop_quit(m_loop.get());
}

void Camera::onParamChanged(void *data, uint32_t id, const spa_pod *param)
{
    if (id == SPA_PARAM_Format && param)
        static_cast<Camera *>(data)->accept(param);
}

void Camera::accept(const spa_pod *format)
{
    spa_video_info_raw info = {};
    if (spa_format_video_raw_parse(format, &info) < 0)
        return;
    m_size = {int(info.size.width), int(info.size.height)};
    m_rate = info.framerate.denom ? int(info.framerate.num / info.framerate.denom) : 0;

    std::array<uint8_t, podBufferSize> memory;
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, memory.data(), uint32_t(memory.size()));
    std::array<const spa_pod *, 2> parameters{
        newBuffers(&builder, m_size.width() * bytesPerPixel, m_size.height()),
        newHeader(&builder),
    };
    pw_stream_update_params(m_stream.get(), parameters.data(), uint32_t(parameters.size()));
}

void Camera::setClockRunning(bool running)
{
    timespec first = {};
    timespec interval = {};
    if (running && m_rate > 0) {
        first = nanoseconds(1);
        interval = nanoseconds(SPA_NSEC_PER_SEC / m_rate);
    }
    pw_loop_update_timer(pw_main_loop_get_loop(m_loop.get()), m_clock, &first, &interval, false);
}

void Camera::onTimeout(void *data, uint64_t)
{
    pw_stream_trigger_process(static_cast<Camera *>(data)->m_stream.get());
}

void Camera::onProcess(void *data)
{
    static_cast<Camera *>(data)->sendFrame();
}

void Camera::sendFrame()
{
    pw_buffer *buffer = pw_stream_dequeue_buffer(m_stream.get());
    if (!buffer)
        return; // nobody has given one back yet: the frame is left out
    spa_buffer *frame = buffer->buffer;
    spa_data &plane = frame->datas[0];
    const int stride = m_size.width() * bytesPerPixel;
    const auto length = uint32_t(stride * m_size.height());
    if (plane.data && plane.maxsize >= length) {
        drawTestPicture({static_cast<uint8_t *>(plane.data), length}, m_size, m_frame);
        plane.chunk->offset = 0;
        plane.chunk->size = length;
        plane.chunk->stride = stride;
    }
    if (auto *header = static_cast<spa_meta_header *>(
            spa_buffer_find_meta_data(frame, SPA_META_Header, sizeof(spa_meta_header)))) {
        header->flags = 0;
        header->seq = m_frame;
        header->pts = int64_t(pw_stream_get_nsec(m_stream.get()));
        header->dts_offset = 0;
    }
    ++m_frame;
    pw_stream_queue_buffer(m_stream.get(), buffer);
}

void Camera::onSignal(void *data, int)
{
    pw_main_loop_quit(static_cast<Camera *>(data)->m_loop.get());
}

} // namespace DemoCamera
