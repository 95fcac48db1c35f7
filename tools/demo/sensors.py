# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The sensor pages as a person uses them."""

from __future__ import annotations

from guest import SENSORS, Guest
from ide import Ide
from page import Page


class SensorPages(Page):
    def __init__(self, ide: Ide, guest: Guest):
        super().__init__(ide, guest, SENSORS)

    def drag_slider(self, name: str, pixels: int, steps: int) -> None:
        """Drags a slider's handle, which stands in the middle, to the right."""
        x, y = self.control("slider", name).rectangle.centre
        self.desktop.drag((x, y), (x + pixels, y), steps)

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
