#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: install.sh BUILD-DIR IDE-EXECUTABLE
# What "cmake --install" puts where, and that an IDE which lies there finds it all.
set -euo pipefail
build=$1 ide=$(realpath "$2")
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/setup/checks.sh
source "$project/tests/setup/checks.sh"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

prefix=$(dirname "$(dirname "$ide")")
libraries=$(find "$prefix"/lib* -name 'libUtils.so.16' -path '*/qtcreator/*' -printf '%h\n' -quit)
libraries=${libraries#"$prefix"/}
root=$scratch/root$prefix

check "it is installed" env DESTDIR="$scratch/root" cmake --install "$build" --prefix "$prefix"
expected="bin/configs/default.ini
bin/configs/velmo-minimal.ini
bin/configs/velmo-phone.ini
bin/configs/velmo-tablet.ini
bin/meshes/default.obj
bin/meshes/velmo-minimal.obj
bin/meshes/velmo-phone.obj
bin/meshes/velmo-tablet.obj
bin/textures/default.png
bin/textures/velmo-minimal.png
bin/textures/velmo-phone.png
bin/textures/velmo-tablet.png
bin/velmo-minimal.ini
bin/velmo-phone.ini
bin/velmo-tablet.ini
$libraries/libQSsh.so.16
$libraries/libQSsh.so.16.0.0
$libraries/libTarn.so.16
$libraries/libTarn.so.16.0.0
$libraries/plugins/libEmulationManagement.so
$libraries/plugins/libTarnPlugin.so
$libraries/tarn/passt
share/doc/emulationmanagement/CHANGELOG.md
share/doc/emulationmanagement/LICENSE
share/doc/emulationmanagement/copyright
share/doc/emulationmanagement/three.js-LICENSE
share/qtcreator/translations/EmulationManagement_de.qm
share/qtcreator/translations/EmulationManagement_en.qm
share/qtcreator/translations/EmulationManagement_es.qm
share/qtcreator/translations/EmulationManagement_ru.qm
share/qtcreator/translations/TarnPlugin_de.qm
share/qtcreator/translations/TarnPlugin_es.qm
share/qtcreator/translations/TarnPlugin_ru.qm"
installed=$(cd "$root" && find . -not -type d -printf '%P\n' | LC_ALL=C sort)
check "each file has its place" diff <(echo "$expected") <(echo "$installed")
check "the programs can be run" test -x "$root/$libraries/tarn/passt"

# The packaged IDE beside what was installed. It has no eyes for plugins that are links; the core is all that is needed.
cp "$prefix/$libraries/plugins/libCore.so" "$root/$libraries/plugins/"
for folder in "$libraries" share/qtcreator share/qtcreator/translations; do
    for file in "$prefix/$folder"/*; do
        [[ -e $root/$folder/${file##*/} ]] || ln -s "$file" "$root/$folder/"
    done
done
cp "$ide" "$root/bin/"
# The rest of the programs' libraries is the machine's.
unset LD_LIBRARY_PATH

all_found() {
    local file unresolved=0
    for file in "$root/$libraries"/lib{QSsh,Tarn}.so.16 "$root/$libraries"/plugins/lib{EmulationManagement,TarnPlugin}.so; do
        if ldd "$file" | grep 'not found'; then
            echo "$file"
            unresolved=1
        fi
    done
    return "$unresolved"
}
check "no library is missing" all_found
check "the plugins take the libraries beside them" \
    matches "libTarn.so.16 => $root/" "$(ldd "$root/$libraries/plugins/libEmulationManagement.so")"
export HOME=$scratch/home
mkdir "$HOME"
list_plugins() {
    versions=$("$root/bin/${ide##*/}" -settingspath "$scratch/settings" -version 2>&1) || {
        echo "$versions"
        return 1
    }
}
check "the IDE starts" list_plugins
check "the IDE finds the plugin" matches 'emulationmanagement 16\.0\.0' "$versions"
check "the IDE finds the SDK's plugin" matches 'tarnplugin 16\.0\.0' "$versions"
print_totals
