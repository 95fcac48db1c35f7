# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

verb_fuzz() {
    local seconds=60 seed=$RANDOM
    while (($#)); do
        case $1 in
        --seconds)
            seconds=${2:?--seconds needs a number}
            shift 2
            ;;
        --seed)
            seed=${2:?--seed needs a number}
            shift 2
            ;;
        *) fail "fuzz: unknown option '$1'" ;;
        esac
    done
    build_preset sanitize
    "$project/tools/run-ring.py" "$build_root/sanitize" fuzz . -- --seconds "$seconds" --seed "$seed"
}
