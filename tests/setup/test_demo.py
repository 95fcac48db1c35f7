#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: test_demo.py: what a session of the demo leaves where, with a machine that boots nothing."""

from __future__ import annotations

import os
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(PROJECT / "tools" / "demo"), str(PROJECT / "tests" / "utils")]

import rows  # noqa: E402
from desktop import wait_for  # noqa: E402
from session import Session, is_running  # noqa: E402

# Stands in for the IDE: says that it was started, and stays.
IDE = """#!/bin/sh
echo started
exec sleep 1000
"""


class DemoTest(unittest.TestCase):
    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        # As somebody's clone may be called.
        self.clone = Path(scratch.name) / "my projects & more" / "a-folder-with-a-name-that-is-rather-long" / "clone-1"
        self.image = self.make_image("image-1")
        self.directory = self.clone / "build" / "session"
        runtime = Path(scratch.name) / "run"
        runtime.mkdir()
        os.environ["XDG_RUNTIME_DIR"] = str(runtime)
        self.runtime = runtime

    def make_image(self, name: str) -> Path:
        image = self.clone / name
        image.mkdir(parents=True)
        subprocess.run(["qemu-img", "create", "-q", "-f", "qcow2", image / "disk.qcow2", "1M"], check=True)
        return image

    def session(self, image: Path | None = None) -> Session:
        session = Session(self.directory, self.clone / "build", image or self.image)
        self.addCleanup(session.end)
        return session

    def start_machine(self, session: Session) -> None:
        """Starts the emulator's machine without the image's kernel."""
        domain = ElementTree.fromstring(session.definition())
        system = domain.find("os")
        for tag in ("kernel", "initrd", "cmdline"):
            system.remove(system.find(tag))
        file = self.clone / "no-kernel.xml"
        ElementTree.ElementTree(domain).write(file)
        session.virsh("create", str(file))

    def backing_file(self) -> Path:
        printed = subprocess.run(
            ["qemu-img", "info", self.directory / "disk.qcow2"], check=True, capture_output=True, text=True
        ).stdout
        line = next(line for line in printed.splitlines() if line.startswith("backing file:"))
        return Path(line.partition(": ")[2])


class SessionTest(DemoTest):
    def test_the_machine_runs_below_a_long_path_with_blanks(self) -> None:
        session = self.session()
        session.prepare()
        self.start_machine(session)
        self.assertIsNotNone(session.qemu_pid())

        # The next session finds it and takes it over.
        other = self.session()
        other.prepare()
        self.assertEqual(other.qemu_pid(), session.qemu_pid())
        self.assertIn("Velmo Demo", other.virsh("list", "--name"))

        other.end()
        self.assertIsNone(session.qemu_pid())
        self.assertEqual(list(self.runtime.glob("velmo-*")), [])

    def test_an_image_keeps_its_disk(self) -> None:
        self.session().prepare()
        disk = (self.directory / "disk.qcow2").stat()
        definition = self.session().definition()
        self.session().prepare()
        self.assertEqual((self.directory / "disk.qcow2").stat().st_ino, disk.st_ino)
        self.assertEqual(self.session().definition(), definition)

    def test_another_image_gets_another_disk(self) -> None:
        session = self.session()
        session.prepare()
        self.start_machine(session)
        image = self.make_image("image-2")
        other = self.session(image)
        other.prepare()
        self.assertIsNone(other.qemu_pid())
        self.assertEqual(self.backing_file(), image / "disk.qcow2")
        self.assertIn(str(image / "vmlinuz").replace("&", "&amp;"), other.definition())

    def test_an_image_made_anew_gets_another_disk(self) -> None:
        self.session().prepare()
        disk = (self.directory / "disk.qcow2").stat()
        os.utime(self.image / "disk.qcow2", ns=(1, 1))
        self.session().prepare()
        self.assertNotEqual((self.directory / "disk.qcow2").stat().st_mtime_ns, disk.st_mtime_ns)


class OpenTest(DemoTest):
    def setUp(self) -> None:
        super().setUp()
        ide = self.clone / "build" / "ide" / "bin" / "qtcreator"
        ide.parent.mkdir(parents=True)
        ide.write_text(IDE)
        ide.chmod(0o755)

    def open(self) -> subprocess.Popen:
        process = subprocess.Popen(
            [
                sys.executable, PROJECT / "tools" / "demo" / "open.py",
                "--build", self.clone / "build", "--image", self.image, "--directory", self.directory,
            ],
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
        )  # fmt: skip
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def wait_for_ide(self) -> None:
        log = self.directory / "ide.log"
        wait_for("the IDE", lambda: log.exists() and "started" in log.read_text(), 60)

    def test_a_second_one_is_refused(self) -> None:
        first = self.open()
        self.wait_for_ide()
        second = self.open()
        self.assertEqual(second.wait(60), 1)
        self.assertEqual(second.stdout.read(), "The demo is open already; close its Qt Creator first.\n")
        self.assertIsNone(first.poll())

    def test_nothing_is_left_when_it_is_ended(self) -> None:
        process = self.open()
        self.wait_for_ide()
        children = Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()
        self.assertEqual(len(children), 1)
        process.terminate()
        self.assertEqual(process.wait(60), 128 + 15)
        self.assertFalse(is_running(int(children[0])))
        self.assertEqual(list(self.runtime.glob("velmo-*")), [])

    def test_what_goes_wrong_is_told_in_a_line(self) -> None:
        (self.image / "disk.qcow2").unlink()
        process = self.open()
        self.assertEqual(process.wait(60), 1)
        printed = process.stdout.read()
        self.assertRegex(printed, "^The demo could not be opened: .*disk.qcow2")
        self.assertEqual(len(printed.splitlines()), 1, printed)


if __name__ == "__main__":
    sys.exit(rows.run(unittest.defaultTestLoader.loadTestsFromModule(sys.modules[__name__])))
