#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Every QML file has the project's format; says where one has not.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

mapfile -d '' -t documents < <(git ls-files -z --cached --others --exclude-standard '*.qml')
if ((${#documents[@]} == 0)); then
    echo "no QML files found" >&2
    exit 1
fi

status=0
for document in "${documents[@]}"; do
    /usr/lib/qt6/bin/qmlformat "$document" | diff --unified "$document" - || status=1
done
exit "$status"
