# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What a person does on any page of the plugin's window, and the calls that a service of the guest gets meanwhile."""

from __future__ import annotations

from calls import ServiceCalls
from desktop import Element
from guest import Guest
from ide import Ide


class Page:
    def __init__(self, ide: Ide, guest: Guest, service: str):
        self.ide = ide
        self.desktop = ide.desktop
        self.guest = guest
        self.calls = ServiceCalls(guest, service)

    def find(self, role: str, name: str) -> Element | None:
        return self.desktop.find(role, name, within=self.ide.view_frame())

    def control(self, role: str, name: str) -> Element:
        return self.desktop.expect(role, name, within=self.ide.view_frame())

    def click(self, role: str, name: str) -> None:
        self.desktop.click(self.control(role, name))

    def choose_entry(self, box: str, entry: str) -> None:
        self.click("combo box", box)
        self.desktop.click(self.desktop.expect("", entry))

    def type_number(self, field: str, number: str) -> None:
        """Writes over what is in the field; Enter is another step."""
        self.desktop.double_click(self.control("text", field))
        self.desktop.press("ctrl+a")
        self.desktop.type(number)
