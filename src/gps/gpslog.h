// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLoggingCategory>

namespace EmulationManagement::Internal {

Q_DECLARE_LOGGING_CATEGORY(gpsLog)

} // namespace EmulationManagement::Internal
