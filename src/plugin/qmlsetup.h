// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QQmlContext;

/// What the view's documents need of native code besides the objects that the plugin owns.
namespace EmulationManagement::Internal {

/// Registers the types of the module "org.quova", and lets documents read local files.
void registerViewTypes();

/// Sets the colours of the host's theme as it is now.
void setThemeContextProperties(QQmlContext *context);

} // namespace EmulationManagement::Internal
