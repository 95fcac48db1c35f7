#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: test-lists.py BUILD_FOLDER

Every test that is written is run: each test program, document and module, and each function of the classes that run
inside the IDE, belongs to a command that CTest knows. Lists in CMake's files are kept by hand, and what is missing there
would never be missed.
"""

from __future__ import annotations

import json
import re
import subprocess
import sys
from pathlib import Path

TESTS = Path(__file__).resolve().parents[1]
SURROUNDINGS = {"initTestCase", "init", "cleanup", "cleanupTestCase"}


def commands(build: str) -> list[list[str]]:
    listing = subprocess.run(
        ["ctest", "--test-dir", build, "--show-only=json-v1"], capture_output=True, text=True, check=True
    )
    # A program that has not been built yet has no command, and its test bears its name.
    return [test.get("command", [test["name"]]) for test in json.loads(listing.stdout)["tests"]]


def classes_in_the_ide() -> dict[Path, tuple[str, set[str]]]:
    """For each file its class, and the functions that Qt Test would run."""
    classes = {}
    for file in sorted((TESTS / "ide").glob("tst_*.cpp")):
        text = file.read_text(encoding="utf-8")
        name = re.search(r"\bRegisterTest<(\w+)>", text)
        slots = re.search(r"^private Q_SLOTS:\n(.*?)^(?:\w.*:|};)$", text, re.MULTILINE | re.DOTALL)
        names = set(re.findall(r"^    void (\w+)\(\)", slots.group(1), re.MULTILINE)) if slots else set()
        names = {function for function in names if not function.endswith("_data")} - SURROUNDINGS
        classes[file] = (name.group(1) if name else "", names)
    return classes


def not_run_in_the_ide(known: list[list[str]]) -> list[str]:
    lists = [command[index + 2] for command in known for index, word in enumerate(command) if Path(word).name == "run-in-ide"]
    wanted = {test.removesuffix("!") for tests in lists for test in tests.split(",")}  # "!": is to be killed
    missing = []
    for file, (name, functions) in classes_in_the_ide().items():
        if not name or not functions:
            missing.append(f"{file.relative_to(TESTS)}: no test class with functions is found in it")
        elif name not in wanted:
            listed = {test.partition(":")[2] for test in wanted if test.partition(":")[0] == name}
            missing += [f"{file.relative_to(TESTS)}: {name}:{function}" for function in sorted(functions - listed)]
    return missing


def not_run(known: list[list[str]]) -> list[str]:
    # A program, a document or a script by its file, a module by its name.
    words = {word for command in known for word in command}
    names = {Path(word).name for word in words}
    files = [file for pattern in ("tst_*.cpp", "tst_*.qml", "test_*.py", "fuzz_*.cpp", "bench_*.cpp", "bench_*.py")
             for file in TESTS.rglob(pattern)]  # fmt: skip
    inside_the_ide = set(classes_in_the_ide())
    missing = []
    for file in sorted(files):
        if file not in inside_the_ide and not {file.name, file.stem} & names:
            missing.append(str(file.relative_to(TESTS)))
    # What a fuzzer is given is found by its folder's name.
    missing += [str(folder.relative_to(TESTS)) for folder in sorted((TESTS / "fuzz/corpus").iterdir()) if folder.name not in names]
    return missing


def main() -> int:
    known = commands(sys.argv[1])
    missing = not_run(known) + not_run_in_the_ide(known)
    for name in missing:
        print(f"{name} is run by no test")
    return 1 if missing or not known else 0


if __name__ == "__main__":
    sys.exit(main())
