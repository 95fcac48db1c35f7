# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Cameras for a machine that has none: a PipeWire of our own, and programs that offer test pictures through it."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
from pathlib import Path
from typing import Any

from desktop import wait_for

FIRST_CAMERA = "Demo Camera"


class DemoCameras:
    """Sees only its own cameras, whatever the machine has. All processes end with this one."""

    def __init__(self, directory: Path, sockets: Path, build: Path):
        """The sockets' folder has a short path, which the files' folder need not have."""
        self._directory = directory
        self._sockets = sockets
        self._program = build / "tools" / "democamera"
        self._daemons: list[subprocess.Popen] = []
        self._cameras: dict[str, subprocess.Popen] = {}

    @property
    def environment(self) -> dict[str, str]:
        """What a program needs in its environment to see the cameras; nothing before they were started."""
        return self._address() if self._daemons else {}

    def start(self) -> None:
        """Starts PipeWire and plugs the first camera."""
        self._directory.mkdir(parents=True, exist_ok=True)
        self._sockets.mkdir(mode=0o700, parents=True, exist_ok=True)
        self._daemons.append(self._run("pipewire"))
        wait_for("PipeWire", (self._sockets / "pipewire-0").is_socket, 30)
        # Without the machine's devices, and without a session bus.
        self._daemons.append(self._run("wireplumber", "--profile", "policy"))
        self.plug(FIRST_CAMERA)
        wait_for("the camera to be offered", lambda: self.default() == FIRST_CAMERA, 30)

    def plug(self, name: str, *sizes: str, priority: int = 1000) -> None:
        """Programs that name no camera get the one with the highest priority."""
        options = [f"--size={size}" for size in sizes]
        self._cameras[name] = self._run(str(self._program), f"--name={name}", f"--priority={priority}", *options)
        wait_for(f"the camera {name!r}", lambda: name in self.plugged(), 30)

    def unplug(self, name: str) -> None:
        self._end(self._cameras.pop(name))
        wait_for(f"the camera {name!r} to go", lambda: name not in self.plugged(), 30)

    def plugged(self) -> list[str]:
        """The cameras that programs can find."""
        return [
            properties["node.description"]
            for node in self._dump("Node")
            if (properties := node["info"].get("props", {})).get("media.class") == "Video/Source"
        ]

    def default(self) -> str | None:
        """The camera of programs that name none."""
        for metadata in self._dump("Metadata"):
            for entry in metadata.get("metadata", []):
                if entry["key"] == "default.video.source":
                    return entry["value"]["name"]
        return None

    def end(self) -> None:
        for process in [*self._cameras.values(), *reversed(self._daemons)]:
            self._end(process)
        self._cameras.clear()
        self._daemons.clear()
        shutil.rmtree(self._sockets, ignore_errors=True)

    def _dump(self, kind: str) -> list[dict[str, Any]]:
        """Everything of that kind that PipeWire knows."""
        done = subprocess.run(["pw-dump"], env=self._process_environment(), capture_output=True, text=True, timeout=30)
        if done.returncode:
            return []
        return [entry for entry in json.loads(done.stdout) if entry["type"] == f"PipeWire:Interface:{kind}"]

    def _address(self) -> dict[str, str]:
        return {"PIPEWIRE_RUNTIME_DIR": str(self._sockets), "PIPEWIRE_REMOTE": "pipewire-0"}

    def _process_environment(self) -> dict[str, str]:
        return os.environ | self._address() | {
            "XDG_CONFIG_HOME": str(self._directory / "config"),
            "XDG_STATE_HOME": str(self._directory / "state"),
        }

    def _run(self, *command: str) -> subprocess.Popen:
        name = Path(command[0]).name
        with (self._directory / f"{name}.log").open("ab") as log:
            return subprocess.Popen(
                ["setpriv", "--pdeathsig", "TERM", *command], env=self._process_environment(), stdout=log, stderr=log
            )

    @staticmethod
    def _end(process: subprocess.Popen) -> None:
        process.terminate()
        try:
            process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def machine_has_camera() -> bool:
    return any(os.access(device, os.R_OK | os.W_OK) for device in Path("/dev").glob("video*"))
