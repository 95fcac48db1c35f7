# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the services inside the emulator saw and hold: asked over SSH, on the guest's own system bus."""

from __future__ import annotations

import json
import re
from typing import Any

from session import Emulator

SENSORS = "ru.kelo.SensorfwEmulationManagement"
INVOKER_LOG = "/var/log/remote-dbus-invoker.log"
