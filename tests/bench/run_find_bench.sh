#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures the console's list of objects, and finding in it, on a directory file with 100,000 users, and
# prints a table of limits. The exit code is 1 when one is exceeded.
#
#   tests/bench/run_find_bench.sh [BUILD-FOLDER]
#
# Takes a minute, and wants a machine that does nothing else. The first run makes the file, which takes
# some minutes more.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
build="${1:-$root/build/native}"
cmake --build "$build" --target find_bench
exec "$build/tests/bench/find_bench" "$build/bench"
