#!/usr/bin/env bash
# Every C++ file has the project's format.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
git ls-files -z '*.cpp' '*.h' | xargs -0 -r clang-format --dry-run --Werror
