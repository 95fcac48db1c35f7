// SPDX-FileCopyrightText: EmulationManagement contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "camera/cameralog.h"

namespace EmulationManagement::Internal {

Q_LOGGING_CATEGORY(cameraLog, "emulationmanagement.camera", QtWarningMsg)

} // namespace EmulationManagement::Internal
