// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "remote/remotelog.h"

namespace EmulationManagement::Internal {

Q_LOGGING_CATEGORY(remoteLog, "emulationmanagement.remote", QtWarningMsg)

} // namespace EmulationManagement::Internal
