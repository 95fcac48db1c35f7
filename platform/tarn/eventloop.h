// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Tarn::Internal {

// Lets libvirt's events be delivered by the main thread's Qt event loop. Call it on the main thread before the first
// connection is opened; once is enough, more do no harm.
void deliverLibvirtEvents();

} // namespace Tarn::Internal
