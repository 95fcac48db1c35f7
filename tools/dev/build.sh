# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"

# build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1
    shift
    # Paths relative to the project, so that another clone or work tree finds what was compiled before.
    export CCACHE_DIR=${CCACHE_DIR:-$cache/ccache} CCACHE_BASEDIR=$project CCACHE_NOHASHDIR=1
    (
        cd "$project"
        if [[ ! -f $build_root/$preset/build.ninja ]]; then
            say "configuring $preset"
            with_progress "$build_root/$preset/configure.log" cmake --preset "$preset"
        fi
        say "building $preset"
        with_progress "$build_root/$preset/build.log" cmake --build --preset "$preset" ${1:+--target "$@"}
    )
}

verb_build() {
    local preset=release
    local -a targets=()
    while (($#)); do
        case $1 in
        --preset)
            preset=${2:?--preset needs a name}
            shift 2
            ;;
        --target)
            targets+=("${2:?--target needs a name}")
            shift 2
            ;;
        *) fail "build: unknown option '$1'" ;;
        esac
    done
    build_preset "$preset" "${targets[@]}"
    say "built: $build_root/$preset"
}
