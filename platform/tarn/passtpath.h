// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Tarn::Internal {

// libvirt finds passt through the PATH. Puts our stand-in for it (see passt/main.cpp) in front, for this process and
// what it starts; does nothing when passt itself is not installed, so that this is noticed. Main thread only.
void preferOurPasst();

} // namespace Tarn::Internal
