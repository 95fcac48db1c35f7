#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: translations.sh LUPDATE
# Every text of the plugins is translated, and no translation is left of a text that is gone.
set -euo pipefail
lupdate=$1
project=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

sources() { grep -o '<source>.*' "$1" | sort; }

status=0
for committed in "$project"/translations/*.ts; do
    fresh=$scratch/$(basename "$committed")
    cp "$committed" "$fresh"
    case ${committed##*/} in
    EmulationManagement_*) sources=$project/src ;;
    TarnPlugin_*) sources=$project/platform ;;
    esac
    "$lupdate" -silent -locations none -no-obsolete "$sources" -ts "$fresh"
    if ! diff <(sources "$committed") <(sources "$fresh"); then
        echo "$(basename "$committed") is not up to date: see translations/CMakeLists.txt" >&2
        status=1
    fi
    if grep -n 'type="unfinished"' "$committed"; then
        echo "$(basename "$committed") is not complete" >&2
        status=1
    fi
done
exit "$status"
