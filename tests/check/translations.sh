#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: translations.sh LUPDATE
# Every text of the plugins is translated, in its context and in the order of the sources, and no translation is left of a
# text that is gone. A translation has the place markers of its text, and ends as it ends. Each language has both plugins.
set -euo pipefail
lupdate=$1
project=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# messages FILE: each message whole, but for its translation, under its context
messages() {
    python3 - "$1" <<'PYTHON'
import sys
from xml.etree import ElementTree

for context in ElementTree.parse(sys.argv[1]).getroot().iter("context"):
    print(f"in {context.findtext('name')}")
    for message in context.iter("message"):
        parts = {part.tag: part.text for part in message if part.tag not in ("translation", "location")}
        print("   ", message.attrib, parts)
PYTHON
}

# slips FILE: translations that lack something of their texts, or have too much
slips() {
    python3 - "$1" <<'PYTHON'
import re
import sys
from xml.etree import ElementTree


def ending(text: str) -> str:
    return re.search(r"(\(\*\..*\)|[.:…?!])?\s*$", text).group()


for message in ElementTree.parse(sys.argv[1]).getroot().iter("message"):
    source, translation = message.findtext("source"), message.findtext("translation") or ""
    if not translation.strip():
        print(f"{source!r} has no translation")
    if sorted(re.findall(r"%L?[0-9n]+", source)) != sorted(re.findall(r"%L?[0-9n]+", translation)):
        print(f"{translation!r} has other place markers than {source!r}")
    if " " in source and ending(source) != ending(translation):
        print(f"{translation!r} does not end as {source!r}")
PYTHON
}

status=0
for committed in "$project"/translations/*.ts; do
    case ${committed##*/} in
    EmulationManagement_*) sources=$project/src ;;
    TarnPlugin_*) sources=$project/platform ;;
    esac
    fresh=$scratch/$(basename "$committed")
    "$lupdate" -silent -locations none -source-language en -target-language de "$sources" -ts "$fresh"
    messages "$fresh" >"$scratch/messages"
    if [[ ! -s $scratch/messages ]]; then
        echo "lupdate finds no texts in $sources" >&2
        exit 1
    fi
    if ! messages "$committed" | diff - "$scratch/messages"; then
        echo "$(basename "$committed") is not up to date: see translations/CMakeLists.txt" >&2
        status=1
    fi
    if grep -nE 'type="(unfinished|vanished|obsolete)"' "$committed"; then
        echo "$(basename "$committed") is not complete" >&2
        status=1
    fi
    slips "$committed" >"$scratch/slips"
    if [[ -s $scratch/slips ]]; then
        cat "$scratch/slips"
        echo "$(basename "$committed") has slips" >&2
        status=1
    fi
done
for committed in "$project"/translations/EmulationManagement_*.ts; do
    language=${committed##*_}
    # The texts of the SDK are English as they stand; of the plugin's, the IDE looks for a file in every language.
    if [[ $language != en.ts && ! -e $project/translations/TarnPlugin_$language ]]; then
        echo "there is no TarnPlugin_$language" >&2
        status=1
    fi
done
exit "$status"
