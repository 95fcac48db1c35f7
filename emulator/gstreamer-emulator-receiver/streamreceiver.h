// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QMutex>
#include <QObject>

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

#include <chrono>
#include <deque>
#include <memory>

namespace Emulator {

struct GstObjectDeleter
{
    void operator()(gpointer object) const { gst_object_unref(object); }
};
using GstElementPointer = std::unique_ptr<GstElement, GstObjectDeleter>;
using GstPadPointer = std::unique_ptr<GstPad, GstObjectDeleter>;
using GstBusPointer = std::unique_ptr<GstBus, GstObjectDeleter>;

/*! What is known of a picture. */
struct Frame
{
    int width = 0;
    int height = 0;
    int red = 0; // means over the picture, 0 to 255
    int green = 0;
    int blue = 0;
};

/*!
    Receives a stream of JPEG pictures over RTP on a UDP port. Packets that are no such stream are dropped, and a stream
    that cannot be decoded does not keep the next one from being received.
*/
class StreamReceiver : public QObject
{
    Q_OBJECT

public:
    explicit StreamReceiver(QObject *parent = nullptr);
    ~StreamReceiver() override;

    /*! Returns an error text; empty when the port is open. */
    QString start(const QString &address, quint16 port);

    /*! How many frames have been decoded. */
    quint64 frameCount() const;
    Frame lastFrame() const;

    /*! Frames a second, over the last of them; 0 before the second. It says nothing of whether any come now. */
    double frameRate() const;
    /*! The picture that came last, as JPEG; empty before the first. */
    QByteArray lastPicture() const;

Q_SIGNALS:
    /*! At least one frame has been decoded since this was last emitted. Emitted in this object's thread. */
    void framesReceived();

private:
    static GstFlowReturn onNewSample(GstAppSink *sink, gpointer receiver);
    static GstPadProbeReturn onPicture(GstPad *pad, GstPadProbeInfo *info, gpointer receiver);
    static GstBusSyncReply onMessage(GstBus *bus, GstMessage *message, gpointer receiver);

    void take(GstSample *sample);
    void announceFrames();
    void restart();

    GstElementPointer m_pipeline;
    mutable QMutex m_mutex; // guards what follows: frames arrive in a thread of GStreamer's
    quint64 m_frameCount = 0;
    Frame m_lastFrame;
    std::deque<std::chrono::steady_clock::time_point> m_arrivals;
    QByteArray m_lastPicture;
    bool m_announced = false;
};

} // namespace Emulator
