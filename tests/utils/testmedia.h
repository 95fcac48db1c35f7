// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

namespace TestUtils {

/// Runs a pipeline, written as for gst-launch-1.0, to its end. "target" names the filesink that writes the file.
/// Returns what went wrong; empty when the file is written.
QString writeMedia(const QString &filePath, const QByteArray &pipeline);

/// A video of one colour: its size in pixels, how many frames, at 30 a second, and with which encoder and container.
struct TestVideo
{
    int width = 160;
    int height = 120;
    int frames = 6;
    QByteArray color = "0xff00ff00"; ///< ARGB
    QByteArray encoder = "vp8enc deadline=1";
    QByteArray container = "webmmux";
    QByteArray format = "I420";
};
QString writeVideo(const QString &filePath, const TestVideo &video);

/// A file that says that it is H.264. Nothing in it can be decoded; to look into it is enough.
QString writeH264(const QString &filePath);

/// Has this process decode H.264, badly: every picture is grey. A host may have no decoder, and then says nothing of
/// the codec.
void installH264Decoder();

} // namespace TestUtils
