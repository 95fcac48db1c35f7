# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The IDE as a person sees it: its window, its menus, its boxes, and the window of the plugin."""

from __future__ import annotations

import re
import subprocess

from desktop import Desktop, Element, wait_for
from session import Session

VIEW_TITLE = "Emulation Management"


class Ide:
    def __init__(self, desktop: Desktop, session: Session):
        self.desktop = desktop
        self.session = session
        self.title = ""

    def wait_until_open(self, seconds: float = 60) -> None:
        def title() -> str:
            if self.session.ide and self.session.ide.poll() is not None:
                raise RuntimeError(f"the IDE ended with exit code {self.session.ide.returncode}")
            menu_bar = self.desktop.find("menu item", "Tools")
            return "Qt Creator" if menu_bar and self.desktop.windows("Qt Creator") else ""

        self.title = wait_for("the IDE's window", title, seconds)

    def quit(self, seconds: float = 120) -> int:
        """Quits the IDE with its keys and returns its exit code."""
        self.activate_main_window()
        self.desktop.press("ctrl+q")
        return self.session.wait_for_ide(seconds)

    # --- menus ----------------------------------------------------------------------------------

    def open_menu(self, *path: str | re.Pattern[str]) -> None:
        """Opens the Tools menu and submenus below it, as a person does with the mouse."""
        self.activate_main_window()
        for name in ("Tools", *path):
            self.desktop.click(self.desktop.expect("menu item", name))

    def choose(self, *path: str | re.Pattern[str]) -> None:
        """Chooses an entry of the Tools menu, by way of the submenus named before it."""
        self.open_menu(*path)

    def choose_for_emulator(self, *path: str) -> None:
        """Chooses an entry of the emulator's own menu, whose title ends in the emulator's state."""
        self.choose("Velmo OS", re.compile(f"^{re.escape(self.session.emulator.name)} \\("), *path)

    def activate_main_window(self) -> None:
        """The plugin's window may lie above the IDE's."""
        for window in self.desktop.windows(self.title):
            self.desktop.activate(window)

    # --- boxes ----------------------------------------------------------------------------------

    def box(self, title: str | re.Pattern[str], seconds: float = 120) -> Element:
        return wait_for(
            f"a box {title!r}",
            lambda: self.desktop.find("dialog", title) or self.desktop.find("alert", title),
            seconds,
        )

    @staticmethod
    def box_texts(box: Element) -> list[str]:
        """The texts of a message box, from top to bottom."""
        labels = [element for element in box.walk() if element.role == "label" and element.showing and element.name]
        return [label.name for label in sorted(labels, key=lambda label: label.rectangle.y)]

    def answer(self, box: Element, button: str) -> None:
        self.desktop.click(self.desktop.expect("button", button, within=box))

    def error_text(self) -> str:
        """The text of the view's error box, empty while there is none."""
        error = self.desktop.find("", re.compile(r"\.Error\."))
        return error.name if error else ""

    def dismiss_error(self) -> None:
        self.desktop.click(self.desktop.expect("button", "OK"))
        wait_for("the error box to go", lambda: not self.error_text(), 30)

    # --- the plugin's window --------------------------------------------------------------------

    def view(self) -> str | None:
        """The id of the plugin's window, or None while it is hidden."""
        windows = self.desktop.windows(VIEW_TITLE)
        return windows[0] if windows else None

    def wait_for_view(self, seconds: float = 180) -> str:
        window = wait_for("the window of the plugin", self.view, seconds)
        self.desktop.wait_until_painted(window)
        return window

    def view_frame(self) -> Element:
        return self.desktop.expect("frame", VIEW_TITLE)

    def activate_view(self) -> Element:
        """Brings the plugin's window to the front."""
        self.desktop.activate(self.wait_for_view(30))
        return self.view_frame()

    def close_view(self) -> None:
        self.activate_view()
        self.desktop.press("alt+F4")
        wait_for("the window of the plugin to go", lambda: self.view() is None, 30)

    def click_page_button(self, page: str) -> None:
        self.desktop.click(self.desktop.expect("button", page, within=self.activate_view()))

    def show_page(self, page: str) -> None:
        """Shows the page of that name: its button says that it is the current one."""
        self.click_page_button(page)
        wait_for(
            f"the page {page!r}",
            lambda: self.desktop.expect("button", page, within=self.view_frame()).checked,
            30,
        )

    def geometry(self, window: str) -> str:
        shell = subprocess.run(
            ["xdotool", "getwindowgeometry", "--shell", window], capture_output=True, text=True, check=True
        ).stdout
        values = dict(re.findall(r"(\w+)=(\d+)", shell))
        return f"{values['WIDTH']} x {values['HEIGHT']} pixels"
