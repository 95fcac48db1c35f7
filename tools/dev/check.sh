# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

# Left out: static texts are made when the library loads, once; a service's D-Bus properties are read when somebody asks;
# a request's fields are filled in one after another, which differs from all at once; and a loop over a function's result
# cannot detach anything. (libvirt's own macro for callbacks casts functions.)
clazy_checks=level1,no-non-pod-global-static,no-qproperty-without-notify,no-qstring-arg,no-range-loop-detach

# The quick checks are tests as well (ring check); the static analysis is only here.
verb_check() {
    build_preset release
    ctest --test-dir "$build_root/release" --label-regex '^check$' --output-on-failure
    say "clang-tidy"
    (cd "$project" && git ls-files -z --cached --others --exclude-standard 'src/*.cpp' 'platform/*.cpp' 'emulator/*.cpp') |
        (cd "$project" && xargs -0 -P 2 -n 4 clang-tidy --quiet --warnings-as-errors='*' -p "$build_root/release")
    say "clazy"
    (cd "$project" && git ls-files -z --cached --others --exclude-standard 'src/*.cpp' 'platform/*.cpp' 'emulator/*.cpp') |
        (cd "$project" && xargs -0 -P 2 -n 4 clazy-standalone --checks="$clazy_checks" \
            --extra-arg=-Wno-cast-function-type-mismatch -p "$build_root/release")
    say "checked"
}
