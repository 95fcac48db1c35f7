#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# The tree in the cache folder: two runs that start at once make one tree, an interrupted run leaves nothing behind, an
# ordinary user asks sudo. Making the tree itself is replaced by a quick stand-in here; every run of ./dev on another
# system makes a real one.
set -euo pipefail
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/setup/checks.sh
source "$project/tests/setup/checks.sh"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export EMULATIONMANAGEMENT_CACHE=$scratch/cache

mkdir "$scratch/bin"
cat >"$scratch/bin/mmdebstrap" <<'STANDIN'
#!/bin/bash
target=${!#}
echo "made as $(id -u)" >>"$EMULATIONMANAGEMENT_CACHE/made"
mkdir "$target" || exit 1
while [[ -e $EMULATIONMANAGEMENT_CACHE/hold ]]; do sleep 0.05; done
touch "$target/complete"
STANDIN
printf '#!/bin/sh\necho "$*" >>"$EMULATIONMANAGEMENT_CACHE/sudo"\nexec "$@"\n' >"$scratch/bin/sudo"
chmod +x "$scratch"/bin/*
export PATH=$scratch/bin:$PATH
run() { bash -c 'set -euo pipefail; project=$1; source "$project/tools/dev/common.sh"; ensure_tree "$(tree_path)"' - "$project"; }
tree=$(bash -c 'project=$1; source "$project/tools/dev/common.sh"; tree_path' - "$project")

# Two at once.
run 2>/dev/null &
first=$!
run 2>/dev/null &
second=$!
wait "$first"
wait "$second"
check "two runs at once make the tree once" test "$(wc -l <"$EMULATIONMANAGEMENT_CACHE/made")" = 1
check "the tree is whole" test -e "$tree/complete"
if [[ $(id -u) != 0 ]]; then
    check "an ordinary user makes it with sudo" grep -q mmdebstrap "$EMULATIONMANAGEMENT_CACHE/sudo"
fi

# Interrupted half-way.
rm -rf "$tree" "$EMULATIONMANAGEMENT_CACHE/made"
touch "$EMULATIONMANAGEMENT_CACHE/hold"
setsid bash -c 'project=$1; source "$project/tools/dev/common.sh"; ensure_tree "$(tree_path)"' - "$project" 2>/dev/null &
interrupted=$!
deadline=$((SECONDS + 60))
until [[ -d $tree.partial ]]; do
    ((SECONDS < deadline)) || exit 1
    sleep 0.05
done
kill -KILL -- "-$interrupted"
wait "$interrupted" 2>/dev/null || true
rm "$EMULATIONMANAGEMENT_CACHE/hold"
check "an interrupted run leaves no tree under the final name" test ! -e "$tree"
run 2>/dev/null
check "the next run makes it" test -e "$tree/complete"
check "and removes what was left" test ! -e "$tree.partial"

# Another package list is another tree; an old tree stays for a week.
old=$EMULATIONMANAGEMENT_CACHE/debian13-000000000000
mkdir "$old"
touch "$old.used"
bash -c 'project=$1; source "$project/tools/dev/common.sh"; remove_unused_trees "$(tree_path)"' - "$project" 2>/dev/null
check "a tree used lately stays" test -d "$old"
touch -d '8 days ago' "$old.used"
bash -c 'project=$1; source "$project/tools/dev/common.sh"; remove_unused_trees "$(tree_path)"' - "$project" 2>/dev/null
check "an old one goes" test ! -d "$old"
check "the one in use stays" test -d "$tree"

# What others are making stays, whatever it is called.
rm -rf "$tree"
mkdir "$EMULATIONMANAGEMENT_CACHE/qtcreator-source.partial" "$tree.partial"
run 2>/dev/null
check "what others have begun stays" test -d "$EMULATIONMANAGEMENT_CACHE/qtcreator-source.partial"
check "what was begun for the tree goes" test ! -e "$tree.partial"

# Ctrl-C reaches every process of the terminal's foreground group.
in_group() { # in_group NAME COMMAND: bash code with the functions at hand, in a process group of its own
    env --default-signal=INT setsid bash -c "set -euo pipefail; project=\$1; source \"\$project/tools/dev/common.sh\"
        build_root=$scratch/build; cd '$scratch'; $1" - "$project"
}
# A name that no other process has.
sleeper=$scratch/bin/sleeper-$$
ln -s "$(command -v sleep)" "$sleeper"
runs() { pgrep -f "^$sleeper" >/dev/null; }
wait_until() { # wait_until COMMAND...
    local deadline=$((SECONDS + 60))
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}
in_group "with_progress '$scratch/log' '$sleeper' 1000; echo went on >'$scratch/after'" 2>/dev/null &
group=$!
check "a step runs" wait_until runs
kill -INT -- "-$(ps -o pgid= -p "$(pgrep -f "^$sleeper")" | tr -d ' ')"
wait "$group" 2>/dev/null || true
check "Ctrl-C ends it" fails runs
check "and what would come next" test ! -e "$scratch/after"

# Two at once in one checkout.
in_group "lock_checkout; touch first; while [[ -e first ]]; do sleep 0.05; done; touch done" 2>/dev/null &
first=$!
check "one has the checkout" wait_until test -e "$scratch/first"
: >"$scratch/second"
in_group "lock_checkout; test -e done" 2>"$scratch/second" &
second=$!
check "another says that it waits" wait_until grep -q 'waiting for another ./dev' "$scratch/second"
rm "$scratch/first"
check "the first ends" wait "$first"
check "then it is the other's turn" wait "$second"
print_totals
