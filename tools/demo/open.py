#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Opens the IDE with the plugin and the demo emulator for a person, and stays until the person closes it."""

from __future__ import annotations

import argparse
import fcntl
import signal
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from camera import FIRST_CAMERA, machine_has_camera  # noqa: E402
from desktop import Timeout  # noqa: E402
from session import Session  # noqa: E402
from tracks import write_tracks  # noqa: E402


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--image", type=Path, required=True)
    parser.add_argument("--directory", type=Path, required=True)
    options = parser.parse_args()

    options.directory.mkdir(parents=True, exist_ok=True)
    with (options.directory / "lock").open("w") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            print("The demo is open already; close its Qt Creator first.", file=sys.stderr)
            return 1
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
        return open_session(Session(options.directory, options.build, options.image))


def open_session(session: Session) -> int:
    try:
        session.prepare()
        tracks = session.directory / "tracks"
        write_tracks(tracks)
        plug_camera(session)
        session.start_ide()
        print("Qt Creator is open. Choose Tools > Velmo OS > Emulation Management… to start the emulator.")
        print(f"Sample tracks for its GPS page are in {tracks}.", flush=True)
        assert session.ide
        code = session.ide.wait()
        session.ide = None
        if code:
            print(f"Qt Creator ended with exit code {code}; its log is {session.log}.", file=sys.stderr)
    except KeyboardInterrupt:
        code = 128 + signal.SIGINT
    except (RuntimeError, OSError, subprocess.SubprocessError) as error:
        print(f"The demo could not be opened: {error}", file=sys.stderr)
        return 1
    finally:
        end(session)
    print(f"Settings, the emulator's disk and the IDE's log stay in {session.directory}.")
    return code


def plug_camera(session: Session) -> None:
    """A machine without a camera gets one."""
    if machine_has_camera():
        return
    try:
        session.cameras.start()
        print(f"This machine has no camera; its place is taken by one named {FIRST_CAMERA}.")
    except (OSError, Timeout, subprocess.SubprocessError) as error:
        session.cameras.end()
        print(f"There will be no camera: {error}", file=sys.stderr)


def end(session: Session) -> None:
    """Leaves no process behind, whatever goes wrong on the way."""
    try:
        session.end_ide()  # the driver belongs to one process at a time
        session.shut_emulator_down()
    except (RuntimeError, OSError, subprocess.SubprocessError) as error:
        print(f"The emulator could not be shut down and is killed: {error}", file=sys.stderr)
    finally:
        session.end()


if __name__ == "__main__":
    sys.exit(main())
