#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: test-summary.py RESULTS RING...

Adds up what CTest has left in the folder RESULTS: a line for each ring, the slowest programs, whatever went wrong, and
a last line "N passed, N failed, N skipped". The folder has

    expected.json   the programs that were to run, as "ctest --show-only=json-v1" lists them
    NAME.xml        the results of a run of CTest, as JUnit has them; one for each that was started
    NAME.exit       its exit code

What is counted is distinct: a row that runs in several programs, say in several time zones, is one row. The functions
that only prepare and clean up are none. A program with the label "rows" has to print its rows, as Qt Test does, and
totals that agree with them; any other is a command, which counts as one test. Rows of programs with the label
"helpers", which test what only tests use, are shown apart.
"""

from __future__ import annotations

import json
import re
import sys
import xml.etree.ElementTree as ElementTree
from collections.abc import Iterable
from dataclasses import dataclass, field
from pathlib import Path

ROW = re.compile(r"^(PASS|FAIL!|XPASS|SKIP) *: (.+)$", re.MULTILINE)
TOTALS = re.compile(r"^Totals: (\d+) passed, (\d+) failed, (\d+) skipped", re.MULTILINE)
# A failed or skipped row is followed by the reason.
NAME = re.compile(r"(.+?\(.*?\))(?: .*)?$")
NO_ROW = re.compile(r"::(init|cleanup)TestCase\(")
ROWS, HELPERS = "rows", "helpers"
SLOWEST = 10


@dataclass
class Program:
    """What a program was found to have done."""

    name: str
    labels: set[str]
    seconds: float = 0
    passed: set[str] = field(default_factory=set)
    failed: set[str] = field(default_factory=set)
    skipped: set[str] = field(default_factory=set)
    problems: list[str] = field(default_factory=list)


def judge(case: ElementTree.Element, labels: set[str]) -> Program:
    program = Program(case.get("name", ""), labels, float(case.get("time") or 0))
    output = case.findtext("system-out") or ""
    ended_well = case.get("status") == "run"
    if ROWS in labels:
        read_rows(output, program, ended_well)
    elif ended_well:
        program.passed.add(program.name)
    if not ended_well and not program.failed:
        program.problems.append("ended badly" if case.get("status") == "fail" else "did not run")
    return program


def read_rows(output: str, program: Program, ended_well: bool) -> None:
    printed = 0
    rows = {"PASS": program.passed, "FAIL!": program.failed, "XPASS": program.failed, "SKIP": program.skipped}
    for result, text in ROW.findall(output):
        printed += 1
        with_reason = result != "PASS" and NAME.match(text)
        name = with_reason.group(1) if with_reason else text
        if result == "PASS" and NO_ROW.search(name):
            continue
        rows[result].add(name)
    if not ended_well or program.failed:
        return  # it may have ended before it could print all
    totals = [tuple(map(int, row)) for row in TOTALS.findall(output)]
    if not totals:
        program.problems.append("printed no totals")
    elif any(failed for _, failed, _ in totals):
        program.problems.append("counted failures, and ended well")
    elif sum(passed + skipped for passed, _, skipped in totals) != printed:
        program.problems.append(f"printed {printed} rows and other totals: {totals}")
    elif not program.passed:
        program.problems.append("passed no row")


@dataclass
class Ring:
    name: str
    programs: list[Program] = field(default_factory=list)
    problems: list[str] = field(default_factory=list)

    def _rows(self, helpers: bool) -> tuple[set[str], set[str], set[str]]:
        """Passed, failed and skipped; a row that several programs have counts with its worst result."""
        programs = [program for program in self.programs if (HELPERS in program.labels) == helpers]
        failed = set[str]().union(*(program.failed for program in programs))
        skipped = set[str]().union(*(program.skipped for program in programs)) - failed
        passed = set[str]().union(*(program.passed for program in programs)) - failed - skipped
        return passed, failed, skipped

    @property
    def passed(self) -> int:
        return len(self._rows(helpers=False)[0])

    @property
    def passed_helpers(self) -> int:
        return len(self._rows(helpers=True)[0])

    @property
    def failed(self) -> int:
        rows = sum(len(self._rows(helpers)[1]) for helpers in (False, True))
        return rows + sum(len(program.problems) for program in self.programs) + len(self.problems)

    @property
    def skipped(self) -> list[str]:
        return sorted(row for helpers in (False, True) for row in self._rows(helpers)[2])

    def troubles(self) -> Iterable[str]:
        for program in self.programs:
            for row in sorted(program.failed):
                yield f"{program.name}: {row}"
            for problem in program.problems:
                yield f"{program.name}: {problem}"
        for problem in self.problems:
            yield f"ring {self.name}: {problem}"


def expected_programs(folder: Path, run: Ring) -> dict[str, set[str]]:
    """The labels of each program that was to run."""
    try:
        tests = json.loads((folder / "expected.json").read_text())["tests"]
    except (OSError, ValueError) as error:
        run.problems.append(f"nobody knows what was to run: {error}")
        return {}
    return {
        test["name"]: {label for entry in test["properties"] if entry["name"] == "LABELS" for label in entry["value"]}
        for test in tests
    }


def collect(folder: Path, names: list[str]) -> list[Ring]:
    rings = {name: Ring(name) for name in names}
    run = Ring("ctest")  # what belongs to no ring
    cases: dict[str, ElementTree.Element] = {}
    for file in sorted(folder.glob("*.xml")):
        try:
            cases |= {case.get("name", ""): case for case in ElementTree.parse(file).getroot().iter("testcase")}
        except ElementTree.ParseError as error:
            run.problems.append(f"{file.name} cannot be read: {error}")
    for name, labels in expected_programs(folder, run).items():
        for ring in (rings[label] for label in sorted(labels) if label in rings):
            case = cases.get(name)
            ring.programs.append(Program(name, labels, problems=["has no result"]) if case is None else judge(case, labels))
    for ring in rings.values():
        if not ring.programs:
            ring.problems.append("has no program")
    # CTest says with 8 that a program has failed.
    some_failed = any(ring.failed for ring in rings.values())
    for file in sorted(folder.glob("*.exit")):
        code = file.read_text().strip()
        if code != "0" and not (code == "8" and some_failed):
            run.problems.append(f"{file.stem} ended with {code or 'nothing'}")
    if not list(folder.glob("*.exit")):
        run.problems.append("nothing was started")
    return [*rings.values(), *([run] if run.problems else [])]


def print_summary(rings: list[Ring]) -> bool:
    """Returns whether all is well."""
    print("\nring       programs   passed   failed  skipped  of the tests' own helpers")
    for ring in rings:
        helpers = f"{ring.passed_helpers:>9}" if ring.passed_helpers else ""
        row = f"{ring.name:<10} {len(ring.programs):>8} {ring.passed:>8} {ring.failed:>8} {len(ring.skipped):>8} {helpers}"
        print(row.rstrip())
    programs = {program.name: program for ring in rings for program in ring.programs}
    print("\nthe slowest")
    for program in sorted(programs.values(), key=lambda program: -program.seconds)[:SLOWEST]:
        print(f"{program.seconds:>8.1f} s  {program.name}")
    for ring in rings:
        for row in ring.skipped:
            print(f"skipped: {row}")
    for ring in rings:
        for trouble in ring.troubles():
            print(f"failed: {trouble}")
    passed, failed = sum(ring.passed for ring in rings), sum(ring.failed for ring in rings)
    print(f"\n{passed} passed, {failed} failed, {sum(len(ring.skipped) for ring in rings)} skipped")
    return passed > 0 and failed == 0


def main() -> int:
    folder, names = Path(sys.argv[1]), sys.argv[2:]
    return 0 if print_summary(collect(folder, names)) else 1


if __name__ == "__main__":
    sys.exit(main())
