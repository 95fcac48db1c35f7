# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The IDE with the plugin that drives its view from outside, see robot.h."""

from __future__ import annotations

import json
import os
import queue
import subprocess
import threading
from pathlib import Path
from typing import Any

from desktop import wait_for

PATIENCE = 60  # seconds


class Robot:
    def __init__(self, command: list[str], environment: dict[str, str], log: Path):
        """The command starts the IDE; the log gets what it complains about."""
        with log.open("ab") as stream:
            self.process = subprocess.Popen(
                command, env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=stream
            )
        self.pid = self.process.pid
        self.last_step = 0
        self._log = log
        self._answers: queue.Queue[dict[str, Any] | None] = queue.Queue()
        self._ready = threading.Event()
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    @staticmethod
    def command(build: Path, settings: Path, *arguments: str) -> list[str]:
        return [
            str(build / "ide" / "bin" / "qtcreator"), "-settingspath", str(settings),
            "-pluginpath", str(build / "lib" / "qtcreator" / "plugins"),
            "-pluginpath", str(build / "tests" / "soak" / "plugins"), *arguments,
        ]  # fmt: skip

    @staticmethod
    def environment(home: Path) -> dict[str, str]:
        """Nothing of the user's. What a stream fails of is in the log."""
        return os.environ | {
            "HOME": str(home),
            "XDG_CONFIG_HOME": str(home / "config"),
            "XDG_CACHE_HOME": str(home / "cache"),
            "XDG_DATA_HOME": str(home / "data"),
            "QT_LOGGING_RULES": "emulationmanagement.camera.debug=true",
        }

    def wait_until_ready(self, seconds: float = 2 * PATIENCE) -> None:
        wait_for("the IDE", lambda: self._ready.is_set() or self.process.poll() is not None, seconds)
        if not self._ready.is_set():
            raise RuntimeError(f"the IDE ended with {self.process.returncode}: {self.log_tail()}")

    def send(self, do: str, **command: Any) -> None:
        """Without waiting for the answer."""
        self.process.stdin.write(json.dumps({"do": do, **command}).encode() + b"\n")
        self.process.stdin.flush()

    def do(self, do: str, **command: Any) -> dict[str, Any]:
        self.send(do, **command)
        try:
            answer = self._answers.get(timeout=PATIENCE)
        except queue.Empty:
            raise RuntimeError(f"no answer to {do!r} {command}: {self.log_tail()}") from None
        if answer is None:
            raise RuntimeError(f"the IDE ended with {self.process.wait()} at {do!r} {command}: {self.log_tail()}")
        if "error" in answer:
            raise RuntimeError(f"{answer['error']}; {self.state()}")
        return answer

    def click(self, item: str) -> None:
        self.do("click", item=item)

    def get(self, item: str, name: str) -> Any:
        return self.do("get", item=item, property=name)["value"]

    def state(self) -> dict[str, Any]:
        return self.do("state")

    def open_view(self, seconds: float = PATIENCE) -> None:
        """Chooses the menu entry, once the emulator is known, and waits for the window."""
        wait_for("the emulator to be listed", lambda: self.state()["emulator"], PATIENCE)
        self.do("open")

        def is_visible() -> bool:
            state = self.state()
            if state["box"]:
                raise RuntimeError(f"a message in place of the view: {state['box']!r}")
            return state["visible"]

        wait_for("the view", is_visible, seconds)

    def quit(self) -> None:
        self.send("quit")
        code = self.process.wait(timeout=PATIENCE)
        if code:
            raise RuntimeError(f"the IDE ended with {code}: {self.log_tail()}")

    def kill(self) -> None:
        """As if the machine had no mercy. Everything printed before has been read afterwards."""
        self.process.kill()
        self.process.wait()
        self._reader.join()
        self.process.stdin.close()
        self.process.stdout.close()

    def end(self) -> None:
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def log_tail(self) -> str:
        lines = self._log.read_text(errors="replace").splitlines()
        of_the_platform = "This plugin does not support"
        return "\n".join([line for line in lines if of_the_platform not in line][-20:])

    def _read(self) -> None:
        for line in self.process.stdout:
            if line.startswith(b"answer "):
                self._answers.put(json.loads(line.removeprefix(b"answer ")))
            elif line.startswith(b"step "):
                self.last_step = int(line.split()[1])
            elif line == b"ready\n":
                self._ready.set()
        self._answers.put(None)
