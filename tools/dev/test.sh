# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"
# shellcheck source=tools/dev/image.sh
source "$project/tools/dev/image.sh"

verb_test() {
    local preset=release filter=. ring
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
    local results=$build_root/$preset/test-results
    rm -rf "$results"
    mkdir -p "$results"
    if [[ $filter != . && ${#rings[@]} -gt 1 ]]; then mapfile -t rings < <(rings_with_a_match "$preset" "$filter" "${rings[@]}"); fi
    ((${#rings[@]})) || fail "test: no program matches $filter"
    if [[ " ${rings[*]} " =~ " e2e "|" soak "|" setup " ]]; then ensure_image; fi
    list_programs "$preset" "$filter" "${rings[@]}" >"$results/expected.json"

    # Most programs wait more than they work, so there are more of them at a time than cores. What measures time has the
    # machine to itself.
    local -a together=() alone=()
    for ring in "${rings[@]}"; do
        if [[ $ring == bench ]]; then alone+=("$ring"); else together+=("$ring"); fi
    done
    run_rings "$preset" "$filter" "$(($(nproc) * 2))" "$results/together" "${together[@]}"
    run_rings "$preset" "$filter" 1 "$results/alone" "${alone[@]}"
    "$project/tools/test-summary.py" "$results" "${rings[@]}"
}

# labels RING...: the regular expression for CTest.
labels() {
    local IFS='|'
    echo "^($*)\$"
}

# list_programs PRESET FILTER RING...: as JSON.
list_programs() {
    local preset=$1 filter=$2
    shift 2
    ctest --test-dir "$build_root/$preset" --label-regex "$(labels "$@")" --tests-regex "$filter" --show-only=json-v1
}

# rings_with_a_match PRESET FILTER RING...: those that have a program whose name matches, a line each.
rings_with_a_match() {
    local preset=$1 filter=$2 ring
    shift 2
    for ring in "$@"; do
        if list_programs "$preset" "$filter" "$ring" | grep -q '"LABELS"'; then echo "$ring"; fi
    done
}

# run_rings PRESET FILTER JOBS RESULTS [RING...]: writes RESULTS.xml and RESULTS.exit. What went wrong is the summary's to
# say, also of a CTest that died.
run_rings() {
    local preset=$1 filter=$2 jobs=$3 results=$4 status=0
    shift 4
    (($#)) || return 0
    say "rings $*"
    ctest --test-dir "$build_root/$preset" --label-regex "$(labels "$@")" --tests-regex "$filter" --parallel "$jobs" \
        --test-output-size-passed 1000000 --test-output-size-failed 1000000 --output-on-failure --no-tests=ignore \
        --output-junit "$results.xml" 7>&- || status=$?
    echo "$status" >"$results.exit"
}
