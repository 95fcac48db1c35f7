#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the summary of a test run says, most of all of runs in which something went wrong without saying so."""

from __future__ import annotations

import json
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "tests" / "utils"))

import rows  # noqa: E402

GOOD = """PASS   : tst_Model::initTestCase()
PASS   : tst_Model::setter(a value of zero)
PASS   : tst_Model::setter(a negative value)
PASS   : tst_Model::cleanupTestCase()
Totals: 4 passed, 0 failed, 0 skipped, 0 blacklisted, 3ms
"""


class Summary(unittest.TestCase):
    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        self.expected: list[dict] = []
        self.suite = ElementTree.Element("testsuite")
        self.exit_code: str | None = "0"

    def add(self, name: str, output: str | None, *labels: str, status: str = "run", seconds: float = 1) -> None:
        """A program that was to run; without output it has no result."""
        self.expected.append({"name": name, "properties": [{"name": "LABELS", "value": list(labels or ("unit", "rows"))}]})
        if output is not None:
            case = ElementTree.SubElement(self.suite, "testcase", name=name, status=status, time=str(seconds))
            ElementTree.SubElement(case, "system-out").text = output

    def summary(self, *rings: str) -> tuple[int, str, str]:
        """Exit code, all that is printed, and its last line."""
        (self.folder / "expected.json").write_text(json.dumps({"tests": self.expected}))
        ElementTree.ElementTree(self.suite).write(self.folder / "together.xml")
        if self.exit_code is not None:
            (self.folder / "together.exit").write_text(f"{self.exit_code}\n")
        return self.printed(*rings)

    def printed(self, *rings: str) -> tuple[int, str, str]:
        done = subprocess.run(
            [PROJECT / "tools" / "test-summary.py", self.folder, *(rings or ("unit",))], capture_output=True, text=True
        )
        self.assertEqual(done.stderr, "")
        return done.returncode, done.stdout, done.stdout.splitlines()[-1]

    def assert_fails(self, trouble: str, last: str, *rings: str) -> None:
        code, text, last_line = self.summary(*rings)
        self.assertEqual(last_line, last, text)
        self.assertIn(f"failed: {trouble}\n", text)
        self.assertEqual(code, 1)

    def assert_passes(self, last: str, *rings: str) -> str:
        code, text, last_line = self.summary(*rings)
        self.assertEqual(last_line, last, text)
        self.assertEqual(code, 0)
        self.assertNotIn("failed: ", text)
        return text

    # --- what is counted ------------------------------------------------------------------------

    def test_rows_are_counted_and_preparing_is_not(self) -> None:
        self.add("tst_model", GOOD)
        self.assert_passes("2 passed, 0 failed, 0 skipped")

    def test_a_command_counts_as_one_test(self) -> None:
        self.add("spelling", "", "check")
        self.assert_passes("1 passed, 0 failed, 0 skipped", "check")

    def test_a_row_of_several_programs_is_one_row(self) -> None:
        for zone in ("UTC", "Europe-Berlin"):
            self.add(f"tst_model-{zone}", GOOD)
        self.assert_passes("2 passed, 0 failed, 0 skipped")

    def test_a_row_that_fails_in_one_of_several_programs_has_failed(self) -> None:
        self.add("tst_model-UTC", GOOD)
        failing = GOOD.replace("PASS   : tst_Model::setter(a value of zero)", "FAIL!  : tst_Model::setter(a value of zero) Oh")
        self.add("tst_model-Berlin", failing.replace("4 passed, 0 failed", "3 passed, 1 failed"), status="fail")
        self.exit_code = "8"
        self.assert_fails("tst_model-Berlin: tst_Model::setter(a value of zero)", "1 passed, 1 failed, 0 skipped")

    def test_rows_of_helpers_are_shown_apart(self) -> None:
        self.add("tst_model", GOOD)
        self.add("tst_proxy", GOOD.replace("Model", "Proxy"), "unit", "rows", "helpers")
        text = self.assert_passes("2 passed, 0 failed, 0 skipped")
        self.assertRegex(text, r"(?m)^unit +2 +2 +0 +0 +2$")

    def test_skipped_rows_are_counted_and_named(self) -> None:
        skipping = GOOD.replace("PASS   : tst_Model::setter(a negative value)", "SKIP   : tst_Model::setter(a negative value) no")
        self.add("tst_model", skipping.replace("4 passed, 0 failed, 0 skipped", "3 passed, 0 failed, 1 skipped"))
        text = self.assert_passes("1 passed, 0 failed, 1 skipped")
        self.assertIn("skipped: tst_Model::setter(a negative value)\n", text)

    def test_an_expected_failure_is_a_row_that_passed(self) -> None:
        expected = "XFAIL  : tst_Model::setter(a negative value) known\n   Loc: [file(1)]\n"
        self.add("tst_model", expected + GOOD)
        self.assert_passes("2 passed, 0 failed, 0 skipped")

    def test_several_totals_of_one_program_add_up(self) -> None:
        self.add("ide_persistence", GOOD + GOOD.replace("setter", "getter"))
        self.assert_passes("4 passed, 0 failed, 0 skipped")

    def test_the_ten_slowest_programs_are_named(self) -> None:
        for number in range(12):
            self.add(f"tst_{number}", GOOD.replace("Model", str(number)), seconds=number + 0.5)
        text = self.assert_passes("24 passed, 0 failed, 0 skipped")
        self.assertEqual(re.findall(r"^ +([\d.]+) s  tst_", text, re.MULTILINE), [f"{n}.5" for n in range(11, 1, -1)])

    # --- what goes wrong ------------------------------------------------------------------------

    def test_a_program_that_prints_nothing_has_failed(self) -> None:
        self.add("tst_model", "")
        self.assert_fails("tst_model: printed no totals", "0 passed, 1 failed, 0 skipped")

    def test_a_program_without_a_row_of_its_own_has_failed(self) -> None:
        only_preparing = "\n".join(line for line in GOOD.splitlines() if "setter" not in line)
        self.add("tst_model", only_preparing.replace("4 passed", "2 passed"))
        self.assert_fails("tst_model: passed no row", "0 passed, 1 failed, 0 skipped")

    def test_a_program_that_skips_all_rows_has_failed(self) -> None:
        skipping = re.sub(r"PASS   : (tst_Model::setter\(.*)", r"SKIP   : \1", GOOD)
        self.add("tst_model", skipping.replace("4 passed, 0 failed, 0 skipped", "2 passed, 0 failed, 2 skipped"))
        self.assert_fails("tst_model: passed no row", "0 passed, 1 failed, 2 skipped")

    def test_rows_that_are_lost_are_noticed(self) -> None:
        self.add("tst_model", GOOD.replace("4 passed", "5 passed"))
        self.assert_fails("tst_model: printed 4 rows and other totals: [(5, 0, 0)]", "2 passed, 1 failed, 0 skipped")

    def test_a_program_that_hides_its_failures_has_failed(self) -> None:
        self.add("tst_model", GOOD.replace("0 failed", "1 failed"))
        self.assert_fails("tst_model: counted failures, and ended well", "2 passed, 1 failed, 0 skipped")

    def test_a_program_that_crashes_after_its_totals_has_failed(self) -> None:
        self.add("tst_model", GOOD, status="fail")
        self.exit_code = "8"
        self.assert_fails("tst_model: ended badly", "2 passed, 1 failed, 0 skipped")

    def test_a_command_that_fails_has_failed(self) -> None:
        self.add("spelling", "", "check", status="fail")
        self.exit_code = "8"
        self.assert_fails("spelling: ended badly", "0 passed, 1 failed, 0 skipped", "check")

    def test_a_program_that_was_not_built_has_failed(self) -> None:
        self.add("tst_model", "", status="notrun")
        self.exit_code = "8"
        self.assert_fails("tst_model: did not run", "0 passed, 1 failed, 0 skipped")

    def test_a_program_that_is_disabled_has_failed(self) -> None:
        self.add("tst_model", "", status="disabled")
        self.assert_fails("tst_model: did not run", "0 passed, 1 failed, 0 skipped")

    def test_a_program_without_a_result_has_failed(self) -> None:
        self.add("tst_model", GOOD)
        self.add("tst_other", None)
        self.assert_fails("tst_other: has no result", "2 passed, 1 failed, 0 skipped")

    def test_a_ring_without_a_program_has_failed(self) -> None:
        self.add("tst_model", GOOD)
        self.assert_fails("ring e2e: has no program", "2 passed, 1 failed, 0 skipped", "unit", "e2e")

    def test_a_ctest_that_dies_has_failed(self) -> None:
        self.add("tst_model", GOOD)
        self.exit_code = "137"
        self.assert_fails("ring ctest: together ended with 137", "2 passed, 1 failed, 0 skipped")

    def test_a_ctest_that_knows_of_a_failure_that_nobody_has_seen_has_failed(self) -> None:
        self.add("tst_model", GOOD)
        self.exit_code = "8"
        self.assert_fails("ring ctest: together ended with 8", "2 passed, 1 failed, 0 skipped")

    def test_results_that_were_cut_off_have_failed(self) -> None:
        self.add("tst_model", GOOD)
        self.summary()
        results = self.folder / "together.xml"
        results.write_text(results.read_text()[:-20])
        code, text, last = self.printed()
        self.assertEqual((code, last), (1, "0 passed, 2 failed, 0 skipped"))
        self.assertIn("failed: tst_model: has no result\n", text)
        self.assertIn("failed: ring ctest: together.xml cannot be read", text)

    def test_an_empty_folder_has_failed(self) -> None:
        code, text, last = self.printed()
        self.assertEqual((code, last), (1, "0 passed, 3 failed, 0 skipped"), text)
        self.assertIn("failed: ring ctest: nobody knows what was to run", text)
        self.assertIn("failed: ring ctest: nothing was started\n", text)


