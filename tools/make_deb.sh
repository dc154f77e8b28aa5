#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the Debian packages pelora-console, peloractl and pelora-deploy from a finished build.
#
#   tools/make_deb.sh BUILD-FOLDER OUTPUT-FOLDER
#
# The same build and the same time (tools/source_date.sh) give the same bytes.
set -euo pipefail
[ $# -eq 2 ] || { sed -n '3,7s/^# \{0,1\}//p' "$0" >&2; exit 2; }
build="$(cd "$1" && pwd)"
mkdir -p "$2"
output="$(cd "$2" && pwd)"

SOURCE_DATE_EPOCH="$("$(dirname "${BASH_SOURCE[0]}")/source_date.sh")"
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
umask 022
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
if ! cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/log" 2>&1 || grep -qi 'warning' "$work/log"; then
  cat "$work/log" >&2
  exit 1
fi
mv "$work"/*.deb "$output/"
