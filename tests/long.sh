#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The long forms of tests that ./test.sh runs in short, with a table of what was done.
#
#   tests/long.sh [FUZZ-SECONDS [KILLS [ROUNDS]]]
#
# FUZZ-SECONDS (600) for each fuzzer, KILLS (1000) of a program that writes to a directory file, ROUNDS
# (10000) of several writers at once and of sheets opened and closed. Everything is built as by ./test.sh. The
# packages are tried in a bare system, which needs root and a mirror of Debian.
# The table stands in build/long.txt too. A test that has a short and a long form takes its number of rounds
# from PELORA_LONG.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
fuzz_seconds="${1:-600}"
kills="${2:-1000}"
rounds="${3:-10000}"
all=1000000000
log=build/long.log
cmake --preset native >/dev/null && cmake --build build/native || exit 1
: >"$log"

failed=0
row() { printf '%-34s %s\n' "$1" "$2"; }

# trial NAME ROUNDS PROGRAM FILTER PATTERN [LAUNCHER]: one row, with what the program says of itself.
trial() {
  local said
  said="$(LDB_MODULES_DISABLE_DEEPBIND=1 PELORA_LONG="$2" ${6:+"$6"} "$PWD/build/native/tests/$3" \
    --gtest_filter="$4" 2>&1 |
    tee -a "$log")" || { failed=1; row "$1" "FAILED (see $log)"; return; }
  # Nothing that was looked for and not found has been tried.
  said="$(sed -n "$5" <<<"$said")"
  [ -n "$said" ] || { failed=1; said="FAILED: it said nothing"; }
  row "$1" "$said"
}

# The same for programs that tell a number for each of many cases: their sum.
sum() {
  local numbers
  numbers="$(LDB_MODULES_DISABLE_DEEPBIND=1 PELORA_LONG="$2" "build/native/tests/$3" --gtest_filter="$4" 2>&1 |
    tee -a "$log")" || { failed=1; row "$1" "FAILED (see $log)"; return; }
  numbers="$(sed -n "s/^$5: \([0-9]*\) .*/\1/p" <<<"$numbers")"
  [ -n "$numbers" ] || { failed=1; row "$1" "FAILED: it said nothing"; return; }
  row "$1" "$(awk '{ sum += $1 } END { print sum " in " NR " cases" }' <<<"$numbers")"
}

{
  sum "faults injected and survived" "$all" harness/harness_test '*Faults.*' \
    'faults injected and survived'
  sum "random edits and applies" 1000 harness/harness_test '*PageModel.*' 'random edits and applies'
  sum "allocations failed and survived" "$all" harness/memory_test '*' 'allocations failed and survived'
  trial "programs killed while they write" "$kills" unit/ldb_directory_test 'LdbKillTest.*' \
    's/^\([0-9]* kills.*\)/\1/p'
  trial "three writers" "$rounds" harness/harness_test 'SeveralWriters.*' \
    's/^rounds of three writers: //p'
  trial "two writers on a domain" 1000 lab/lab_changes_test '*NoAcceptedChangeIsLost' \
    's/^two writers, //p' tests/lab/run_in_lab.sh
  trial "soak" "$rounds" harness/harness_test 'Soak.*' 's/^soak: //p'
  if said="$(tests/packages/clean_system.sh 2>>"$log")"; then
    row "packages" "$said"
  else
    failed=1
    row "packages" "FAILED (see $log)"
  fi
  echo
  tests/fuzz/run_fuzzers.sh "$fuzz_seconds" || failed=1
  echo
  [ "$failed" -eq 0 ] && echo "all held" || echo "SOMETHING FAILED"
  exit "$failed"
} | tee build/long.txt
exit "${PIPESTATUS[0]}"
