#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# usage: lint-qml.sh IMPORT_PATH
# No warning about any document of the view.
set -euo pipefail
import_path=${1:?usage: lint-qml.sh IMPORT_PATH}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

mapfile -d '' -t documents < <(git ls-files -z 'src/resources/*.qml')
if ((${#documents[@]} == 0)); then
    echo "no documents found" >&2
    exit 1
fi
if [[ ! -e $import_path/org/quova/qmldir ]]; then
    echo "no description of org.quova in $import_path" >&2
    exit 1
fi

/usr/lib/qt6/bin/qmllint --max-warnings 0 -I "$import_path" "${documents[@]}"
