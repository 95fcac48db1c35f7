# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The GPS page as a person uses it."""

from __future__ import annotations

from pathlib import Path

from calls import ServiceCalls
from desktop import Element, wait_for
from guest import GPS, Guest
from ide import Ide


class GpsPage:
    def __init__(self, ide: Ide, guest: Guest):
        self.ide = ide
        self.desktop = ide.desktop
        self.guest = guest
        self.calls = ServiceCalls(guest, GPS)

    def show(self) -> None:
        self.ide.show_page("GPS Management")

    def find(self, role: str, name: str) -> Element | None:
        return self.desktop.find(role, name, within=self.ide.view_frame())

    def control(self, role: str, name: str) -> Element:
        return self.desktop.expect(role, name, within=self.ide.view_frame())

    def click(self, role: str, name: str) -> None:
        self.desktop.click(self.control(role, name))

    def is_enabled(self, role: str, name: str) -> bool:
        return self.control(role, name).enabled

    def type_number(self, field: str, number: str) -> None:
        """Writes over what is in the field; Enter is another step."""
        self.desktop.double_click(self.control("text", field))
        self.desktop.press("ctrl+a")
        self.desktop.type(number)

    def open_track(self, file: Path) -> None:
        """Chooses the file in the file dialog by its full name."""
        self.click("button", "Open a track file")
        wait_for("the file dialog", lambda: self.desktop.windows("Open NMEA File"), 60)
        self.desktop.settle()
        self.desktop.type(str(file))
        self.desktop.press("Return")
        wait_for("the file dialog to go", lambda: not self.desktop.windows("Open NMEA File"), 60)

    def choose_speed(self, speed: str) -> None:
        self.click("combo box", "Track speed")
        self.desktop.click(self.desktop.expect("", speed))

    def progress(self) -> float:
        return self.control("slider", "Track progress").value or 0
