// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace EmulationManagement::Internal {

// Decides who tells monitors of cameras that are made from now on. V4L2's device provider and PipeWire's offer the same
// cameras, and PipeWire's hides the other; but what streams from PipeWire is the desktop's default camera, whichever is
// chosen. So PipeWire's is left out where V4L2 has cameras.
//
// That asks all of V4L2's cameras what they can do, which may take a while. Any thread may call it.
void rankCameraProviders();

} // namespace EmulationManagement::Internal
