#!/bin/sh
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: tree-hook.sh TREE: the last touches to a fresh tree.
set -eu
tree=$1
# Programs look their user up; the tree's one is 1000 whoever runs it.
echo 'developer:x:1000:1000:developer:/tmp:/bin/bash' >>"$tree/etc/passwd"
echo 'developer:x:1000:' >>"$tree/etc/group"
# These folders get the machine's own at run time.
touch "$tree/etc/resolv.conf"
rm -rf "$tree"/var/cache/apt/archives/*.deb
