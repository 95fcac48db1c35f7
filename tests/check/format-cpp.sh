#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Every C++ file has the project's format.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h' | xargs -0 -r clang-format --dry-run --Werror
