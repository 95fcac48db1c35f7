// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace Robustness {

class FaultProxy;
class PluginSide;
class UserScript;

/// Both ends hold what the script expects, over one connection. Fails the running test otherwise.
void compareEnds(PluginSide &side, UserScript &script, FaultProxy &proxy);

} // namespace Robustness
