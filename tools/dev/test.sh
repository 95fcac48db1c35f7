# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"
# shellcheck source=tools/dev/image.sh
source "$project/tools/dev/image.sh"

verb_test() {
    local preset=release filter=. ring status=0
    local -a rings=(check unit qml ide robustness e2e fuzz bench soak setup)
    while (($#)); do
        case $1 in
        --sanitize)
            preset=sanitize
            rings=(unit qml ide robustness fuzz)
            shift
            ;;
        --ring)
            rings=("${2:?--ring needs a name}")
            shift 2
            ;;
        --filter)
            filter=${2:?--filter needs a regular expression}
            shift 2
            ;;
        *) fail "test: unknown option '$1'" ;;
        esac
    done

    build_preset "$preset"
    if [[ " ${rings[*]} " =~ " e2e "|" soak "|" setup " ]]; then ensure_image; fi

    local results=$build_root/$preset/test-results
    rm -rf "$results"
    mkdir -p "$results"
    for ring in "${rings[@]}"; do
        say "ring $ring"
        # Rings that measure or that drive a whole virtual machine have the machine to themselves.
        local jobs=2
        [[ $ring != e2e && $ring != bench && $ring != soak && $ring != setup ]] || jobs=1
        ctest --test-dir "$build_root/$preset" --label-regex "^$ring\$" --tests-regex "$filter" --parallel "$jobs" \
            --test-output-size-passed 1000000 --test-output-size-failed 1000000 --output-on-failure --no-tests=ignore \
            --output-junit "$results/$ring.xml" 7>&- || status=$?
    done
    "$project/tools/test-summary.py" "$results" "${rings[@]}" || status=$?
    return "$status"
}
