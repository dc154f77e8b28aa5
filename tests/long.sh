#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The long forms of tests that ./test.sh runs in short, with a table of what was done.
#
#   tests/long.sh [only] [NAME=NUMBER...]
#
#   fuzz=600         seconds for each fuzzer
#   kills=1000       of a program that writes to a directory file
#   rounds=10000     of each of three writers at once on a file, of sheets opened and closed, and
#                    of random sheets
#   domain=3000      rounds of each of three writers at once on a domain
#   counter=1000     rounds of two writers that count on one number of a domain
#   controllers=1    the suite on a domain of three controllers and two sites
#   trusted=1        the suite on a domain beside another one that it trusts
#   tickets=1        a ticket that ends by itself in the middle of a thousand changes
#   edits=1000       rounds of random edits on each tab
#   bulk=5000        users that one sheet of the console changes, and another one on a domain
#   faults=0         calls that fail, of each trial: always every one
#   allocations=400  allocations that fail, of each trial; 0: every one
#   windows=200      the same of each trial in front of the console's windows
#   wine=10000       sheets opened, edited and closed by the module under Wine
#   threads=1        the suites of what works beside the windows, under the thread sanitizer
#   alone=1          every source compiled by itself
#
#   preset=asan      the build whose programs are run: the sanitized one, or native, which is several times
#                    as fast; a bulk always takes the native one
#
# A row whose number is "none" is left out; with "only" first, all rows that are not named are. What a row
# needs is built as by ./test.sh, and the preset tsan where its row is wanted. The table stands
# in build/long.txt too, what the programs say in build/long.log; one run at a time has them.
#
# A test that has a short and a long form takes its number of rounds from PELORA_LONG.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

declare -A wanted=([fuzz]=600 [kills]=1000 [rounds]=10000 [domain]=3000 [counter]=1000 [controllers]=1 [trusted]=1 [tickets]=1 [edits]=1000 [bulk]=5000
  [faults]=0 [allocations]=400 [windows]=200 [wine]=10000 [threads]=1 [alone]=1)
preset=asan
if [ "${1:-}" = only ]; then
  shift
  for name in "${!wanted[@]}"; do
    [[ " $*" == *" $name="* ]] || wanted[$name]=none
  done
fi
for argument in "$@"; do
  name="${argument%%=*}"
  if [ "$name" = preset ]; then
    preset="${argument#*=}"
    continue
  fi
  if [ "$name" = "$argument" ] || [ -z "${wanted[$name]:-}" ]; then
    echo "$0: what is '$argument'?" >&2
    exit 2
  fi
  wanted[$name]="${argument#*=}"
done
log=build/long.log
failed=0
began="$SECONDS"

# Whether a row is wanted; its rounds are in `rounds` then.
wants() {
  rounds="${wanted[$1]}"
  [ "$rounds" != 0 ] || rounds=1000000000
  [ "$rounds" != none ]
}

# row NAME TEXT: with the seconds that it took.
row() {
  printf '%-36s %6s s  %s\n' "$1" "$((SECONDS - began))" "$2"
  began="$SECONDS"
}
fail() {
  failed=1
  row "$1" "FAILED (see $log)"
}

# build PRESET TARGET...: false when it fails.
build() { { cmake --preset "$1" -DBUILD_TESTING=ON && cmake --build "build/$1" --target "${@:2}"; } >>"$log" 2>&1; }

# said NAME PROGRAM FILTER [LAUNCHER]: what a test program says, into `output`; false when it fails.
said() {
  build "$preset" "${2##*/}" || { fail "$1"; return 1; }
  began="$SECONDS"
  output="$(LDB_MODULES_DISABLE_DEEPBIND=1 LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp" \
    PELORA_LONG="$rounds" ${4:+"$4"} "$PWD/build/$preset/tests/$2" --gtest_filter="$3" 2>&1)"
  local code=$?
  printf '%s\n' "== $1" "$output" >>"$log"
  [ "$code" -eq 0 ] || fail "$1"
  return "$code"
}

# trial WANTED NAME PROGRAM FILTER PATTERN [LAUNCHER]: one row, with what the program says of itself.
trial() {
  wants "$1" || return
  said "$2" "$3" "$4" "${6:-}" || return
  local text
  text="$(sed -n "$5" <<<"$output")"
  # Nothing that was looked for and not found has been tried.
  if [ -n "$text" ]; then row "$2" "$text"; else fail "$2"; fi
}

# sum WANTED NAME PROGRAM FILTER WORDS: the same for programs that tell a number for each of many cases.
sum() {
  wants "$1" || return
  said "$2" "$3" "$4" || return
  local numbers
  numbers="$(sed -n "s/^$5: \([0-9]*\) .*/\1/p" <<<"$output")"
  if [ -z "$numbers" ]; then fail "$2"; return; fi
  row "$2" "$(awk '{ sum += $1 } END { print sum " in " NR " cases" }' <<<"$numbers")"
}

