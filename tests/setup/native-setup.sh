#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# A fresh clone on a Debian 13 machine that lacks some of the listed packages: ./dev installs just these and builds (a
# plugin for the host, which is enough to see that the tools are there).
# The machine is a copy of this one's system folders, in which we are root.
set -euo pipefail
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/setup/checks.sh
source "$project/tests/setup/checks.sh"
cache=${EMULATIONMANAGEMENT_CACHE:-$HOME/.cache/emulationmanagement}
machine=$cache/native-machine-$$
trap 'rm -rf "$machine"' EXIT

mkdir -p "$machine/root/project" "$machine/root/cache"
for folder in usr etc var; do
    # Some files are for root's eyes only; the machine does without them.
    cp -a "/$folder" "$machine/$folder" 2>/dev/null || true
done
for link in bin lib lib64 sbin; do [[ ! -L /$link ]] || cp -a "/$link" "$machine/$link"; done
git clone -q "$project" "$machine/root/project"
# Not yet committed work is what is tested.
(cd "$project" && git ls-files -z --cached --others --exclude-standard | tar --null --files-from=- -cf -) |
    tar -C "$machine/root/project" -xf -
[[ ! -d $cache/ccache ]] || cp -al "$cache/ccache" "$machine/root/cache/ccache"
# One user id is all there is here, so apt cannot change to a user of its own.
echo 'APT::Sandbox::User "root";' >"$machine/etc/apt/apt.conf.d/90one-user"

on_machine() {
    bwrap --unshare-user --uid 0 --gid 0 --unshare-pid --bind "$machine" / --dev /dev --proc /proc --tmpfs /tmp \
        --tmpfs /run --ro-bind /etc/resolv.conf /etc/resolv.conf --chdir /root/project \
        --unsetenv EMULATIONMANAGEMENT_IN_TREE --unsetenv XDG_RUNTIME_DIR \
        --setenv EMULATIONMANAGEMENT_CACHE /root/cache --setenv HOME /root -- "$@"
}

on_machine dpkg --remove --force-depends passt shellcheck >/dev/null
check "the machine lacks a program" fails on_machine sh -c 'command -v shellcheck'

build() {
    log=$(on_machine ./dev build --target TarnPlugin 2>&1) || {
        echo "$log"
        return 1
    }
}

check "a fresh clone is built" build
echo "$log"
check "just what is missing is installed" matches 'installing 2 packages: shellcheck passt' "$log"
check "the programs are there" on_machine sh -c 'command -v shellcheck && command -v passt'
check "the plugin is there" on_machine test -s build/release/lib/qtcreator/plugins/libTarnPlugin.so
check "no tree is made" fails on_machine sh -c 'ls -d /root/cache/debian13-* 2>/dev/null'

check "it is built once more" build
check "nothing is left to install" fails matches installing "$log"
print_totals
