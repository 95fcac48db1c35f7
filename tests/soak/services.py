# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The inside of an emulator on this machine: its services and an SSH server, on the ports a machine would forward."""

from __future__ import annotations

import getpass
import shutil
import socket
import subprocess
from pathlib import Path
from typing import Any

from gi.repository import Gio, GLib

from desktop import wait_for

SSH_PORT = 2222
INVOKER_PORT = 5454
CAMERA_PORT = 34343
PACKAGES = ["sensorfw-qt5-emulator-plugins", "remote-dbus-invoker", "geoclue-emulator", "gstreamer-emulator"]


class Services:
    def __init__(self, build: Path, directory: Path):
        self._program = build / "emulator" / "bin" / "emulator-host"
        self._directory = directory
        self._log = directory / "invoker.log"
        self._noted = self._filled = 0
        self._host: subprocess.Popen | None = None
        self._bus: Gio.DBusConnection | None = None

    def start(self) -> None:
        self._noted = self._filled = 0
        ports = ["--port", str(INVOKER_PORT), "--camera-port", str(CAMERA_PORT)]
        command = [self._program, *ports, "--directory", self._directory]
        self._host = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        name, _, address = self._host.stdout.readline().strip().partition("=")
        if name != "DBUS_SYSTEM_BUS_ADDRESS":
            raise RuntimeError("the services do not start")
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        self._bus.set_exit_on_close(False)

    def stop(self) -> None:
        """Their exit code tells of a crash of any of them."""
        if not self._host:
            return
        self._bus.close_sync(None)
        self._host.terminate()
        if self._host.wait(timeout=60):
            raise RuntimeError("a service has crashed")
        self._host.stdout.close()
        self._host = None

    def properties(self, service: str) -> dict[str, Any]:
        answer = self._bus.call_sync(
            service, "/" + service.replace(".", "/"), "org.freedesktop.DBus.Properties", "GetAll",
            GLib.Variant("(s)", (service,)), None, Gio.DBusCallFlags.NONE, 30_000, None,
        )  # fmt: skip
        return answer.unpack()[0]

    def pictures(self) -> int:
        """How many the camera's receiver has got."""
        return self.properties("ru.kelo.CameraEmulation")["framesReceived"]

    def traffic(self) -> int:
        """How much the invoker has noted about the wire since the start, in bytes; it begins a new file at times."""
        size = self._log.stat().st_size if self._log.exists() else 0
        if size < self._noted:
            self._filled += self._log.with_name(self._log.name + ".old").stat().st_size
        self._noted = size
        return self._filled + size

    def greeted(self, times: int = 1) -> bool:
        """Whether the IDE has sent all that it sends on a connection: at its end the position, for the second time."""
        return self._log.exists() and self._log.read_text().count("setPosition") >= 2 * times


class SshServer:
    """Answers every command with a list of packages."""

    def __init__(self, directory: Path):
        self._directory = directory
        self.user = getpass.getuser()
        self.key = directory / "client"
        self._sshd: subprocess.Popen | None = None
        directory.mkdir(parents=True, exist_ok=True)
        for name in ("host", "client"):
            subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", directory / name], check=True)
        (directory / "packages").write_text("".join(f"{package}-1.2.3-1.i486\n" for package in PACKAGES))
        (directory / "config").write_text(
            f"ListenAddress 127.0.0.1\nPort {SSH_PORT}\nHostKey {directory}/host\n"
            f"AuthorizedKeysFile {directory}/client.pub\nForceCommand cat {directory}/packages\n"
            "StrictModes no\nUsePAM no\nPasswordAuthentication no\nPidFile none\n"
        )

    def start(self) -> None:
        program = shutil.which("sshd", path="/usr/sbin:/usr/bin")
        with (self._directory / "log").open("ab") as log:
            self._sshd = subprocess.Popen([program, "-D", "-e", "-f", self._directory / "config"], stderr=log)
        wait_for("the SSH server", self._answers, 30)

    def stop(self) -> None:
        if self._sshd:
            self._sshd.terminate()
            self._sshd.wait(timeout=30)
            self._sshd = None

    @staticmethod
    def _answers() -> bool:
        try:
            with socket.create_connection(("127.0.0.1", SSH_PORT), timeout=1) as connection:
                return connection.recv(8).startswith(b"SSH-2.0")
        except OSError:
            return False
