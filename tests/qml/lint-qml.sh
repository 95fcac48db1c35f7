#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# usage: lint-qml.sh IMPORT_PATH RESOURCES
# No warning about any document of the view, its scripts or its tests. RESOURCES lists the documents under the names that
# they have in the program.
set -euo pipefail
import_path=${1:?usage: lint-qml.sh IMPORT_PATH RESOURCES}
resources=${2:?usage: lint-qml.sh IMPORT_PATH RESOURCES}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
qmllint=/usr/lib/qt6/bin/qmllint

mapfile -d '' -t documents < <(git ls-files -z --cached --others --exclude-standard 'src/resources/*.qml')
mapfile -d '' -t scripts < <(git ls-files -z --cached --others --exclude-standard 'src/resources/*.js' 'tests/*.js')
mapfile -d '' -t tests < <(git ls-files -z --cached --others --exclude-standard 'tests/*.qml')
if ((${#documents[@]} == 0 || ${#scripts[@]} == 0 || ${#tests[@]} == 0)); then
    echo "no documents found" >&2
    exit 1
fi
for file in "$import_path/org/quova/qmldir" "$resources"; do
    if [[ ! -e $file ]]; then
        echo "there is no $file" >&2
        exit 1
    fi
done

"$qmllint" --max-warnings 0 -I "$import_path" "${documents[@]}"
# Of scripts, qmllint reads the syntax only; told to count warnings, it crashes.
"$qmllint" "${scripts[@]}"
# Tests find objects by name, so that their types are known at run time, and live among context properties.
"$qmllint" --max-warnings 0 -I "$import_path" --resource "$resources" \
    --unqualified disable --missing-property disable "${tests[@]}"
