#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# What a command in a network of its own sees, for a clone, a cache folder and a working folder below /tmp.
set -euo pipefail
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/setup/checks.sh
source "$project/tests/setup/checks.sh"
scratch=$(mktemp -d /tmp/isolated-XXXXXX)
trap 'rm -rf "$scratch"' EXIT

clone="$scratch/a clone"
mkdir -p "$clone/tools" "$scratch/cache" "$scratch/build" "$scratch/other"
cp "$project/tools/isolated" "$clone/tools/"
export EMULATIONMANAGEMENT_CACHE=$scratch/cache XDG_RUNTIME_DIR=$scratch/runtime
mkdir "$XDG_RUNTIME_DIR"
touch "$XDG_RUNTIME_DIR/other"
cd "$scratch/build"

check "the clone is there" "$clone/tools/isolated" test -x "$clone/tools/isolated"
check "the cache folder is there" "$clone/tools/isolated" touch "$scratch/cache/written"
check "what is written there stays" test -e "$scratch/cache/written"
check "the working folder stays" matches "^$scratch/build\$" "$("$clone/tools/isolated" pwd)"
check "the rest of /tmp is hidden" fails "$clone/tools/isolated" test -e "$scratch/other"
check "/tmp can be written to" "$clone/tools/isolated" touch /tmp/written
check "what is written there goes" fails test -e /tmp/written
check "the session's other sockets are hidden" fails "$clone/tools/isolated" test -e "$XDG_RUNTIME_DIR/other"
check "sockets can be made" "$clone/tools/isolated" touch "$XDG_RUNTIME_DIR/made"
check "only their owner can reach them" \
    matches '^700$' "$("$clone/tools/isolated" stat -c %a "$XDG_RUNTIME_DIR")"
check "they go, too" fails test -e "$XDG_RUNTIME_DIR/made"
check "without such a folder it works as well" env -u XDG_RUNTIME_DIR "$clone/tools/isolated" true
check "the only network is the loopback one" \
    matches '^ *lo$' "$("$clone/tools/isolated" sh -c 'sed -n "s/:.*//p" /proc/net/dev')"
check "its exit code is passed on" matches '^7$' "$("$clone/tools/isolated" sh -c 'exit 7' || echo $?)"
print_totals
