#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Prints the time, in seconds since 1970, that everything made from these sources bears: SOURCE_DATE_EPOCH when it
# is set, or else the last commit's, or else (sources without a repository) that of CHANGELOG.md.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
if [ -n "${SOURCE_DATE_EPOCH:-}" ]; then
  echo "$SOURCE_DATE_EPOCH"
elif [ -e "$root/.git" ]; then
  git -C "$root" log -1 --format=%ct
else
  stat -c %Y "$root/CHANGELOG.md"
fi
