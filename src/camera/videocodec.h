// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace EmulationManagement::Internal {

// The name of a file's video codec, as GStreamer describes it ("VP8 video", say). Empty when there is none, or when the
// file cannot be read. Reads the file at once; gives up after 2 seconds.
QString videoCodec(const QString &filePath);

bool isSupportedVideoCodec(const QString &codec);

} // namespace EmulationManagement::Internal
