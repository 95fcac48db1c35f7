// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

namespace Robustness {

/// Handles events until a condition, which only events can change, holds; false when it does not within a minute.
/// Unlike QTest's loops this never sleeps, so that a proxy in this process is as quick as one of its own.
bool waitFor(const std::function<bool()> &condition);

/// Deletes the objects that wait for a running event loop, which a test function has not.
void deleteWhatIsDue();

} // namespace Robustness
