# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A desktop without a display, and the eyes and hands of a person in front of it.

Xvfb shows the windows, openbox manages them, xdotool moves the mouse and presses keys. Where a control is on the screen
is asked over the accessibility bus, by its role and name: what a screen reader would find is what gets clicked.
"""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import time
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import TypeVar

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

T = TypeVar("T")


class Timeout(Exception):
    """Something that was waited for did not happen."""


def wait_for(what: str, condition: Callable[[], T | None], seconds: float = 60) -> T:
    """Polls until the condition is true and returns its value; raises Timeout naming what was waited for.

    What is waited for needs the machine more than who waits: a look that takes long is followed by as long a pause, and
    the pauses grow with the time.
    """
    begin = time.monotonic()
    while True:
        look = time.monotonic()
        value = condition()
        if value:
            return value
        now = time.monotonic()
        if now > begin + seconds:
            raise Timeout(f"waited {seconds:.0f} s for {what}")
        time.sleep(max(0.1, now - look, (now - begin) / 40))


@dataclass
class Rectangle:
    x: int
    y: int
    width: int
    height: int

    @property
    def centre(self) -> tuple[int, int]:
        return self.x + self.width // 2, self.y + self.height // 2


class Element:
    """Something on the screen, as the accessibility bus knows it."""

    def __init__(self, accessible: Atspi.Accessible):
        self._accessible = accessible

    @property
    def name(self) -> str:
        return self._accessible.get_name() or ""

    @property
    def description(self) -> str:
        return self._accessible.get_description() or ""

    @property
    def role(self) -> str:
        return self._accessible.get_role_name()

    @property
    def rectangle(self) -> Rectangle:
        extents = self._accessible.get_extents(Atspi.CoordType.SCREEN)
        return Rectangle(extents.x, extents.y, extents.width, extents.height)

    def has(self, state: Atspi.StateType) -> bool:
        return self._accessible.get_state_set().contains(state)

    @property
    def showing(self) -> bool:
        return self.has(Atspi.StateType.SHOWING) and self.rectangle.width > 0

    @property
    def enabled(self) -> bool:
        return self.has(Atspi.StateType.ENABLED)

    @property
    def checked(self) -> bool:
        return self.has(Atspi.StateType.CHECKED)

    @property
    def value(self) -> float | None:
        interface = self._accessible.get_value_iface()
        return Atspi.Value.get_current_value(interface) if interface else None

    @property
    def text(self) -> str:
        interface = self._accessible.get_text_iface()
        return Atspi.Text.get_text(interface, 0, Atspi.Text.get_character_count(interface)) if interface else ""

    def children(self) -> Iterator[Element]:
        for index in range(self._accessible.get_child_count()):
            child = self._accessible.get_child_at_index(index)
            if child is not None:
                yield Element(child)

    def walk(self) -> Iterator[Element]:
        yield self
        for child in self.children():
            yield from child.walk()

    def __repr__(self) -> str:
        return f"{self.role} {self.name!r}"


class Desktop:
    """One X server with a window manager and an accessibility bus; use as a context manager."""

    def __init__(self, display: str | None = None, size: str = "1600x1000"):
        self._display = display
        self._size = size
        self._processes: list[subprocess.Popen] = []
        self._pointer: tuple[int, int] | None = None

    def __enter__(self) -> Desktop:
        if self._display is None:
            self._start_xvfb()
        self.environment = os.environ | {
            "DISPLAY": self._display,
            "QT_QPA_PLATFORM": "xcb",
            "QT_ACCESSIBILITY": "1",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "NO_AT_BRIDGE": "0",
        }
        for name in ("QT_QUICK_BACKEND",):
            self.environment.pop(name, None)
        os.environ.update(self.environment)
        self._start("openbox", "--sm-disable")
        Atspi.init()
        return self

    def __exit__(self, *_: object) -> None:
        for process in reversed(self._processes):
            process.terminate()
        for process in self._processes:
            try:
                process.wait(timeout=10)
            except subprocess.TimeoutExpired:
                process.kill()

    def _start_xvfb(self) -> None:
        reading, writing = os.pipe()
        self._processes.append(
            subprocess.Popen(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{self._size}x24", "-nolisten", "tcp"],
                pass_fds=[writing],
                stderr=subprocess.DEVNULL,
            )
        )
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self._display = f":{number}"

    def _start(self, *command: str) -> None:
        self._processes.append(
            subprocess.Popen(
                command, env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
            )
        )

    # --- eyes -----------------------------------------------------------------------------------

    @staticmethod
    def settle() -> None:
        """Takes in what the accessibility bus has announced since the last look."""
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)

    def applications(self) -> list[Element]:
        self.settle()
        return list(Element(Atspi.get_desktop(0)).children())

    def find(
        self,
        role: str,
        name: str | re.Pattern[str] = "",
        within: Element | None = None,
        showing: bool = True,
    ) -> Element | None:
        """The first element of that role (any, if empty) whose name is the text or matches the pattern."""
        self.settle()
        roots = [within] if within else self.applications()
        for root in roots:
            try:
                for element in root.walk():
                    if (role and element.role != role) or (showing and not element.showing):
                        continue
                    if isinstance(name, re.Pattern) and name.search(element.name):
                        return element
                    if isinstance(name, str) and name in ("", element.name):
                        return element
            except GLib.Error:
                continue  # a window went away while we looked
        return None

    def expect(self, role: str, name: str | re.Pattern[str] = "", seconds: float = 60, **options) -> Element:
        wanted = name.pattern if isinstance(name, re.Pattern) else name
        return wait_for(f"the {role} {wanted!r}", lambda: self.find(role, name, **options), seconds)

    def screenshot(self, path: Path) -> Path:
        path.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", "root", str(path)], env=self.environment, check=True)
        return path

    def wait_until_painted(self, window: str) -> None:
        """A new window is empty until its first frame: fewer colours than any text has."""

        def colours() -> int:
            found = subprocess.run(
                ["import", "-window", window, "-format", "%k", "info:"],
                env=self.environment,
                capture_output=True,
                text=True,
            )
            return int(found.stdout or 0)

        wait_for(f"the content of window {window}", lambda: colours() > 16, 60)

    def windows(self, title: str) -> list[str]:
        """Ids of the visible windows with exactly that title."""
        found = subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$"],
            env=self.environment,
            capture_output=True,
            text=True,
        )
        return found.stdout.split()

    # --- hands ----------------------------------------------------------------------------------

    def _xdotool(self, *arguments: object) -> None:
        subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, check=True)

    def click(self, target: Element | tuple[int, int]) -> None:
        x, y = target.rectangle.centre if isinstance(target, Element) else target
        self.move(x, y)
        self._xdotool("click", 1)

    def move(self, x: int, y: int) -> None:
        if self._pointer != (x, y):  # xdotool would wait many seconds for the pointer to leave its place
            self._xdotool("mousemove", "--sync", x, y)
            self._pointer = (x, y)

    def double_click(self, target: Element) -> None:
        self.move(*target.rectangle.centre)
        self._xdotool("click", "--repeat", 2, "--delay", 50, 1)

    def scroll(self, notches: int) -> None:
        """Turns the mouse wheel downwards, where the mouse stands."""
        self._xdotool("click", "--repeat", notches, 5)

    def drag(self, start: tuple[int, int], end: tuple[int, int], steps: int = 10) -> None:
        """Presses at one point, moves to the other in steps, and lets go."""
        self.move(*start)
        self._xdotool("mousedown", 1)
        for step in range(1, steps + 1):
            x = start[0] + (end[0] - start[0]) * step // steps
            y = start[1] + (end[1] - start[1]) * step // steps
            self.move(x, y)
        self._xdotool("mouseup", 1)

    def press(self, *keys: str) -> None:
        self._xdotool("key", *keys)

    @contextmanager
    def holding(self, key: str) -> Iterator[None]:
        """Holds a key down meanwhile; of one that is no modifier, the X server makes more and more presses."""
        self._xdotool("keydown", key)
        try:
            yield
        finally:
            self._xdotool("keyup", key)

    def type(self, text: str) -> None:
        self._xdotool("type", "--delay", "20", "--", text)

    def activate(self, window: str) -> None:
        self._xdotool("windowactivate", "--sync", window)


def require_programs(*programs: str) -> None:
    for program in programs:
        if not shutil.which(program):
            raise RuntimeError(f"the program {program} is not installed")
