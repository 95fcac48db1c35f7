#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: test-summary.py RESULTS RING...

Adds up CTest's results (one JUnit file per ring) to one line per ring and a last line "N passed, N failed".
A Qt Test program counts with its test functions and rows, any other command as one test. A program that ends badly has
at least one failure, whatever it printed before.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

TOTALS = re.compile(r"^Totals: (\d+) passed, (\d+) failed, (\d+) skipped", re.MULTILINE)


def count(case: ElementTree.Element) -> tuple[int, int]:
    output = case.findtext("system-out") or ""
    totals = TOTALS.findall(output)
    passed = sum(int(row[0]) for row in totals)
    failed = sum(int(row[1]) for row in totals)
    if case.get("status") == "run":
        return max(passed, 1), failed
    return passed, max(failed, 1)


def main() -> int:
    results, rings = Path(sys.argv[1]), sys.argv[2:]
    all_passed = all_failed = 0
    print("\nring       programs   passed   failed")
    for ring in rings:
        path = results / f"{ring}.xml"
        passed = failed = 0
        cases = []
        if path.exists():
            cases = ElementTree.parse(path).getroot().findall("testcase")
        for case in cases:
            case_passed, case_failed = count(case)
            passed += case_passed
            failed += case_failed
            if case_failed:
                print(f"  failed: {case.get('name')}")
        print(f"{ring:<10} {len(cases):>8} {passed:>8} {failed:>8}")
        all_passed += passed
        all_failed += failed
    print()
    print(f"{all_passed} passed, {all_failed} failed")
    return 1 if all_failed or not all_passed else 0


if __name__ == "__main__":
    sys.exit(main())
