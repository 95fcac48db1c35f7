// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <gst/gst.h>

// What GStreamer says of a device, in the form in which the manager keeps it. Framerates and sizes are read from
// GStreamer's serialised texts; a framerate is a text of numerator, "/" and denominator.
namespace EmulationManagement::Internal {

// A device's class, and the kinds of pictures that are made use of.
inline constexpr char cameraClass[] = "Video/Source";
inline constexpr char rawPictures[] = "video/x-raw";
inline constexpr char jpegPictures[] = "image/jpeg";

// An end of a range of framerates.
enum LIMIT { LOWER = 0, UPPER = 1 };

// The framerates of a comma-separated text, those with a denominator other than 1 truncated to whole ones.
QStringList normalizeFractions(const QString &text);

// An end of a range such as "[ 15/2, 30/1 ]", truncated to a whole number. What is missing or cannot be divided is 1.
int parseGstFramerate(const QString &text, LIMIT which);

// Appends the framerates that are offered for a range: multiples of 5 between its ends, the lower end and the one above
// it. The last may pass the upper end; none is above 1000.
void initFrameratesFromRange(QStringList *framerates, const QString &text);

// Appends the framerates of a list, a range or a single framerate, and sorts the list, the highest numerators first.
void initAvailableFramerates(QStringList *framerates, const QString &text);

// Appends a map with "width", "height", "string" (such as "640x480") and "framerates", unless one of this size is
// there already. A size that is absent, not a plain number or below 1 is left out.
void addAvailableResolution(
    QVariantList *resolutions, const QStringList &framerates, const char *width, const char *height);

// The resolutions of all structures of the caps, the widest first. The first structure of a size wins. Null caps have
// none.
QVariantList availableResolutions(const GstCaps *caps);

// Whether a size and framerate, texts of caps such as ",width=640,height=480" and ",framerate=30/1", come as JPEG and
// not as raw pictures. Where the framerate comes in neither way, the size alone decides. Null caps offer nothing.
bool isJpegOnly(const GstCaps *caps, const QString &size, const QString &framerate);

// A map with "name" and "value" of the property by which an element made for the device is told which device it is:
// "device" or "device-index", else "device-path"; both texts are empty when it has none of them. The value is in
// GStreamer's serialised form.
QVariantMap retrieveCameraDeviceProperty(GstDevice *device);

// The display name, which a user may have chosen.
QString deviceName(GstDevice *device);

} // namespace EmulationManagement::Internal
