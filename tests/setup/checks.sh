# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by the tests of this folder: checks that are counted, and printed as Qt Test prints its rows; the first that
# fails ends the test.
# shellcheck shell=bash

passed=0
program=$(basename "$0" .sh)

# check WHAT COMMAND...
check() {
    local what=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
        echo "PASS   : $program::$what()"
    else
        echo "FAIL!  : $program::$what()"
        echo "Totals: $passed passed, 1 failed, 0 skipped"
        exit 1
    fi
}

# fails COMMAND...: for a check that something is not so; bash lets a command after "!" fail unnoticed.
fails() {
    if "$@"; then return 1; fi
}

# matches REGEX TEXT
matches() { [[ $2 =~ $1 ]]; }

print_totals() { echo "Totals: $passed passed, 0 failed, 0 skipped"; }
