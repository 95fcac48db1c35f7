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

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools" / "demo"))

import story  # noqa: E402


class InWrittenOrder(unittest.TestLoader):
    def getTestCaseNames(self, case: type) -> list[str]:
        return [name for name in case.__dict__ if name.startswith("test_")]


class Result(unittest.TextTestResult):
    def startTest(self, test: unittest.TestCase) -> None:
        super().startTest(test)
        self.stream.flush()


def main() -> int:
    story.BUILD, story.IMAGE = (Path(argument).resolve() for argument in sys.argv[1:3])
    suite = InWrittenOrder().loadTestsFromName(sys.argv[3])
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2, resultclass=Result).run(suite)
    failed = len(result.failures) + len(result.errors) + len(result.skipped)
    print(f"Totals: {result.testsRun - failed} passed, {failed} failed, 0 skipped")
    return 1 if failed or not result.testsRun else 0


if __name__ == "__main__":
    sys.exit(main())
