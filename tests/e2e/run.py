#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: run.py BUILD_FOLDER IMAGE_FOLDER MODULE

Runs one module of end-to-end tests: the real IDE's window on a desktop without a display, the real emulator. Tests of a
class share one IDE and run in the order in which they are written, as steps of one story; after a failed step the story
ends.
"""

from __future__ import annotations

import sys
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(PROJECT / "tools" / "demo"), str(PROJECT / "tests" / "utils")]

import rows  # noqa: E402
import story  # noqa: E402


class InWrittenOrder(unittest.TestLoader):
    def getTestCaseNames(self, case: type) -> list[str]:
        return [name for name in case.__dict__ if name.startswith("test_")]


def main() -> int:
    story.BUILD, story.IMAGE = (Path(argument).resolve() for argument in sys.argv[1:3])
    return rows.run(InWrittenOrder().loadTestsFromName(sys.argv[3]))


if __name__ == "__main__":
    sys.exit(main())
