#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds everything, runs every test and prints the totals.
#
# Suites run while the next build is under way: they wait more than they compute.
set -uo pipefail
cd "$(dirname "$0")"

./install.sh test || exit 1
# Directory tests run beside a domain of their own: where that cannot be, it is said at once.
tests/lab/choose_network.sh >/dev/null || exit 1

failed=0
job=
log=

# Starts a command beside what follows, in a process group of its own.
start() {
  log="build/$1.log"
  shift
  set -m
  "$@" >"$log" 2>&1 &
  job=$!
  set +m
}

# Waits for it and shows what it had to say.
finish() {
  wait "$job" || failed=1
  job=
  cat "$log"
}

trap '[ -z "$job" ] || kill -- "-$job"' EXIT
trap 'exit 130' INT TERM

configure() {
  rm -rf "build/$1/results" "build/$1/suites.txt"
  cmake --preset "$1" -DBUILD_TESTING=ON || exit 1
}
build() { cmake --build --preset "$1" || exit 1; }

for preset in windows native asan; do configure "$preset"; done
# A suite that runs under the sanitizers runs there only.
suite_names() { sed 's|.*/||; s|\.xml$||' "$1" | paste -sd '|'; }
grep -vE "/($(suite_names build/asan/suites.txt))\.xml$" build/native/suites.txt >build/native/alone.txt
native_alone="^($(suite_names build/native/alone.txt))$"

# The extension itself, inside a property sheet of the system it is written for. It has one processor.
build windows
start windows-suites tests/windows/run_wine_suites.sh
build native
finish
start native-suites ctest --preset native -j "$(nproc)" -R "$native_alone"
build asan
finish
ctest --preset asan -j "$(nproc)" || failed=1

python3 tests/totals.py build/native/alone.txt build/asan/suites.txt build/windows/suites.txt || failed=1
exit "$failed"
