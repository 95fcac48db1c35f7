// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Tarn {

// A kind of device that an emulator can pretend to be.
struct DeviceModel
{
    QString name; // empty when the emulator's definition names none

    friend bool operator==(const DeviceModel &, const DeviceModel &) = default;
};

} // namespace Tarn