# suites NAME PRESET SUITE...: suites of another preset, all of which have to be there.
suites() {
  local pattern tests passed
  pattern="$(IFS='|'; echo "^(${*:3})\$")"
  build "$2" "${@:3}" || { fail "$1"; return; }
  began="$SECONDS"
  tests="$(ctest --preset "$2" -R "$pattern" -j "$(nproc)" 2>&1)" || { echo "$tests" >>"$log"; fail "$1"; return; }
  echo "$tests" >>"$log"
  passed="$(sed -n 's/^100% tests passed, 0 tests failed out of \([0-9]*\)/\1/p' <<<"$tests")"
  if [ "$passed" = "$(($# - 2))" ]; then row "$1" "$passed suites passed"; else fail "$1"; fi
}

# under_wine NAME PROGRAM FILTER PATTERN: one row, with what a test program of the module says of itself.
under_wine() {
  local folder="$PWD/build/windows/long" told text
  build windows "$2" || { fail "$1"; return; }
  began="$SECONDS"
  rm -rf "$folder"
  mkdir -p "$folder" build/windows/results
  # That program alone, and once.
  grep "/$2\.xml\$" build/windows/windows_suites.txt >"$folder/windows_suites.txt"
  told="$(GTEST_FILTER="$3" PELORA_LONG="$rounds" PELORA_WINE_LIMIT=7200 \
    tests/windows/run_wine_suites.sh "$folder" 2>&1)" ||
    { echo "$told" >>"$log"; fail "$1"; return; }
  echo "$told" >>"$log"
  text="$(sed -n "$4" "$folder"/results/*.log | tr -d '\r' | head -n 1)"
  if [ -n "$text" ]; then row "$1" "$text"; else fail "$1"; fi
}

watched_threads=(changes_test session_test ui_background_reading ui_object_search)

mkdir -p build
# Two at once would write into each other's table, and into each other's folders.
exec 9>build/long.lock
if ! flock -n 9; then
  echo "$0: another one is running on this tree" >&2
  exit 2
fi
: >"$log"
{
  sum faults "faults injected and survived" harness/harness_test '*Faults.*:*LatePages.*' 'faults injected and survived'
  sum edits "random edits and applies" harness/harness_test '*PageModel.*' 'random edits and applies'
  trial rounds "random sheets" harness/harness_test 'SheetModel.*' 's/^random sheets: //p'
  sum allocations "allocations failed and survived" harness/memory_test '*' 'allocations failed and survived'
  # The toolkit, compiled without exceptions, loses what it holds when one passes through.
  ASAN_OPTIONS=detect_leaks=0 sum windows "the same before windows" ui/ui_exceptions '*Memory*' \
    'allocations failed and survived'
  trial kills "programs killed while they write" unit/ldb_directory_test 'LdbKillTest.*' \
    's/^\([0-9]* kills.*\)/\1/p'
  trial rounds "three writers on a file" harness/harness_test 'SeveralWriters.*' \
    's/^rounds of three writers: //p'
  trial domain "three writers on a domain" lab/lab_changes_test 'SeveralWritersOnADomain.*' \
    's/^rounds of three writers on a domain: //p' tests/lab/run_in_lab.sh
  trial counter "two writers on a domain" lab/lab_changes_test '*NoAcceptedChangeIsLost' \
    's/^two writers, //p' tests/lab/run_in_lab.sh
  PELORA_LAB_KIND=controllers trial controllers "several controllers" lab/lab_controllers_test \
    '-TrustedDomain.*:EndingTicket.*' 's/^\[  PASSED  \] \([0-9]* tests\).*/\1 passed/p' tests/lab/run_in_lab.sh
  PELORA_LAB_KIND=trusted trial trusted "a trusted domain" lab/lab_controllers_test 'TrustedDomain.*' \
    's/^\[  PASSED  \] \([0-9]* tests\).*/\1 passed/p' tests/lab/run_in_lab.sh
  trial tickets "a ticket that ends" lab/lab_controllers_test 'EndingTicket.*' \
    's/^a ticket that ends: //p' tests/lab/run_in_lab.sh
  trial rounds "soak" harness/harness_test 'Soak.Nothing*' 's/^soak: //p'
  # How long the window lets one wait is measured as it is handed out.
  preset=native trial bulk "a bulk in the window" ui/ui_writing 'BulkSheet.AllOfIt*' 's/^bulk: //p'
  preset=native trial bulk "a bulk on a domain" lab/console/lab_console_test 'DomainBulk.AllOfIt*' \
    's/^bulk on a domain: //p' tests/lab/run_in_lab.sh
  if wants wine; then
    under_wine "soak under Wine" windows_extension_test 'EnduranceTest.*' 's/^soak under Wine: //p'
  fi
  if wants threads; then suites "threads under TSan" tsan "${watched_threads[@]}"; fi
  if wants alone; then
    if cmake --preset native -B build/alone -DBUILD_TESTING=ON -DPELORA_UNITY=OFF >>"$log" 2>&1 &&
      cmake --build build/alone -- -k 0 >>"$log" 2>&1; then
      row "sources, each alone" "$(find build/alone -name '*.cpp.o' | wc -l) compiled"
    else
      fail "sources, each alone"
    fi
  fi
  echo
  if wants fuzz; then tests/fuzz/run_fuzzers.sh "$rounds" || failed=1; fi
  echo
  [ "$failed" -eq 0 ] && echo "all held" || echo "SOMETHING FAILED"
  exit "$failed"
} | tee build/long.txt
exit "${PIPESTATUS[0]}"
