# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

# The quick checks are tests as well (ring check); the static analysis is only here.
verb_check() {
    build_preset release
    ctest --test-dir "$build_root/release" --label-regex '^check$' --output-on-failure
    say "clang-tidy"
    (cd "$project" && git ls-files -z 'src/*.cpp' 'platform/*.cpp' 'emulator/*.cpp') |
        (cd "$project" && xargs -0 -P 2 -n 4 clang-tidy --quiet --warnings-as-errors='*' -p "$build_root/release")
    say "clazy"
    (cd "$project" && git ls-files -z 'src/*.cpp' 'platform/*.cpp' 'emulator/*.cpp') |
        (cd "$project" && xargs -0 -P 2 -n 4 clazy-standalone --checks=level1,no-non-pod-global-static \
            -p "$build_root/release")
    say "checked"
}
