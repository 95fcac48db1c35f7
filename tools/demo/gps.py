# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The GPS page as a person uses it."""

from __future__ import annotations

from pathlib import Path

from filedialog import choose_file
from guest import GPS, Guest
from ide import Ide
from page import Page

DIALOG = "Open NMEA File"


class GpsPage(Page):
    def __init__(self, ide: Ide, guest: Guest):
        super().__init__(ide, guest, GPS)

    def show(self) -> None:
        self.ide.show_page("GPS Management")

    def is_enabled(self, role: str, name: str) -> bool:
        return self.control(role, name).enabled

    def open_track(self, file: Path) -> None:
        self.click("button", "Open a track file")
        choose_file(self.desktop, DIALOG, file)

    def choose_speed(self, speed: str) -> None:
        self.choose_entry("Track speed", speed)

    def drag_progress(self, length: int, part: float) -> None:
        """Drags the handle of a track of that length to a part of the slider's way."""
        slider = self.control("slider", "Track progress").rectangle
        handle = 13
        way = slider.width - handle
        start, end = (round(slider.x + handle / 2 + way * at) for at in (self.progress() / (length - 1), part))
        y = slider.centre[1]
        self.desktop.drag((start, y), (end, y), 8)

    def progress(self) -> float:
        return self.control("slider", "Track progress").value or 0
