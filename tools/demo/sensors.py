# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sensor pages as a person uses them."""

from __future__ import annotations

from calls import ServiceCalls
from desktop import Element
from guest import SENSORS, Guest
from ide import Ide


class SensorPages:
    def __init__(self, ide: Ide, guest: Guest):
        self.ide = ide
        self.desktop = ide.desktop
        self.guest = guest
        self.calls = ServiceCalls(guest, SENSORS)

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