class Rows(unittest.TestCase):
    """What programs in Python print."""

    def printed(self, body: str) -> tuple[int, str]:
        script = f"""
import sys, unittest
sys.path.insert(0, {str(PROJECT / "tests" / "utils")!r})
import rows
class Story(unittest.TestCase):
{body}
sys.exit(rows.run(unittest.defaultTestLoader.loadTestsFromTestCase(Story)))
"""
        done = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True)
        return done.returncode, done.stdout

    def test_a_test_that_passes(self) -> None:
        code, text = self.printed("    def test_one(self): pass")
        self.assertEqual(code, 0)
        self.assertRegex(text, r"(?m)^PASS   : Story::test_one\(\)$")
        self.assertTrue(text.endswith("Totals: 1 passed, 0 failed, 0 skipped\n"))

    def test_tests_that_fail_raise_and_skip(self) -> None:
        code, text = self.printed(
            "    def test_1(self): self.fail('no')\n    def test_2(self): 1 / 0\n    def test_3(self): self.skipTest('x')"
        )
        self.assertEqual(code, 1)
        for line in ("FAIL!  : Story::test_1()", "FAIL!  : Story::test_2()", "SKIP   : Story::test_3()"):
            self.assertIn(line, text.splitlines())
        self.assertTrue(text.endswith("Totals: 0 passed, 2 failed, 1 skipped\n"))

    def test_a_class_that_cannot_be_prepared(self) -> None:
        code, text = self.printed("    def setUpClass(): raise OSError\n    def test_1(self): pass")
        self.assertEqual(code, 1)
        self.assertRegex(text, r"(?m)^FAIL!  : _ErrorHolder::setUpClass \[.*Story\]\(\)$")

    def test_no_tests_at_all(self) -> None:
        self.assertEqual(self.printed("    pass")[0], 1)


if __name__ == "__main__":
    sys.exit(rows.run(unittest.defaultTestLoader.loadTestsFromModule(sys.modules[__name__])))
