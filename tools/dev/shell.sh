# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
verb_shell() {
    if (($#)); then
        "$@"
    else
        exec bash -i
    fi
}
