# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

# A Debian package and the extension archives, in the build folder's "packages".
verb_package() {
    (($# == 0)) || fail "package: unknown option '$1'"
    build_preset release EmulationManagement TarnPlugin TarnPasst EmulationManagementTranslations
    local build=$build_root/release
    rm -rf "$build/packages"
    (cd "$build" && with_progress "$build/package.log" cpack)
    rm -rf "$build/packages/_CPack_Packages"
    say "made:"
    printf '  %s\n' "$build"/packages/* >&2
}
