# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What every end-to-end test starts from: a desktop, a session of the demo, the IDE in it."""

from __future__ import annotations

import shutil
import unittest
from pathlib import Path

from desktop import Desktop
from guest import Guest
from ide import Ide
from session import Session

BUILD: Path
IMAGE: Path


def own_build_folder(folder: Path) -> Path:
    """A build folder with an executable of its own: files beside that one are this run's alone."""
    shutil.copytree(BUILD / "ide" / "bin", folder / "ide" / "bin")
    for part in ("lib", "ide/lib", "ide/libexec", "ide/share"):
        (folder / part).symlink_to(BUILD / part)
    return folder


class Steps(unittest.TestCase):
    """The tests of a subclass are steps: each starts where the last one ended, and a failure ends the story."""

    broken = False

    def setUp(self) -> None:
        if type(self).broken:
            self.fail("an earlier step of this story failed")

    def run(self, result: unittest.TestResult | None = None) -> unittest.TestResult | None:
        assert result
        troubles = len(result.errors) + len(result.failures)
        super().run(result)
        if len(result.errors) + len(result.failures) > troubles and not type(self).broken:
            type(self).broken = True
            self.show_failure()
        return result

    def show_failure(self) -> None:
        """Shows what the machine was like when a step failed."""


class Story(Steps):
    """The real IDE's window on a desktop without a display, the real emulator."""

    stored: dict[str, object] = {}
    with_cameras = False

    @classmethod
    def setUpClass(cls) -> None:
        directory = BUILD / "e2e" / cls.__name__
        shutil.rmtree(directory, ignore_errors=True)
        cls.pictures = directory / "pictures"
        cls.session = Session(directory, cls.build_folder(directory), IMAGE)
        cls.addClassCleanup(cls.session.end)
        cls.session.prepare()
        if cls.stored:
            cls.session.store_settings("emulationmanagement", cls.stored)
        if cls.with_cameras:
            cls.session.cameras.start()
        cls.desktop = cls.enterClassContext(Desktop())
        cls.guest = Guest(cls.session.emulator)
        cls.ide = Ide(cls.desktop, cls.session)
        cls.start_ide()

    @classmethod
    def build_folder(cls, directory: Path) -> Path:
        """Where the IDE comes from."""
        return BUILD

    @classmethod
    def start_ide(cls) -> None:
        cls.session.start_ide()
        cls.ide.wait_until_open()

    def show_failure(self) -> None:
        self.desktop.screenshot(self.pictures / f"{self._testMethodName}.png")
        print(f"--- the end of the IDE's log\n{self.session.log_tail()}\n---")
