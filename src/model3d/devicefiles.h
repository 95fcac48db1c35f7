// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <functional>

class QSettings;

// The installed files that tell of emulated devices: INI files beside the executable, one a device.
namespace EmulationManagement::Internal::DeviceFiles {

// A path beside the executable.
QString path(const QString &name);

// Calls back with each "*.ini" of a folder, "" for the executable's own, in the order of the file system. What is no
// plain file, or larger than any sensible one, counts as empty: the start of the IDE waits for this.
void forEach(const QString &folder, const std::function<void(QSettings &)> &read);

// A value as it was written: QSettings makes a list of a text with commas.
QString text(const QSettings &file, const QString &key);

} // namespace EmulationManagement::Internal::DeviceFiles
