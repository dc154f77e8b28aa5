#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures the console's list of objects, and finding in it, on a directory file and on a domain controller
# of the lab's, with 100,000 users each unless another number is given, and prints tables of limits. The exit
# code is 1 when one is exceeded.
#
#   tests/bench/run_find_bench.sh [BUILD-FOLDER [USERS]]
#
# Takes some minutes, and wants a machine that does nothing else. The first run makes the users, which takes
# more.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
build="${1:-$root/build/native}"
users="${2:-100000}"
cmake --build "$build" --target find_bench
code=0
echo "In a file:"
"$build/tests/bench/find_bench" "$build/bench" "$users" || code=$?
echo "In a domain:"
export PELORA_LAB_BENCH="$users"
"$root/tests/lab/run_in_lab.sh" "$build/tests/bench/find_bench" --domain || code=$?
exit "$code"
