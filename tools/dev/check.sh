# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

verb_check() {
    build_preset release
    ctest --test-dir "$build_root/release" --label-regex '^(check|analysis)$' --parallel 2 --output-on-failure --no-tests=error
    say "checked"
}
