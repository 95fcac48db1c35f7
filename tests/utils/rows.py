# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs unittest's tests and says what came of each as Qt Test does, which is what the summary of a test run reads."""

from __future__ import annotations

import sys
import unittest


class RowResult(unittest.TextTestResult):
    """Prints a line for each test, and unittest's own words about those that fail."""

    def __init__(self, *arguments, **options) -> None:
        super().__init__(*arguments, **options)
        self.counts = {"PASS": 0, "FAIL!": 0, "SKIP": 0}

    def _print(self, result: str, test: unittest.TestCase) -> None:
        self.counts[result] += 1
        kind = type(test)
        # What fails before the first test of a class is no test of a class.
        name = getattr(test, "_testMethodName", str(test).replace("(", "[").replace(")", "]"))
        print(f"{result:<7}: {kind.__qualname__}::{name}()", file=self.stream, flush=True)

    def addSuccess(self, test: unittest.TestCase) -> None:
        super().addSuccess(test)
        self._print("PASS", test)

    def addFailure(self, test: unittest.TestCase, error) -> None:
        super().addFailure(test, error)
        self._print("FAIL!", test)

    def addError(self, test: unittest.TestCase, error) -> None:
        super().addError(test, error)
        self._print("FAIL!", test)

    def addSkip(self, test: unittest.TestCase, reason: str) -> None:
        super().addSkip(test, reason)
        self._print("SKIP", test)


def run(suite: unittest.TestSuite) -> int:
    """Returns the program's exit code."""
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=0, resultclass=RowResult).run(suite)
    passed, failed, skipped = result.counts.values()
    print(f"Totals: {passed} passed, {failed} failed, {skipped} skipped")
    return 0 if passed and result.wasSuccessful() else 1
