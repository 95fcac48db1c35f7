# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}" "${cache:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"
# shellcheck source=tools/dev/image.sh
source "$project/tools/dev/image.sh"

verb_run() {
    local tour=0
    [[ -n ${DISPLAY:-} ]] || tour=1 # the tools have only the X11 window system
    while (($#)); do
        case $1 in
        --tour)
            tour=1
            shift
            ;;
        *) fail "run: unknown option '$1'" ;;
        esac
    done
    build_preset release demo
    ensure_image
    unlock_checkout
    if ((tour)); then
        # A network of its own: the tour's ports never meet an emulator that somebody uses.
        "$project/tools/isolated" dbus-run-session -- \
            "$project/tools/demo/tour.py" --build "$build_root/release" --image "$emulator_image" --output "$build_root/tour"
    else
        "$project/tools/demo/open.py" --build "$build_root/release" --image "$emulator_image" --directory "$cache/demo"
    fi
}
