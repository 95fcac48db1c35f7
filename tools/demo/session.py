# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A demo: the real IDE with the plugins of a build folder, and one emulator that it can start.

Everything that a session writes lies in its own folder: the IDE's settings, libvirt's state, the emulator's disk.
"""

from __future__ import annotations

import hashlib
import os
import shutil
import signal
import socket
import subprocess
import tempfile
from configparser import ConfigParser
from dataclasses import dataclass, field
from pathlib import Path
from urllib.parse import quote

from camera import DemoCameras
from desktop import Timeout, wait_for

PROJECT = Path(__file__).resolve().parents[2]

@dataclass
class Emulator:
    """The demo emulator: its image, and how its inside is reached over SSH."""

    name: str
    image: Path
    ssh_port: int
    device_model: str

    def ssh(self, *command: str, check: bool = True) -> str:
        """Runs a command inside and returns what it printed."""
        done = subprocess.run(
            [
                "ssh", "-F", "none", "-i", str(self.image / "id_ed25519"), "-p", str(self.ssh_port),
                "-o", "BatchMode=yes", "-o", "StrictHostKeyChecking=no", "-o", "UserKnownHostsFile=/dev/null",
                "-o", "LogLevel=ERROR", "-o", "ConnectTimeout=10",
                # Each new connection costs the machine inside a second.
                "-o", "ControlMaster=auto", "-o", "ControlPersist=20",
                "-o", f"ControlPath={tempfile.gettempdir()}/velmo-%C",
                "root@127.0.0.1", *command,
            ],
            capture_output=True,
            text=True,
            timeout=120,
        )  # fmt: skip
        if check and done.returncode:
            raise RuntimeError(f"{' '.join(command)}: exit code {done.returncode}: {done.stderr.strip()}")
        return done.stdout


@dataclass
class Session:
    directory: Path
    build: Path
    image: Path
    emulator: Emulator = field(init=False)
    ide: subprocess.Popen | None = None

    def __post_init__(self) -> None:
        self.directory.mkdir(parents=True, exist_ok=True)
        self.libvirt = self.directory / "libvirt"
        self.settings = self.directory / "settings"
        self.log = self.directory / "ide.log"
        self._link = short_link(self.libvirt)
        camera_files = self.directory / "cameras"
        self.cameras = DemoCameras(camera_files, short_link(camera_files), self.build)
        self.uri = f"qemu:///embed?root={quote(str(self._link))}"
        self.emulator = Emulator("Velmo Demo", self.image, 2223, "Velmo Phone")

    # --- the emulator ---------------------------------------------------------------------------

    def prepare(self, with_emulator: bool = True) -> None:
        """Writes the settings and defines the emulator, as an installer would."""
        self._link.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
        if not self._link.is_symlink():
            self._link.symlink_to(self.libvirt.resolve())
        configuration = self.libvirt / "etc" / "qemu.conf"
        configuration.parent.mkdir(parents=True, exist_ok=True)
        configuration.write_text(
            'stdio_handler = "file"\nsecurity_driver = "none"\nremember_owner = 0\n'
            "namespaces = []\ncgroup_controllers = []\n"
        )
        # Bars that ask a new user about tours and kits would cover what the demo is about.
        self.store_settings("General", {"SuppressedWarnings": "TakeUITour, LinkWithQtInstallation"})
        self.store_settings("Tarn", {"ConnectionUri": self.uri})
        if with_emulator:
            self._define_emulator()

    def _define_emulator(self) -> None:
        # A disk goes with the image that it was made on, and with no other.
        disk = self.directory / "disk.qcow2"
        base = self.image / "disk.qcow2"
        made_on = self.directory / "disk.image"
        image = f"{base} {base.stat().st_mtime_ns}"
        defined = self.emulator.name in self.virsh("list", "--all", "--name").splitlines()
        if defined and disk.exists() and made_on.exists() and made_on.read_text() == image:
            return
        if defined:
            self.kill_emulator()
            self.virsh("undefine", self.emulator.name)
        made_on.unlink(missing_ok=True)
        disk.unlink(missing_ok=True)
        subprocess.run(["qemu-img", "create", "-q", "-f", "qcow2", "-F", "qcow2", "-b", base, disk], check=True)
        definition = subprocess.run(
            [
                PROJECT / "emulator" / "image" / "make-domain.sh",
                self.emulator.name, self.image, disk, str(self.emulator.ssh_port), self.emulator.device_model,
            ],
            check=True,
            capture_output=True,
            text=True,
        ).stdout  # fmt: skip
        file = self.directory / "emulator.xml"
        file.write_text(definition)
        self.virsh("define", str(file))
        made_on.write_text(image)

    def store_settings(self, group: str, values: dict[str, object]) -> None:
        """Writes into the IDE's settings; only while it does not run."""
        file = self.settings / "QtProject" / "QtCreator.ini"
        file.parent.mkdir(parents=True, exist_ok=True)
        settings = ConfigParser(interpolation=None)
        settings.optionxform = str  # keys keep their case
        settings.read(file)
        settings.read_dict({group: values})
        with file.open("w") as stream:
            settings.write(stream, space_around_delimiters=False)

    def virsh(self, *arguments: str) -> str:
        """Speaks to the embedded driver; only while the IDE does not run, which has it to itself."""
        done = subprocess.run(["virsh", "-q", "-c", self.uri, *arguments], capture_output=True, text=True, timeout=120)
        if done.returncode:
            raise RuntimeError(f"virsh {' '.join(arguments)}: {done.stderr.strip()}")
        return done.stdout

    def definition(self) -> str:
        """The emulator's definition as libvirt keeps it on disk."""
        return (self.libvirt / "etc" / "qemu" / f"{self.emulator.name}.xml").read_text()

    def shut_emulator_down(self, seconds: float = 60) -> None:
        """Switches the emulator off as its power button does; it outlives the IDE otherwise."""
        if not self.qemu_pid():
            return
        self.virsh("shutdown", self.emulator.name)
        try:
            wait_for("the emulator to shut down", lambda: not self.qemu_pid(), seconds)
        except Timeout:
            self.virsh("destroy", self.emulator.name)

    def kill_emulator(self) -> None:
        pid = self.qemu_pid()
        if pid:
            os.kill(pid, signal.SIGKILL)
            wait_for("the emulator to end", lambda: self.qemu_pid() is None, 30)

    def qemu_pid(self) -> int | None:
        """The emulator's process, or None while it is off."""
        for file in self.libvirt.rglob(f"{self.emulator.name}.pid"):
            text = file.read_text().strip()
            if text and is_running(int(text)):
                return int(text)
        return None

    # --- the IDE --------------------------------------------------------------------------------

    def ide_command(self, *arguments: str) -> list[str]:
        return [
            str(self.build / "ide" / "bin" / "qtcreator"),
            "-pluginpath", str(self.build / "lib" / "qtcreator" / "plugins"),
            "-settingspath", str(self.settings),
            *arguments,
        ]  # fmt: skip

    def start_ide(self, *arguments: str) -> None:
        # The log tells which commands went over SSH.
        environment = os.environ | self.cameras.environment
        environment["QT_LOGGING_RULES"] = "qssh.debug=true;tarn*.debug=true"
        with self.log.open("ab") as log:
            self.ide = subprocess.Popen(self.ide_command(*arguments), stdout=log, stderr=log, env=environment)

    def wait_for_ide(self, seconds: float = 60) -> int:
        """Waits until the IDE has ended, and returns its exit code."""
        assert self.ide
        code = self.ide.wait(timeout=seconds)
        self.ide = None
        return code

    def package_checks(self) -> int:
        """How often the IDE has asked for the emulator's packages."""
        return sum("qssh" in line and '"rpm -qa"' in line for line in self.log.read_text(errors="replace").splitlines())

    def console(self) -> str:
        """What the emulator has printed on its console."""
        return (self.directory / "disk.console.log").read_text(errors="replace")

    def log_tail(self, lines: int = 40) -> str:
        text = self.log.read_text(errors="replace") if self.log.exists() else ""
        return "\n".join(text.splitlines()[-lines:])

    def end_ide(self) -> None:
        if self.ide:
            self.ide.kill()
            self.ide.wait()
            self.ide = None

    def end(self) -> None:
        """Leaves no process behind."""
        self.end_ide()
        self.cameras.end()
        self.kill_emulator()
        self._link.unlink(missing_ok=True)

    def remove(self) -> None:
        shutil.rmtree(self.directory, ignore_errors=True)


def short_link(folder: Path) -> Path:
    """Where a link to the folder can be: sockets, whose paths may have 107 bytes, lie below it.

    The name is the same in every run, so that a machine which was left running is found again.
    """
    runtime = os.environ.get("XDG_RUNTIME_DIR", "")
    parent = Path(runtime) if os.path.isdir(runtime) else Path(tempfile.gettempdir()) / f"velmo-{os.getuid()}"
    return parent / f"velmo-{hashlib.sha256(os.fsencode(folder.resolve())).hexdigest()[:8]}"


def is_running(pid: int) -> bool:
    try:
        state = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0]
    except OSError:
        return False
    return state != "Z"  # ended, but nobody has asked for its exit code yet


def connections(port: int) -> int:
    """How many established TCP connections this network has to a port of the loopback interface."""
    count = 0
    for line in Path("/proc/net/tcp").read_text().splitlines()[1:]:
        fields = line.split()
        if fields[3] == "01" and int(fields[2].split(":")[1], 16) == port:
            count += 1
    return count


def port_is_free(port: int) -> bool:
    with socket.socket() as probe:
        probe.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        try:
            probe.bind(("127.0.0.1", port))
        except OSError:
            return False
    return True

