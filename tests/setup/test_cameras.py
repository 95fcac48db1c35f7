#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: test_cameras.py BUILD_FOLDER: the demo's cameras, as other programs find and use them."""

from __future__ import annotations

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(PROJECT / "tools" / "demo"), str(PROJECT / "tests" / "utils")]

import rows  # noqa: E402
from camera import FIRST_CAMERA, DemoCameras  # noqa: E402
from desktop import wait_for  # noqa: E402

BUILD: Path


class CamerasTest(unittest.TestCase):
    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        self.cameras = DemoCameras(self.folder / "files", self.folder / "sockets", BUILD)
        self.addCleanup(self.cameras.end)

    def pictures(self, caps: str) -> int:
        """How many of ten pictures of that kind a program gets that names no camera."""
        target = self.folder / "pictures"
        target.unlink(missing_ok=True)
        pipeline = f"pipewiresrc num-buffers=10 ! video/x-raw,format=YUY2,{caps} ! filesink location={target}"
        done = subprocess.run(
            ["gst-launch-1.0", "-q", *pipeline.split()],
            env=os.environ | self.cameras.environment,
            stderr=subprocess.DEVNULL,
            timeout=60,
        )
        if done.returncode:
            return 0
        size = dict(pair.split("=") for pair in caps.split(","))
        return target.stat().st_size // (int(size["width"]) * int(size["height"]) * 2)

    def test_a_program_gets_each_size_again_and_again(self) -> None:
        self.cameras.start()
        for size in ("width=1280,height=720", "width=640,height=480", "width=320,height=240") * 2:
            self.assertEqual(self.pictures(f"{size},framerate=30/1"), 10, size)

    def test_a_program_that_wants_what_is_not_offered_does_no_harm(self) -> None:
        self.cameras.start()
        self.assertEqual(self.pictures("width=100,height=100,framerate=30/1"), 0)
        wait_for("the camera to be offered again", lambda: self.cameras.default() == FIRST_CAMERA, 30)
        self.assertEqual(self.pictures("width=640,height=480,framerate=15/1"), 10)

    def test_cameras_come_and_go(self) -> None:
        self.assertEqual(self.cameras.environment, {})
        self.cameras.start()
        self.cameras.plug("Вторая камера", "352x288", priority=2000)
        self.assertEqual(sorted(self.cameras.plugged()), [FIRST_CAMERA, "Вторая камера"])
        wait_for("the better camera", lambda: self.cameras.default() == "Вторая камера", 30)
        self.assertEqual(self.pictures("width=352,height=288,framerate=30/1"), 10)
        self.cameras.unplug("Вторая камера")
        wait_for("the other camera", lambda: self.cameras.default() == FIRST_CAMERA, 30)

    def test_nothing_is_left(self) -> None:
        self.cameras.start()
        self.cameras.end()
        self.assertFalse((self.folder / "sockets").exists())
        commands = [file.read_bytes() for file in Path("/proc").glob("[0-9]*/cmdline") if file.exists()]
        for program in (b"pipewire", b"wireplumber", b"democamera"):
            self.assertFalse([command for command in commands if program in command.split(b"\0")[0]], program)

    def test_a_size_that_is_none_is_refused(self) -> None:
        for size in ("640", "640x", "0x480", "641x480", "640x480x2", "100000x2", "axb"):
            done = subprocess.run(
                [BUILD / "tools" / "democamera", f"--size={size}"], capture_output=True, text=True, timeout=30
            )
            self.assertEqual((done.returncode, done.stderr), (1, f"not a size: {size}\n"))

    def test_without_pipewire_it_says_so(self) -> None:
        done = subprocess.run(
            [BUILD / "tools" / "democamera"],
            env=os.environ | {"PIPEWIRE_RUNTIME_DIR": str(self.folder)},
            capture_output=True,
            text=True,
            timeout=30,
        )
        self.assertEqual(done.returncode, 1)
        self.assertIn("PipeWire cannot be reached\n", done.stderr)


if __name__ == "__main__":
    BUILD = Path(sys.argv.pop(1)).resolve()
    sys.exit(rows.run(unittest.defaultTestLoader.loadTestsFromModule(sys.modules[__name__])))
