// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "testpicture.h"

#include <algorithm>
#include <array>

namespace DemoCamera {

namespace {

using PixelPair = std::array<uint8_t, 4>; // Y, U, Y, V

constexpr std::array<PixelPair, 7> bars{{
    {180, 128, 180, 128}, // white
    {162, 44, 162, 142},  // yellow
    {131, 156, 131, 44},  // cyan
    {112, 72, 112, 58},   // green
    {84, 184, 84, 198},   // magenta
    {65, 100, 65, 212},   // red
    {35, 212, 35, 114},   // blue
}};
constexpr PixelPair white{235, 128, 235, 128};
constexpr size_t lineHeight = 8;

} // namespace

void drawTestPicture(std::span<uint8_t> pixels, const QSize &size, uint64_t frame)
{
    const auto height = size_t(size.height());
    const size_t pairs = size_t(size.width()) / 2;
    const size_t stride = pairs * sizeof(PixelPair);

    const std::span<uint8_t> firstRow = pixels.first(stride);
    for (size_t i = 0; i < pairs; ++i)
        std::ranges::copy(bars[i * bars.size() / pairs], firstRow.begin() + std::ptrdiff_t(i * sizeof(PixelPair)));
    for (size_t row = 1; row < height; ++row)
        std::ranges::copy(firstRow, pixels.begin() + std::ptrdiff_t(row * stride));

    const size_t top = frame % height;
    const size_t bottom = std::min(top + lineHeight, height);
    for (size_t i = top * pairs; i < bottom * pairs; ++i)
        std::ranges::copy(white, pixels.begin() + std::ptrdiff_t(i * sizeof(PixelPair)));
}

} // namespace DemoCamera
