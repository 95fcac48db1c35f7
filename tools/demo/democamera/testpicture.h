// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSize>

#include <cstdint>
#include <span>

namespace DemoCamera {

/// Two bytes a pixel: brightness, and in turns the two differences of colour (YUY2).
constexpr int bytesPerPixel = 2;

/// Draws upright colour bars with a white line that goes down by a pixel with every frame. There must be room for
/// width * height * bytesPerPixel bytes; the width is even.
void drawTestPicture(std::span<uint8_t> pixels, const QSize &size, uint64_t frame);

} // namespace DemoCamera
