#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Nothing lies around that nobody needs: each function of a header, each function, signal and property of a page or
script, and each document and picture among the resources is named somewhere else in the product, not only in tests. (The
compiler finds unused static functions and variables by itself.)
"""

import collections
import fnmatch
import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PRODUCT = ("src", "platform", "emulator", "tools/demo/democamera")

# What is there for somebody else, and why.
CALLED_OVER_DBUS = "emulator/*service.h"
DRAWS = "draws the phone, once the pages have something to draw on"
EXCEPTIONS = {
    "src/resources/js/smartphone-model-logic.js: createView": DRAWS,
    "src/resources/js/smartphone-model-logic.js: paint": DRAWS,
    "src/resources/js/smartphone-model-logic.js: resize": DRAWS,
    "src/resources/js/smartphone-model-logic.js: setPose": DRAWS,
    "src/resources/js/smartphone-model-logic.js: smartphone-model-logic.js": DRAWS,
    "src/resources/qml/RotationSensorControls.qml: RotationSensorControls.qml": "for a sensor that no page offers yet",
    "src/resources/qml/SmartphoneModelPage.qml: moveBaseValue": "a start for whoever moves the phone from outside",
    "src/sensors/orientationmodel.h: faceOrientation": "half of the orientation, for whoever asks",
    "src/sensors/orientationmodel.h: topEdgeOrientation": "the other half",
}


def tracked(*patterns: str) -> list[pathlib.Path]:
    listing = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", *patterns]
    names = subprocess.run(listing, cwd=PROJECT, capture_output=True, text=True, check=True).stdout.split("\0")
    return [PROJECT / name for name in names if name and (PROJECT / name).is_file()]


def code(file: pathlib.Path) -> str:
    """Without comments and, in C++, without texts."""
    text = file.read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/|(?<![:\"'])//[^\n]*", "", text, flags=re.DOTALL)
    return re.sub(r'"(?:\\.|[^"\\\n])*"', '""', text) if file.suffix in (".cpp", ".h") else text


def words(text: str) -> collections.Counter:
    return collections.Counter(re.findall(r"\w+", text))


class Sources:
    def __init__(self) -> None:
        names = [f"{folder}/*{suffix}" for folder in PRODUCT for suffix in (".cpp", ".h", ".qml", ".js")]
        self.code = {file: code(file) for file in tracked(*names)}
        self.words = sum((words(text) for text in self.code.values()), collections.Counter())
        # Scripts join names from an axis and the rest.
        joined = "|".join(text for _, text in self.of(".qml", ".js"))
        self.parts = set(re.findall(r'(?:\+ "(\w{5,})"|"(\w{5,})" \+)', joined))
        self.parts = {part for pair in self.parts for part in pair if part}

    def is_joined(self, name: str) -> bool:
        return bool({name[1:], name[:-1]} & self.parts)

    def of(self, *suffixes: str):
        return ((file, text) for file, text in self.code.items() if file.suffix in suffixes)


# A declaration in a header starts a line and ends in a semicolon or a body. "override" is called by whoever knows the base,
# an invokable by whoever writes a document.
DECLARATION = re.compile(
    r"^[ \t]*+(?!return|else|if|Q_DECLARE|Q_DISABLE|Q_INVOKABLE)[\w:<>,&*\[\] \t]*?[\w>&*\]][ \t&*]+(\w+)\(((?:= \{\}|[^;{}])*)[;{]",
    re.MULTILINE,
)


def unused_cpp_functions(sources: Sources):
    declared: collections.Counter = collections.Counter()
    where: dict[str, pathlib.Path] = {}
    overrides = set()
    for file, text in sources.of(".h"):
        if fnmatch.fnmatch(str(file.relative_to(PROJECT)), CALLED_OVER_DBUS):
            continue
        for match in DECLARATION.finditer(text):
            name, rest = match.group(1), match.group(2)
            if "override" in rest or match.group().lstrip().startswith("operator"):
                overrides.add(name)
            declared[name] += 1
            where.setdefault(name, file)
    defined: collections.Counter = collections.Counter()
    for _, text in sources.of(".cpp"):
        defined.update(re.findall(r"^[\w:<>,&*\[\] \t]*?\b(?:\w+::)*(\w+)\([^;{}]*?\)[^;{}]*\{", text, flags=re.M))
    for name, times in declared.items():
        if name in overrides or name.startswith(("operator", "q_", "Q_", "qt_")):
            continue
        handler = "on" + name[0].upper() + name[1:]
        if sources.words[name] - times - defined[name] <= 0 and not sources.words[handler] and not sources.is_joined(name):
            yield f"{where[name].relative_to(PROJECT)}: {name}"


def unused_script_names(sources: Sources):
    for file, text in sources.of(".qml", ".js"):
        declared = re.findall(r"^[ \t]*function (\w+)|^[ \t]*(?:(?:required|readonly|default) )*property [\w<>.]+ (\w+)", text, flags=re.M)
        declared += [("", name) for name in re.findall(r"^[ \t]*signal (\w+)", text, flags=re.M)]
        for function, prop in declared:
            name = function or prop
            if sources.is_joined(name) or re.match("on[A-Z]", name):
                continue
            changed = f"on{name[0].upper()}{name[1:]}"
            if sources.words[name] < 2 and not any(sources.words[changed + end] for end in ("", "Changed")):
                yield f"{file.relative_to(PROJECT)}: {name}"


def unused_resources(sources: Sources):
    everything = "\n".join(code(file) if file.suffix in (".qml", ".js") else file.read_text() for file in sources.code)
    for file in tracked("src/resources/*.qml", "src/resources/*.js", "src/resources/*.png"):
        # Pictures of a series are named by their number.
        stem = re.sub(r"\d+(_light)?$", "", file.stem)
        if not re.search(rf"\b{re.escape(stem)}\b|\b{re.escape(stem)}[%$]", everything):
            yield f"{file.relative_to(PROJECT)}: {file.name}"


def main() -> int:
    sources = Sources()
    found = [*unused_cpp_functions(sources), *unused_script_names(sources), *unused_resources(sources)]
    wrong = [line for line in found if line not in EXCEPTIONS]
    for line in wrong:
        print(f"{line} is not needed")
    for name in sorted(EXCEPTIONS.keys() - set(found)):
        print(f"{name} needs no exception")
        wrong.append(name)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
