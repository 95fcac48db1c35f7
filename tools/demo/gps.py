# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The GPS page as a person uses it."""

from __future__ import annotations

from pathlib import Path

from desktop import wait_for
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
        """Chooses the file in the file dialog: goes to its folder, clicks on it and opens it."""
        self.click("button", "Open a track file")
        dialog = wait_for("the file dialog", lambda: self.desktop.windows(DIALOG), 60)[0]
        self.desktop.wait_until_painted(dialog)
        self.desktop.press("ctrl+l", "ctrl+a")
        self.desktop.type(str(file.parent))
        self.desktop.press("Return")
        frame = self.desktop.expect("", DIALOG)
        self.desktop.click(self.desktop.expect("", file.name, within=frame))
        open_button = self.desktop.expect("button", "Open", within=frame)
        wait_for("the dialog's button", lambda: open_button.enabled, 60)
        self.desktop.click(open_button)
        wait_for("the file dialog to go", lambda: not self.desktop.windows(DIALOG), 60)

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
