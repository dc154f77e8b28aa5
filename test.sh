#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds everything, runs every test and prints the totals.
#
# Suites run while the next build is under way: they wait more than they compute.
set -uo pipefail
cd "$(dirname "$0")" || exit 1

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
  local preset="$1"
  shift
  rm -rf "build/$preset/results" "build/$preset/suites.txt"
  cmake --preset "$preset" -DBUILD_TESTING=ON "$@" || exit 1
}
build() { cmake --build --preset "$1" || exit 1; }

configure windows
configure asan
# A suite that runs under the sanitizers runs there only.
configure native -DPELORA_SUITES_ELSEWHERE="$PWD/build/asan/suites.txt"

# The extension itself, inside a property sheet of the system it is written for. It has one processor.
build windows
start windows-suites tests/windows/run_wine_suites.sh
build asan
finish
# Half as many again as there are processors: some suites wait for servers.
start asan-suites ctest --preset asan -j "$(($(nproc) * 3 / 2))"
build native
ctest --preset native -j "$(nproc)" || failed=1
finish

python3 tests/totals.py build/{native,asan,windows}/suites.txt || failed=1
exit "$failed"
