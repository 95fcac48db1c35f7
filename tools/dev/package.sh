# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}" "${build_root:?}"
# shellcheck source=tools/dev/build.sh
source "$project/tools/dev/build.sh"

# make_packages BUILD-DIR: a Debian package and the extension archives, in the build folder's "packages".
make_packages() {
    rm -rf "$1/packages"
    (cd "$1" && with_progress "$1/package.log" cpack)
    rm -rf "$1/packages/_CPack_Packages"
}

verb_package() {
    (($# == 0)) || fail "package: unknown option '$1'"
    build_preset release EmulationManagement TarnPlugin TarnPasst EmulationManagementTranslations
    make_packages "$build_root/release"
    say "made:"
    printf '  %s\n' "$build_root"/release/packages/* >&2
}
