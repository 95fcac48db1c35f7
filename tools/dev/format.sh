# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
: "${project:?}"

verb_format() {
    cd "$project"
    git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h' | xargs -0 -r clang-format -i
    git ls-files -z --cached --others --exclude-standard '*.qml' | xargs -0 -r /usr/lib/qt6/bin/qmlformat -i
}
