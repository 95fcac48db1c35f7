# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

# In the ring the benchmarks run shortly, to see that they work; here they run long enough to be believed.
verb_bench() {
    local filter=.
    while (($#)); do
        case $1 in
        --filter)
            filter=${2:?--filter needs a regular expression}
            shift 2
            ;;
        *) fail "bench: unknown option '$1'" ;;
        esac
    done
    build_preset release
    EMULATIONMANAGEMENT_LONG_RUN=1 "$project/tools/run-ring.py" "$build_root/release" bench "$filter"
}
