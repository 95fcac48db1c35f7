#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: fetch-qtcreator-headers.sh VERSION DESTINATION SCRATCH
# Takes the headers of the packaged Qt Creator out of its Debian source package. The machine's own apt sources name the
# mirror; nothing in /etc is changed.
set -euo pipefail
version=$1 destination=$2 scratch=$3

rm -rf "$scratch"
mkdir -p "$scratch/lists/partial" "$scratch/sources"
for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [[ -f $file ]] || continue
    case $file in
    *.sources) sed 's/^Types:.*/Types: deb-src/' "$file" >"$scratch/sources/$(basename "$file")" ;;
    *.list) sed -n 's/^deb \(.*\)/deb-src \1/p' "$file" >"$scratch/sources/$(basename "$file")" ;;
    esac
done
apt=(-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$scratch/sources" -o Dir::State::Lists="$scratch/lists"
    -o Dir::Cache="$scratch" -o APT::Sandbox::User=root)

apt-get "${apt[@]}" -q update
cd "$scratch"
# The .dsc's signature may be refused while the archive arrives: what counts is the checksum below.
apt-get "${apt[@]}" -q source --download-only qtcreator || true

archive=$(ls "qtcreator_$version"*.orig.tar.*z | head -n 1)
checksum=$(apt-cache "${apt[@]}" showsrc qtcreator | awk -v name="$archive" '
    /^Checksums-Sha256:/ { inside = 1; next } /^[^ ]/ { inside = 0 } inside && $3 == name { print $1; exit }')
[[ -n $checksum ]] || { echo "no checksum is known for $archive" >&2; exit 1; }
echo "$checksum  $archive" | sha256sum --check

mkdir headers
tar -C headers --no-same-owner --strip-components=1 --wildcards -xf "$archive" \
    '*/src/libs/*.h' '*/src/libs/*.hpp' '*/src/plugins/coreplugin/*.h'
rm -rf "$destination"
mv headers "$destination"
rm -rf "$scratch"
