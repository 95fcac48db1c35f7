// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gps/gpslog.h"

namespace EmulationManagement::Internal {

Q_LOGGING_CATEGORY(gpsLog, "emulationmanagement.gps", QtWarningMsg)

} // namespace EmulationManagement::Internal
