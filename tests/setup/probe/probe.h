// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// What a person does in the IDE. Each prints what it sees, a line for each fact, and returns false when it could not
/// be done.
namespace Probe {

/// The plugins that are loaded, the menu entry, the state of the hidden window.
bool look();
/// Chooses the menu entry, answers what is asked, waits for the window, and lets the camera page play a video file.
bool open(const QString &video);
/// Lets the IDE's wizard install an extension from an archive.
bool install(const QString &archive);
/// Removes an extension, which the IDE does at its next start.
bool remove(const QString &id);

} // namespace Probe
