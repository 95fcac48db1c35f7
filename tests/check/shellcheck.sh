#!/usr/bin/env bash
# No shell script has a finding.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
mapfile -t scripts < <(git grep -lE '^#!.*(bash|/sh)$|^# shellcheck shell=' -- . ':!*.md')
shellcheck --external-sources --severity=warning "${scripts[@]}"
