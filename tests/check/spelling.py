#!/usr/bin/env python3
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What users read is spelled right, in each language: the texts of the plugins, and the documents.

Words that no dictionary knows are in the folder "words", one list for all languages and one for each.
"""

import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

PROJECT = pathlib.Path(__file__).resolve().parents[2]
WORDS = pathlib.Path(__file__).resolve().parent / "words"
DICTIONARIES = {"de": "de_DE", "en": "en_US", "es": "es_ES", "ru": "ru_RU"}


def plain(text: str) -> str:
    """Without what is not language: place markers, keyboard hints, names of files and of things in code."""
    text = re.sub(r"<[^>]+>|%L?\d+|%n|\\n|&", " ", text)
    return re.sub(r"\S*[/_\\@=]\S*|\w+\.\w+\S*|\w*\d\w*", " ", text)


def prose(document: str) -> str:
    """A document without its code, its pictures and the targets of its links."""
    document = re.sub(r"^```.*?^```", "", document, flags=re.DOTALL | re.MULTILINE)
    document = re.sub(r"^(?: {4}|\t).*$", "", document, flags=re.MULTILINE)
    document = re.sub(r"`[^`]*`", " ", document)
    return re.sub(r"\]\([^)]*\)", "] ", document)


def texts() -> dict[str, list[str]]:
    """What users read, by language; English, which the sources are written in, has the sources' texts too."""
    found: dict[str, list[str]] = {language: [] for language in DICTIONARIES}
    for file in sorted((PROJECT / "translations").glob("*.ts")):
        language = file.stem.rpartition("_")[2]
        for message in ElementTree.parse(file).iter("message"):
            found["en"].append(plain(message.findtext("source", "")))
            found[language].append(plain("".join(message.find("translation").itertext())))
    listing = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard", "*.md"]
    names = subprocess.run(listing, cwd=PROJECT, capture_output=True, text=True, check=True).stdout.split("\0")
    for document in [PROJECT / name for name in names if name]:
        found["en"].append(plain(prose(document.read_text(encoding="utf-8"))))
    return found


def words(lines: list[str]) -> set[str]:
    """Words with a hyphen count as their parts; single letters are axes and units."""
    found = {word for line in lines for word in re.findall(r"[^\W\d_]{2,}(?:['’][^\W\d_]+)?", line)}
    return {re.sub("['’]s$", "", word) for word in found}


def misspelled(language: str, used: set[str]) -> set[str]:
    done = subprocess.run(
        ["hunspell", "-l", "-i", "utf-8", "-d", DICTIONARIES[language]],
        input="\n".join(sorted(used)), capture_output=True, text=True, check=True,
    )  # fmt: skip
    return set(done.stdout.split())


def listed(name: str) -> set[str]:
    lines = (WORDS / f"{name}.txt").read_text(encoding="utf-8").splitlines()
    return {line for line in lines if line and not line.startswith("#")}


def main() -> int:
    wrong = 0
    common, in_any = listed("names"), set()
    for language, lines in texts().items():
        own = listed(language)
        used = words(lines)
        in_any |= used
        for word in sorted(misspelled(language, used) - common - own):
            print(f"{language}: {word}")
            wrong += 1
        for word in sorted(own - used):
            print(f"words/{language}.txt: nobody needs {word}")
            wrong += 1
    for word in sorted(common - in_any):
        print(f"words/names.txt: nobody needs {word}")
        wrong += 1
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
