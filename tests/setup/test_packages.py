# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What "./dev package" makes, on a machine that has Qt Creator and nothing that it does not bring: installed, used once
with a real emulator, and removed."""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import story
from desktop import wait_for
from guest import Guest
from machine import Machine
from session import PROJECT, Session

PLUGINS = ["plugin: emulationmanagement", "plugin: emulationmanagementprobe", "plugin: tarnplugin"]
PAGES = [
    f"page: {page}ManagementPage" if page in ("sensors", "gps", "camera") else f"page: {page}Page"
    for page in ("sensors", "sensorsValues", "smartphoneModel", "gps", "camera")
]
ENGLISH = ["sdks: 1", "menu: Emulation Management…", "window: Emulation Management", *PAGES]
NOTHING = ["plugin: emulationmanagementprobe", "sdks: 0"]
GERMAN = ["sdks: 1", "menu: Emulationsverwaltung…", "window: Emulationsverwaltung", *PAGES]


class Packages(story.Steps):
    machine: Machine
    session: Session
    guest: Guest
    added: list[str]

    @classmethod
    def setUpClass(cls) -> None:
        cls.packages = story.BUILD / "packages"
        cls.machine = Machine()
        cls.addClassCleanup(cls.machine.remove)
        # The user's folders: those of the machine's IDE, kept from start to start.
        cls.home = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.home, ignore_errors=True)
        cls.session = Session(cls.home / "session", story.BUILD, story.IMAGE)
        cls.addClassCleanup(cls.session.end)
        cls.guest = Guest(cls.session.emulator)

    def ide(self, task: str, *, language: str = "", seconds: float = 400) -> list[str]:
        """Starts the packaged IDE for one task of the probe's, and returns the facts that it has printed."""
        probe = self.home / "probe"
        shutil.copytree(story.BUILD / "tests/setup/probe/plugins", probe, dirs_exist_ok=True)
        self.session.store_settings("%General", {"OverrideLanguage": language or "C"})
        environment = {
            "HOME": str(self.home), "PATH": "/usr/bin:/bin", "LANG": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
            "QT_QUICK_BACKEND": "software", "QT_LOGGING_RULES": "qssh.debug=true;tarn*.debug=true",
        }  # fmt: skip
        if "XDG_RUNTIME_DIR" in os.environ:
            environment["XDG_RUNTIME_DIR"] = os.environ["XDG_RUNTIME_DIR"]
        command = self.machine.as_user(
            "qtcreator", "-pluginpath", probe, "-settingspath", self.session.settings, "-probe", task
        )
        done = subprocess.run(command, env=environment, capture_output=True, text=True, timeout=seconds)
        log = done.stdout + done.stderr
        self.assertEqual(done.returncode, 0, log[-6000:])
        facts = ("plugin: ", "sdks: ", "error: ", "menu: ", "window: ", "page: ", "box: ", "stream: ", "wizard: ", "installed: ")
        return [line for line in done.stdout.splitlines() if line.startswith(facts)]

    def use_the_emulator(self) -> None:
        video = self.home / "video.webm"
        if not video.exists():
            subprocess.run(
                ["gst-launch-1.0", "-q", "videotestsrc", "num-buffers=50", "!", "video/x-raw,width=320,height=240", "!",
                 "vp8enc", "deadline=1", "!", "webmmux", "!", "filesink", f"location={video}"],
                check=True,
            )  # fmt: skip
        enough = self.home / f"{video.name}.enough"
        enough.unlink(missing_ok=True)
        with ThreadPoolExecutor() as pool:
            facts = pool.submit(self.ide, f"open:{video}")
            try:
                wait_for("pictures in the guest", lambda: facts.done() or self.pictures() > 10, 400)
            finally:
                enough.touch()
            self.assertEqual(facts.result(), ["window: visible", "stream: running"])
        self.assertGreater(self.pictures(), 10)
        self.session.kill_emulator()

    def pictures(self) -> int:
        """How many the guest has seen; none before it is up."""
        try:
            return self.guest.camera()["framesReceived"]
        except (RuntimeError, subprocess.TimeoutExpired):
            return 0

    def install_archives(self) -> None:
        for archive in ("tarnplugin-*", "emulationmanagement-*"):
            copy = self.home / self.package(archive).name
            shutil.copy(self.package(archive), copy)
            self.assertEqual(self.ide(f"install:{copy}"), ["wizard: Summary", "installed: yes"])

    def user_files(self) -> list[str]:
        """What lies where the IDE keeps a user's extensions."""
        root = self.home / ".local/share/data/QtProject/qtcreator/plugins"
        return sorted(str(path.relative_to(root)) for path in root.rglob("*") if not path.is_dir())

    # --- the packages themselves ------------------------------------------------------------------

    def test_one_package_and_two_archives_are_made(self) -> None:
        shutil.rmtree(self.packages, ignore_errors=True)
        subprocess.run(["cpack"], cwd=story.BUILD, check=True, capture_output=True)
        shutil.rmtree(self.packages / "_CPack_Packages")
        machine = os.uname().machine
        architecture = subprocess.run(["dpkg", "--print-architecture"], check=True, capture_output=True, text=True).stdout
        self.assertEqual(
            sorted(file.name for file in self.packages.iterdir()),
            [
                f"emulationmanagement-16.0.0-linux-{machine}.tar.xz",
                f"emulationmanagement_16.0.0_{architecture.strip()}.deb",
                f"tarnplugin-16.0.0-linux-{machine}.tar.xz",
            ],
        )

    def package(self, pattern: str) -> Path:
        (file,) = self.packages.glob(pattern)
        return file

    # --- the Debian package -----------------------------------------------------------------------

    def test_what_only_some_need_is_only_suggested(self) -> None:
        fields = subprocess.run(
            ["dpkg-deb", "--field", self.package("*.deb"), "Recommends", "Suggests"], check=True, capture_output=True, text=True
        ).stdout
        recommended, suggested = fields.splitlines()
        self.assertIn("qemu-system-x86", recommended)
        self.assertNotIn("pipewire", recommended)
        self.assertEqual(suggested, "Suggests: gstreamer1.0-pipewire")

    def test_the_package_is_installed_with_what_it_depends_on(self) -> None:
        # The machine's owner may be a user.
        self.machine.as_root("dpkg", "--purge", "emulationmanagement")
        contents = subprocess.run(["dpkg-deb", "--fsys-tarfile", self.package("*.deb")], check=True, capture_output=True)
        listing = subprocess.run(["tar", "-t"], input=contents.stdout, check=True, capture_output=True, cwd="/").stdout
        type(self).added = [file[1:] for file in listing.decode().splitlines() if not self.machine.has(file[1:])]
        self.assertIn("/usr/bin/configs/default.ini", self.added)
        self.assertNotIn("/usr/bin/", self.added)
        self.machine.install(self.package("*.deb"))
        self.assertEqual([file for file in self.added if not self.machine.has(file)], [])
        self.machine.keep_only("qtcreator", "emulationmanagement", recommended=True)
        for program in ("ccache", "mmdebstrap", "openbox", "xdotool"):  # what only building and testing need
            self.assertFalse(self.machine.has(f"/usr/bin/{program}"), program)

    def test_the_ide_shows_it_in_its_user_s_language(self) -> None:
        self.session.prepare()
        self.assertEqual(self.ide("look", language="de"), [*PLUGINS, *GERMAN])

    def test_the_emulator_starts_and_gets_pictures(self) -> None:
        self.use_the_emulator()
        self.assertIn("start='5454' to='1234'", self.session.definition())

    def test_in_its_place_the_archives_start_the_emulator_and_send_pictures(self) -> None:
        self.machine.as_root("dpkg", "--purge", "emulationmanagement")
        self.install_archives()
        self.use_the_emulator()
        self.ide("remove:tarnplugin")
        self.ide("remove:emulationmanagement")
        self.assertEqual(self.ide("look"), NOTHING)
        self.machine.install(self.package("*.deb"))

    def test_without_a_virtual_machine_the_plugin_works_as_well(self) -> None:
        self.machine.keep_only("qtcreator", "emulationmanagement", recommended=False)
        self.assertFalse(self.machine.has("/usr/bin/qemu-system-x86_64"))
        self.session.store_settings("Tarn", {"ConnectionUri": "test:///default"})
        self.assertEqual(self.ide("look"), [*PLUGINS, *ENGLISH])

    def test_removed_it_leaves_nothing(self) -> None:
        self.machine.as_root("dpkg", "--purge", "emulationmanagement")
        self.assertEqual([file for file in self.added if self.machine.has(file)], [])
        self.assertEqual(self.ide("look"), NOTHING)

    # --- the extension archives -------------------------------------------------------------------

    def test_the_ide_s_wizard_installs_the_archives(self) -> None:
        readme = (PROJECT / "README.md").read_text(encoding="utf-8")
        (needed,) = re.findall(r"sudo apt install (gst[^`]+?)\n\n", readme)
        self.machine.keep_only("qtcreator", *needed.replace("\\", "").split(), recommended=False)
        self.assertFalse(self.machine.has("/usr/bin/passt"))
        self.install_archives()

    def test_the_ide_loads_them_when_it_starts_again(self) -> None:
        self.assertEqual(self.ide("look"), [*PLUGINS, *ENGLISH])

    def test_their_translations_would_have_to_be_among_the_ide_s(self) -> None:
        self.assertEqual(self.ide("look", language="de"), [*PLUGINS, *ENGLISH])

    def test_without_the_sdk_it_says_so(self) -> None:
        self.ide("remove:tarnplugin")
        self.assertEqual(self.ide("look"), [plugin for plugin in PLUGINS if "tarn" not in plugin] + ENGLISH)

    def test_removed_they_leave_nothing(self) -> None:
        self.assertNotEqual(self.user_files(), [])
        self.ide("remove:emulationmanagement")
        self.assertEqual(self.ide("look"), NOTHING)
        self.assertEqual(self.user_files(), [])
