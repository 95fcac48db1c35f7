# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${cache:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

# Two stages, each kept in the cache folder under a name made of what went in: the base (kernel and system) changes with
# the tool chain, the image with our services. Both are written under another name and renamed when they are whole.

emulator_programs=(
    geoclue-emulation-service gstreamer-emulator-receiver remote-dbus-invoker sensorfw-emulation-service
)

image_hash() { sha256sum | cut -c1-12; }

image_base_path() {
    local hash
    hash=$({
        cd "$project/emulator/image"
        find build-base.sh inputs.sh initramfs-init root -type f -print0 | LC_ALL=C sort -z | xargs -0 sha256sum
        # The tool chain's programs are part of it.
        dpkg-query -W -f '${Package} ${Version}\n' | LC_ALL=C sort
    } | image_hash)
    echo "$cache/emulator-base-$hash"
}

# image_path BASE PROGRAMS
image_path() {
    local base=$1 programs=$2 hash scratch program
    scratch=$(mktemp -d)
    # Where a program was built is only in its debug information, which the image does not have.
    for program in "${emulator_programs[@]}"; do
        strip --remove-section=.note.gnu.build-id -o "$scratch/$program" "$programs/$program"
    done
    hash=$({
        basename "$base"
        cd "$project/emulator/image"
        find build-image.sh packages.spec services policies -type f -print0 | LC_ALL=C sort -z | xargs -0 sha256sum
        cd "$scratch"
        sha256sum "${emulator_programs[@]}"
    } | image_hash)
    rm -rf "$scratch"
    echo "$cache/emulator-image-$hash"
}

# make_once DIRECTORY WHAT COMMAND...: COMMAND gets a name to write to and one for scratch files. A second run waits.
make_once() {
    local directory=$1 what=$2
    shift 2
    [[ -d $directory ]] && return 0
    mkdir -p "$cache"
    (
        flock 9
        [[ -d $directory ]] && exit 0
        rm -rf "$cache"/emulator-*.partial "$cache"/emulator-*.scratch # what an interrupted run has left
        say "making the emulator's $what"
        with_progress "$cache/logs/emulator-$what.log" "$@" "$directory.partial" "$directory.scratch"
        mv "$directory.partial" "$directory"
    ) 9>"$cache/emulator-image.lock"
}

# Builds what is needed, and sets emulator_image to the image's folder (see emulator/image/build-image.sh). The link
# build/emulator-image leads there, too.
ensure_image() {
    local base programs=$build_root/release/emulator/bin
    build_preset release "${emulator_programs[@]}"
    base=$(image_base_path)
    make_once "$base" base "$project/emulator/image/build-base.sh"
    emulator_image=$(image_path "$base" "$programs")
    make_once "$emulator_image" image "$project/emulator/image/build-image.sh" "$base" "$programs"
    touch "$base" "$emulator_image"
    # Other versions stay for a while: other work trees, or disks on top of an image, may still be in use.
    find "$cache" -maxdepth 1 \( -name 'emulator-base-????????????' -o -name 'emulator-image-????????????' \) \
        -mtime +14 -exec rm -rf {} +
    ln -sfn "$emulator_image" "$build_root/emulator-image"
}

verb_image() {
    (($# == 0)) || fail "image: unknown option '$1'"
    ensure_image
    say "the emulator's image: $emulator_image ($(du -sh --apparent-size "$emulator_image" | cut -f1))"
}
