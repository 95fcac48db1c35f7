# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The camera page as a person uses it, and the pictures that the guest gets meanwhile."""

from __future__ import annotations

import subprocess
from pathlib import Path
from typing import Any

from desktop import wait_for
from filedialog import choose_file
from guest import CAMERA, Guest
from ide import Ide
from page import Page

DIALOG = "Open Video File"


class CameraPage(Page):
    def __init__(self, ide: Ide, guest: Guest):
        super().__init__(ide, guest, CAMERA)

    def show(self) -> None:
        self.ide.show_page("Camera Management")

    def choose_entry(self, box: str, entry: str) -> None:
        self.click("combo box", box)
        # What is in force is written beside the boxes, with the same words.
        self.desktop.click(self.desktop.expect("menu item", entry))

    def entries(self, box: str) -> list[str]:
        """What the box offers, from top to bottom."""
        self.click("combo box", box)
        self.control("menu item", "")
        items = [item for item in self.ide.view_frame().walk() if item.role == "menu item" and item.showing]
        self.desktop.press("Escape")
        return [item.name for item in sorted(items, key=lambda item: item.rectangle.y)]

    def start(self) -> None:
        self.click("button", "Start stream")

    def stop(self) -> None:
        self.click("button", "Stop")

    def is_enabled(self, button: str) -> bool:
        return self.control("button", button).enabled

    def open_video(self, file: Path) -> None:
        self.click("button", "Open a video file")
        choose_file(self.desktop, DIALOG, file)

    def frames(self) -> int:
        """How many pictures the guest has got since it was started."""
        return self.guest.camera()["framesReceived"]

    def wait_for_silence(self) -> int:
        """Waits until the guest has got no picture for two seconds, and returns how many it has got."""
        wait_for("the guest's pictures to end", lambda: not self.guest.camera()["streaming"], 60)
        return self.frames()

    def wait_for_frames(self, count: int, **wanted: Any) -> dict[str, Any]:
        """Waits until the guest gets pictures of that kind, and that many more."""

        def state() -> dict[str, Any] | None:
            found = self.guest.camera()
            return found if all(found[name] == value for name, value in wanted.items()) else None

        first = wait_for(f"pictures with {wanted} in the guest", state, 60)["framesReceived"]
        return wait_for(
            f"{count} pictures with {wanted} in the guest",
            lambda: (found := state()) and found["framesReceived"] >= first + count and found,
            60,
        )


def write_video(file: Path, color: int, size: tuple[int, int] = (320, 240), seconds: int = 1) -> None:
    """Writes a VP8 video of one colour, 15 pictures a second."""
    width, height = size
    file.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(
        [
            "gst-launch-1.0", "-q",
            "videotestsrc", "pattern=solid-color", f"foreground-color={color}", f"num-buffers={15 * seconds}",
            "!", f"video/x-raw,format=I420,width={width},height={height},framerate=15/1",
            "!", "vp8enc", "deadline=1", "!", "webmmux", "!", "filesink", f"location={file}",
        ],
        check=True,
    )  # fmt: skip
