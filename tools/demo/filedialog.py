# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The file dialog as a person uses it."""

from __future__ import annotations

from pathlib import Path

from desktop import Desktop, wait_for


def choose_file(desktop: Desktop, title: str, file: Path) -> None:
    """Waits for the dialog of that title, goes to the file's folder, clicks on the file and opens it."""
    dialog = wait_for("the file dialog", lambda: desktop.windows(title), 60)[0]
    desktop.wait_until_painted(dialog)
    desktop.press("ctrl+l", "ctrl+a")
    desktop.type(str(file.parent))
    desktop.press("Return")
    frame = desktop.expect("", title)
    desktop.click(desktop.expect("", file.name, within=frame))
    open_button = desktop.expect("button", "Open", within=frame)
    wait_for("the dialog's button", lambda: open_button.enabled, 60)
    desktop.click(open_button)
    wait_for("the file dialog to go", lambda: not desktop.windows(title), 60)
