# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the services inside the emulator saw and hold: asked over SSH, on the guest's own system bus."""

from __future__ import annotations

import json
import shlex
from typing import Any

from gi.repository import GLib

from session import Emulator

INVOKER_LOG = "/var/log/remote-dbus-invoker.log"
CAMERA = "ru.kelo.CameraEmulation"
GPS = "ru.kelo.GeoclueEmulationManagement"
SENSORS = "ru.kelo.SensorfwEmulationManagement"


class Guest:
    def __init__(self, emulator: Emulator):
        self._emulator = emulator

    def run(self, *command: str) -> str:
        return self._emulator.ssh(shlex.join(command))

    # --- the invoker ----------------------------------------------------------------------------

    def wire(self) -> list[dict[str, Any]]:
        """What the invoker saw and sent since the emulator was started, oldest first.

        Of very much, the last 32 MiB at least; frames of more than a million characters are cut.
        """
        log = self._emulator.ssh(f"cat {INVOKER_LOG}.old 2>/dev/null; cat {INVOKER_LOG}")
        return [json.loads(line) for line in log.splitlines()]

    def frames(self) -> list[str]:
        """The requests the invoker got, each as it came, see wire()."""
        return [entry["text"] for entry in self.wire() if entry["event"] == "text"]

    def restart_invoker(self) -> None:
        """Ends the invoker; the guest's init starts it again."""
        self.run("killall", "remote-dbus-invoker")

    # --- the services ---------------------------------------------------------------------------

    def properties(self, service: str) -> dict[str, Any]:
        path = "/" + service.replace(".", "/")
        printed = self.run(
            "gdbus", "call", "--system", "--dest", service, "--object-path", path,
            "--method", "org.freedesktop.DBus.Properties.GetAll", service,
        )  # fmt: skip
        return GLib.Variant.parse(None, printed, None, None).unpack()[0]

    def sensors(self) -> dict[str, Any]:
        return self.properties(SENSORS)

    def gps(self) -> dict[str, Any]:
        return self.properties(GPS)

    def camera(self) -> dict[str, Any]:
        return self.properties(CAMERA)

    def call(self, service: str, method: str, *arguments: str) -> None:
        """Calls a service from inside, past the invoker."""
        path = "/" + service.replace(".", "/")
        self.run(
            "gdbus", "call", "--system", "--dest", service, "--object-path", path,
            "--method", f"{service}.{method}", *arguments,
        )  # fmt: skip

    def call_sensors(self, method: str, *arguments: str) -> None:
        self.call(SENSORS, method, *arguments)

    def sensors_when(self, wanted: dict[str, Any]) -> dict[str, Any] | None:
        """The sensors' state once it holds what is wanted, None before."""
        state = self.sensors()
        return state if all(state[name] == value for name, value in wanted.items()) else None

    def sensors_answer(self) -> bool:
        """Whether the sensor service is there."""
        try:
            self.sensors()
        except RuntimeError:
            return False
        return True

    # --- packages -------------------------------------------------------------------------------

    def packages(self) -> list[str]:
        return self.run("rpm", "-qa").split()

    def remove_package(self, name: str) -> None:
        self.run("rpm", "-e", name)

    # --- services that come and go --------------------------------------------------------------

    def stop_service(self, name: str) -> None:
        """Ends a service for good: init does not find it executable when it would start it again."""
        self.run("chmod", "-x", f"/usr/lib/emulator/services/{name}")
        self.run("killall", name)

    def start_service(self, name: str) -> None:
        self.run("chmod", "+x", f"/usr/lib/emulator/services/{name}")
