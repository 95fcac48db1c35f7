#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The documents keep up with the project: each link and each file that they name leads somewhere, each picture is shown,
each package that is installed stands among the dependencies, each row of which says a license, each source says whose it is,
and the change log tells of the version that is built."""

import fnmatch
import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SOURCES = (".cmake", ".cpp", ".h", ".js", ".mjs", ".py", ".qml", ".sh", ".svg")


def tracked(pattern: str = "*") -> list[str]:
    listing = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", pattern]
    names = subprocess.run(listing, cwd=PROJECT, capture_output=True, text=True, check=True).stdout.split("\0")
    return [name for name in names if name and (PROJECT / name).is_file()]


def without_code(document: str) -> str:
    return re.sub(r"^```.*?^```", "", document, flags=re.DOTALL | re.MULTILINE)


def anchors(document: str) -> set[str]:
    """The names that a reader's program gives to the headings."""
    headings = re.findall(r"^#+ +(.+)$", without_code(document), flags=re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).strip().replace(" ", "-") for heading in headings}


def broken_links():
    shown = set()
    for name in tracked("*.md"):
        file = PROJECT / name
        text = without_code(file.read_text(encoding="utf-8"))
        for target in re.findall(r"\]\(([^)]+)\)", text):
            if re.match(r"[a-z]+:", target):
                continue
            path, _, anchor = target.partition("#")
            to = (file.parent / path).resolve() if path else file
            shown.add(to)
            if not to.exists():
                yield f"{name}: {target} does not exist"
            elif anchor and anchor not in anchors(to.read_text(encoding="utf-8")):
                yield f"{name}: {target} has no such heading"
    for picture in tracked("docs/images/*"):
        if (PROJECT / picture).resolve() not in shown:
            yield f"{picture} is shown nowhere"


def missing_files():
    """Files of the project that a document names in code style, also with a * in them."""
    files = tracked()
    folders = {str(parent) for name in files for parent in pathlib.PurePath(name).parents}
    roots = {folder for folder in folders if "/" not in folder} - {"."}
    for name in tracked("*.md"):
        text = without_code((PROJECT / name).read_text(encoding="utf-8"))
        for path in re.findall(r"`([\w.-]+/[\w./*-]+)`", text):
            path = path.rstrip("/")
            if path.split("/")[0] not in roots or "build" in path.split("/"):
                continue
            if path not in folders and not fnmatch.filter(files, path):
                yield f"{name}: {path} does not exist"


def packages(file: str) -> list[str]:
    lines = (PROJECT / file).read_text(encoding="utf-8").splitlines()
    return [line for line in (line.partition("#")[0].strip() for line in lines) if line]


def unlisted_packages():
    rows = [
        [cell.strip() for cell in line.strip("|").split("|")]
        for line in (PROJECT / "docs/dependencies.md").read_text(encoding="utf-8").splitlines()
        if line.startswith("| ") and not line.startswith(("| ---", "| What |"))
    ]
    patterns = []
    for row in rows:
        if len(row) != 5 or not all(row):
            yield f"docs/dependencies.md: {row[0]}: a row says what, what for, why, the license and the packages"
        patterns += re.findall(r"`([^`]+)`", row[-1])
    needed = packages("tools/packages.txt")
    for package in needed:
        if not any(fnmatch.fnmatch(package, pattern) for pattern in patterns):
            yield f"docs/dependencies.md: {package} is missing"
    for pattern in patterns:
        if not fnmatch.filter(needed, pattern):
            yield f"docs/dependencies.md: {pattern} is not installed any more"


def sources_without_header():
    for name in tracked():
        file = PROJECT / name
        is_source = name.endswith(SOURCES) or file.name in ("CMakeLists.txt", "dev")
        if is_source and "SPDX-License-Identifier: " not in file.read_text(encoding="utf-8")[:400]:
            yield f"{name}: no license"


def change_log():
    """As keepachangelog.com has it: the newest version is the project's, versions fall, each has a day."""
    text = (PROJECT / "CHANGELOG.md").read_text(encoding="utf-8")
    project = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
    (version,) = re.findall(r"project\(\w+\s+VERSION ([\d.]+)", project)
    headings = re.findall(r"^## (.+)$", text, flags=re.MULTILINE)
    if headings[:1] == ["[Unreleased]"]:
        del headings[0]
    dated = [re.fullmatch(r"\[(\d+\.\d+\.\d+)\] - (\d{4}-\d\d-\d\d)", heading) for heading in headings]
    for heading, match in zip(headings, dated, strict=True):
        if not match:
            yield f"CHANGELOG.md: {heading!r} is no version with its day"
    releases = [(tuple(map(int, match[1].split("."))), match[2]) for match in dated if match]
    if releases != sorted(releases, reverse=True):
        yield "CHANGELOG.md: the newest version comes first"
    if not releases or releases[0][0] != tuple(map(int, version.split("."))):
        yield f"CHANGELOG.md: the project's version, {version}, is not the newest one"
    kinds = {"Added", "Changed", "Deprecated", "Removed", "Fixed", "Security"}
    for heading in re.findall(r"^### (.+)$", text, flags=re.MULTILINE):
        if heading not in kinds:
            yield f"CHANGELOG.md: {heading!r} is no kind of change"


def main() -> int:
    wrong = [*change_log(), *broken_links(), *missing_files(), *unlisted_packages(), *sources_without_header()]
    for line in wrong:
        print(line)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
