// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>

#include <gst/gst.h>

namespace TestUtils {

/// A camera that exists only in this process. Its source element sends a test picture in the formats of its caps, raw
/// or as JPEG: in the first of them that is wanted of it.
struct TestCamera
{
    /// How the source element is told which camera it is: the names and the order of its properties.
    enum class Source {
        Device,        ///< "device", a text
        DeviceIndex,   ///< "device-index", an int
        DevicePath,    ///< "device-path", a text
        PathAndDevice, ///< "device-path" and then "device"
        DeviceAndPath, ///< "device" and then "device-path"
        Plain,         ///< nothing; it is the camera that was plugged first
    };

    /// Who tells of it. A camera that V4L2 has and PipeWire offers, too, is plugged twice.
    enum class Provider {
        Other,
        V4l2,
        PipeWire, ///< where somebody watches it, V4L2's cameras are hidden
    };

    QString name;
    QByteArray caps = "video/x-raw,format=I420,width=320,height=240,framerate=30/1";
    Source source = Source::Device;
    /// The value of that property.
    QString device = QStringLiteral("/dev/test0");
    QColor color = Qt::blue;
    /// Of videotestsrc; the colour is that of "solid-color".
    QByteArray pattern = "solid-color";
    Provider provider = Provider::Other;
    QByteArray deviceClass = "Video/Source";
};

/// The host's cameras, for a GStreamer that knows no others. All functions may be called in any thread.
class TestCameras
{
public:
    /// Initialises GStreamer and puts device providers of our own in the place of all others. To be called once,
    /// before anything looks for cameras.
    static void install();

    static void plug(const TestCamera &camera);
    /// A camera that is not there is ignored.
    static void unplug(const QString &name);
    static void unplugAll();

    /// A new device, which nothing announces.
    static GstDevice *newDevice(const TestCamera &camera);

    /// Somebody has been told of the cameras, and will be told of changes.
    static bool isWatched();
    static bool isWatched(TestCamera::Provider provider);
};

} // namespace TestUtils
