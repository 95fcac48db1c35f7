// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/videocodec.h"

#include "camera/cameralog.h"
#include "camera/gsthandles.h"

#include <QFileInfo>
#include <QUrl>

#include <gst/pbutils/pbutils.h>

namespace EmulationManagement::Internal {

QString videoCodec(const QString &filePath)
{
    // Anything else, a named pipe for one, might keep GStreamer waiting before it watches the time.
    if (!QFileInfo(filePath).isFile())
        return {};

    constexpr GstClockTime timeout = 2 * GST_SECOND;
    GError *error = nullptr;
    const std::unique_ptr<GstDiscoverer, GObjectDeleter> discoverer(gst_discoverer_new(timeout, &error));
    GErrorPointer errorOwner(error);
    if (!discoverer) {
        qCDebug(cameraLog) << "Cannot look into files:" << (error ? error->message : "");
        return {};
    }

    error = nullptr;
    const QByteArray url = QUrl::fromLocalFile(filePath).toString().toUtf8();
    const std::unique_ptr<GstDiscovererInfo, GObjectDeleter> information(
        gst_discoverer_discover_uri(discoverer.get(), url.constData(), &error));
    errorOwner.reset(error);
    if (error)
        qCDebug(cameraLog) << "Cannot look into" << filePath << ':' << error->message;
    if (!information)
        return {};

    // The tags of the whole file. Its successors, by stream, leave open which stream to ask.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    const GstTagList *tags = gst_discoverer_info_get_tags(information.get());
    G_GNUC_END_IGNORE_DEPRECATIONS
    gchar *codec = nullptr;
    if (tags)
        gst_tag_list_get_string(tags, GST_TAG_VIDEO_CODEC, &codec);
    return QString::fromUtf8(GCharPointer(codec).get());
}

bool isSupportedVideoCodec(const QString &codec)
{
    using namespace Qt::StringLiterals;
    return codec.contains("VP8"_L1) || codec.contains("VP9"_L1);
}

} // namespace EmulationManagement::Internal
