#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Opens the IDE with the plugin and the demo emulator for a person, and stays until the person closes it."""

from __future__ import annotations

import argparse
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from session import Session  # noqa: E402


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--image", type=Path, required=True)
    parser.add_argument("--directory", type=Path, required=True)
    options = parser.parse_args()

    session = Session(options.directory, options.build, options.image)
    session.prepare()
    session.start_ide()
    print("Qt Creator is open. Choose Tools > Velmo OS > Emulation Management… to start the emulator.")
    assert session.ide
    try:
        code = session.ide.wait()
    finally:
        session.shut_emulator_down()
        session.end()
    print(f"Settings, the emulator's disk and the IDE's log stay in {options.directory}.")
    return code


if __name__ == "__main__":
    sys.exit(main())
