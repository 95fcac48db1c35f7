#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# No shell script has a finding.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
mapfile -t scripts < <(git grep -lE '^#!.*(bash|/sh)$|^# shellcheck shell=' -- . ':!*.md')
shellcheck --external-sources --severity=warning "${scripts[@]}"
