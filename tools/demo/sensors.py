# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sensor pages as a person uses them, and the calls that the guest's sensor service gets meanwhile."""

from __future__ import annotations

from desktop import Element, wait_for
from guest import SENSORS, Guest
from ide import Ide

PREFIX = f"system {SENSORS} /{SENSORS.replace('.', '/')} {SENSORS} "


class SensorCalls:
    """The calls to the sensor service, each as method and arguments, from a mark on. One connection keeps their order."""

    def __init__(self, guest: Guest):
        self._guest = guest
        self._mark = 0

    def start_behind(self, frames: list[str]) -> None:
        """Passes over frames that were seen already."""
        self._mark = len(frames)

    def since_mark(self) -> list[str]:
        calls = []
        for frame in self._guest.frames()[self._mark :]:
            if not frame.startswith(PREFIX):
                raise RuntimeError(f"not for the sensor service: {frame!r}")
            calls.append(frame.removeprefix(PREFIX))
        return calls

    def take(self, count: int) -> list[str]:
        """All calls since the mark, once there are that many; sets the mark behind them."""
        calls = wait_for(f"{count} calls", lambda: (found := self.since_mark()) and len(found) >= count and found, 60)
        self._mark += len(calls)
        return calls

    def take_until(self, marker: str) -> list[str]:
        """The calls that came before the marker, once that is there; sets the mark behind it."""
        calls = wait_for(f"the call {marker!r}", lambda: marker in (found := self.since_mark()) and found, 60)
        position = calls.index(marker)
        self._mark += position + 1
        return calls[:position]


class SensorPages:
    def __init__(self, ide: Ide, guest: Guest):
        self.ide = ide
        self.desktop = ide.desktop
        self.guest = guest
        self.calls = SensorCalls(guest)

    def find(self, role: str, name: str) -> Element | None:
        return self.desktop.find(role, name, within=self.ide.view_frame())

    def control(self, role: str, name: str) -> Element:
        return self.desktop.expect(role, name, within=self.ide.view_frame())

    def click(self, role: str, name: str) -> None:
        self.desktop.click(self.control(role, name))

    def choose_entry(self, box: str, entry: str) -> None:
        self.click("combo box", box)
        self.desktop.click(self.desktop.expect("", entry))

    def drag_slider(self, name: str, pixels: int, steps: int) -> None:
        """Drags a slider's handle, which stands in the middle, to the right."""
        x, y = self.control("slider", name).rectangle.centre
        self.desktop.drag((x, y), (x + pixels, y), steps)

    def type_number(self, field: str, number: str) -> None:
        """Writes over what is in the field; Enter is another step."""
        self.desktop.double_click(self.control("text", field))
        self.desktop.press("ctrl+a")
        self.desktop.type(number)

    def shown_thousandths(self, field: str) -> int:
        """What a field with three decimals shows."""
        return round(float(self.control("text", field).text) * 1000)

    def switch_off(self, sensor: str) -> None:
        """Unticks a sensor's box on the management page and applies that."""
        self.ide.show_page("Sensors Management")
        self.click("check box", sensor)
        self.click("button", "Apply")

    def choose_device_model(self, model: str) -> None:
        self.ide.choose_for_emulator("Device Model", model)
        self.ide.activate_view()
