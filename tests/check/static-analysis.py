#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: static-analysis.py clang-tidy|clazy BUILD-DIR FOLDER...

Looks at what changed since the last time: a file that was found clean with the same headers, options and tool is not
looked at again for a month.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys
import time

PROJECT = pathlib.Path(__file__).resolve().parents[2]
CACHE = pathlib.Path(os.environ.get("EMULATIONMANAGEMENT_CACHE") or pathlib.Path.home() / ".cache/emulationmanagement")
CLEAN = CACHE / "analysis"
MONTH = 30 * 24 * 3600

# Left out of clazy's first level, and why:
CLAZY_CHECKS = [
    "level1",
    "no-non-pod-global-static",  # static texts are made when the library loads, once
    "no-qproperty-without-notify",  # a service's D-Bus properties are read when somebody asks
    "no-qstring-arg",  # a request's fields are filled in one after another, which differs from all at once
    "no-range-loop-detach",  # a loop over a function's result cannot detach anything
]


def command(tool: str, build: pathlib.Path) -> list[str]:
    if tool == "clang-tidy":
        return ["clang-tidy", "--quiet", "--warnings-as-errors=*", "-p", str(build)]
    # libvirt's own macro for callbacks casts functions.
    return ["clazy-standalone", f"--checks={','.join(CLAZY_CHECKS)}", "--extra-arg=-Wno-cast-function-type-mismatch",
            "-p", str(build)]  # fmt: skip


def state(analysis: list[str], entry: dict[str, str]) -> str:
    """What the result depends on: tool, settings, options, and the project's files that are compiled."""
    version = subprocess.run([analysis[0], "--version"], capture_output=True, text=True, check=True).stdout
    options = shlex.split(entry["command"])
    if pathlib.Path(options[0]).name == "ccache":
        del options[0]
    del options[options.index("-o") : options.index("-o") + 2]
    options.remove("-c")
    files = subprocess.run(
        [*options, "-M", "-MT", "x"], cwd=entry["directory"], capture_output=True, text=True, check=True
    ).stdout.replace("\\\n", " ")
    digest = hashlib.sha256()
    for text in (version, (PROJECT / ".clang-tidy").read_text(), *analysis, *options):
        digest.update(text.replace(str(PROJECT), "").encode() + b"\0")
    for name in sorted(set(files.split()[1:])):
        file = (pathlib.Path(entry["directory"]) / name).resolve()
        if file.is_relative_to(PROJECT):
            digest.update(file.read_bytes())
        else:  # a package's
            digest.update(f"{name} {file.stat().st_size} {file.stat().st_mtime_ns}".encode())
    return digest.hexdigest()[:32]


def analyse(analysis: list[str], entry: dict[str, str]) -> str:
    """What was found; nothing when the file is clean."""
    mark = CLEAN / state(analysis, entry)
    if mark.exists():
        return ""
    done = subprocess.run([*analysis, entry["file"]], cwd=PROJECT, capture_output=True, text=True)
    said = done.stdout + done.stderr
    # clazy ends well whatever it finds.
    if done.returncode or "warning: " in said or "error: " in said:
        return said
    mark.touch()
    return ""


def main() -> int:
    tool, build, folders = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    CLEAN.mkdir(parents=True, exist_ok=True)
    for mark in CLEAN.iterdir():
        if mark.stat().st_mtime < time.time() - MONTH:
            mark.unlink(missing_ok=True)
    entries = [
        entry
        for entry in json.loads((build / "compile_commands.json").read_text())
        if any(pathlib.Path(entry["file"]).is_relative_to(PROJECT / folder) for folder in folders)
    ]
    if not entries:
        sys.exit(f"{build} compiles nothing of this project")
    analysis = command(tool, build)
    os.nice(10)  # what waits for somebody goes first
    with concurrent.futures.ThreadPoolExecutor(max_workers=len(os.sched_getaffinity(0))) as pool:
        found = [text for text in pool.map(lambda entry: analyse(analysis, entry), entries) if text]
    print("\n".join(found))
    print(f"{len(entries)} files, {len(found)} with findings")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
