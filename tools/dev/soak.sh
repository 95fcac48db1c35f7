# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"
# shellcheck source=tools/dev/image.sh
source "$project/tools/dev/image.sh"

verb_soak() {
    local minutes=30 filter=.
    local -a seed=()
    while (($#)); do
        case $1 in
        --minutes)
            minutes=${2:?--minutes needs a number}
            shift 2
            ;;
        --filter)
            filter=${2:?--filter needs a regular expression}
            shift 2
            ;;
        --seed)
            seed=(--seed "${2:?--seed needs a number}")
            shift 2
            ;;
        *) fail "soak: unknown option '$1'" ;;
        esac
    done
    build_preset release
    ensure_image
    "$project/tools/run-ring.py" "$build_root/release" soak "$filter" -- --minutes "$minutes" "${seed[@]}"
}
