#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""No text that a user sees is out of a translator's reach: none is written without qsTr() or tr().

Texts that a user sees are those that are given to a property or a call of the lists below, and all that have a blank
between two words, wherever they stand. Logs are for developers and stay English.
"""

import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PATTERNS = ["src/*.qml", "src/*.js", "src/*.cpp", "src/*.h", "platform/*.cpp", "platform/*.h"]
UNTRANSLATED = ["platform/tarn/passt/"]  # a program that libvirt runs, and whose words it logs

VISIBLE_PROPERTIES = {
    "acceptLabel", "accessibleName", "calculatedValueUnits", "description", "detailedText", "displayText",
    "informativeText", "label", "name", "nameFilters", "placeholderText", "prefix", "rejectLabel", "suffix", "text",
    "title", "valueUnits",
}
VISIBLE_CALLS = {
    "QAction", "QCheckBox", "QLabel", "QMenu", "QMessageBox", "QPushButton", "addAction", "addMenu", "addRow",
    "askForRestart", "setCheckBoxText", "setDetailedText", "setDisplayName", "setInformativeText", "setLabelText",
    "setPlaceHolderText", "setPlaceholderText", "setStatusTip", "setText", "setTitle", "setToolTip", "setWhatsThis",
    "setWindowTitle", "showMessageBox", "writeDisrupting", "writeFlashing", "writeSilently",
}
TRANSLATES = {"qsTr", "qsTranslate", "tr", "translate"}
LOGS = re.compile(r"\bq(C?(Debug|Info|Warning|Critical)|Fatal)\b|\bconsole\.|\bwarnings\.append\b|\bQ_ASSERT_X\b")

# Texts that no translator needs, and why.
EXCEPTIONS = {
    "f": "a format of numbers",
    "Could not create the AlsModel instance": "the engine tells it whoever writes a document",
    "Could not create the TapModel instance": "the engine tells it whoever writes a document",
    "Velmo OS": "a name",
    "The plugin owns the only one": "the engine tells it whoever writes a document",
    "Value is null and could not be converted to an object": "the script engine's own message, which is English",
}

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/|^[ \t]*\#[^\n]*)
    |R"(?P<fence>[^(\s]*)\((?P<raw>.*?)\)(?P=fence)"
    |"(?P<double>(?:\\.|[^"\\\n])*)"
    |'(?P<single>(?:\\.|[^'\\\n])*)'
    |`(?P<template>(?:\\.|[^`\\])*)`
    |(?P<name>[A-Za-z_]\w*(?:\.[A-Za-z_]\w*)*)
    |(?P<number>[0-9][\w']*)
    |(?P<operator>===?|[!<>]=|=>|::|\?\?|\?\.|\+\+|\n|\S)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)


def shown(literal: str) -> str:
    """What is left of a literal for a reader: without escapes, place markers and inserted expressions."""
    text = re.sub(r"\$\{[^}]*\}|%L?[0-9]+|%n", "", literal)
    text = re.sub(r"\\u\{?([0-9a-fA-F]{4})\}?", lambda match: chr(int(match.group(1), 16)), text)
    return re.sub(r"\\.", " ", text)


def literals(code: str, is_cpp: bool):
    """Each literal: line, text, the calls around it, the property it is given to, the statement before it."""
    calls, ternaries, before = [], [0], []
    given_to, type_name, last_name = "", "", ""
    for token in TOKEN.finditer(code):
        kind, text = token.lastgroup, token.group()
        if kind in ("raw", "double", "single", "template"):
            literal = token[kind]
            if not (is_cpp and kind == "single"):
                line = code.count("\n", 0, token.start()) + 1
                yield line, literal, set().union(*calls), given_to, " ".join(before)
            type_name = last_name = ""
        elif kind in ("name", "number"):
            before.append(text)
            type_name, last_name = last_name, text
        elif kind == "operator":
            if text == "\n":
                continue
            if text in "([{":
                # "type variable(" calls, too.
                calls.append({type_name, last_name.split(".")[-1]} if text == "(" else set())
                ternaries.append(0)
            elif text in ")]}":
                if calls:
                    calls.pop()
                    ternaries.pop()
            elif text == "?":
                ternaries[-1] += 1
            elif text == ":" and ternaries[-1] > 0:
                ternaries[-1] -= 1
            elif text in (":", "="):
                given_to = last_name
            if text in ";{}":
                before.clear()
                given_to = ""
            type_name = last_name = ""


def findings(code: str, is_cpp: bool):
    """Each text out of reach, and whether any text is within reach."""
    for line, literal, calls, given_to, before in literals(code, is_cpp):
        text = shown(literal)
        if calls & TRANSLATES:
            yield line, literal, True
            continue
        if not any(map(str.isalpha, text)) or LOGS.search(before):
            continue
        in_sight = bool(calls & VISIBLE_CALLS) if is_cpp else given_to.split(".")[-1] in VISIBLE_PROPERTIES
        if in_sight or re.search(r"[^\W\d_][,.:;!?]* +[^\W\d_]", text):
            yield line, literal, False


def main() -> int:
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", *PATTERNS],
        cwd=PROJECT, check=True, capture_output=True, text=True).stdout
    translated = {True: 0, False: 0}
    needed, failures = set(), 0
    for name in filter(None, listed.split("\0")):
        file = PROJECT / name
        if not file.exists() or name.startswith(tuple(UNTRANSLATED)):
            continue
        is_cpp = file.suffix in (".cpp", ".h")
        for line, literal, translatable in findings(file.read_text(encoding="utf-8"), is_cpp):
            if translatable:
                translated[is_cpp] += 1
            elif literal in EXCEPTIONS:
                needed.add(literal)
            else:
                print(f'{name}:{line}: "{literal}" cannot be translated')
                failures += 1
    for literal in EXCEPTIONS.keys() - needed:
        print(f'the exception "{literal}" is not needed')
        failures += 1
    for is_cpp, count in translated.items():
        if count == 0:
            print(f"no translatable text is found in the {'C++' if is_cpp else 'QML'} sources")
            failures += 1
    print(f"{sum(translated.values())} translatable texts, {failures} findings")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
