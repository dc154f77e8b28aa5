#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures everything that has a limit, and prints one table of all of it; it is kept in bench/table.txt of the
# build folder. The exit code is 1 when a limit is exceeded, 2 when something could not be measured.
#
#   tests/bench/run_all.sh [--long] [BUILD-FOLDER]
#
# Takes some minutes, and wants a machine that does nothing else. The first run makes the users, which takes many
# more. --long makes files of 100,000 users, too, and a domain of as many, which takes a while and is kept; where that
# domain is there already, it is measured without.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
long=()
[ "${1:-}" != --long ] || { long=(--long); shift; }
build="${1:-$root/build/native}"
bench="$build/tests/bench"
folder="$build/bench"
mkdir -p "$folder"
table="$folder/table.txt"
cmake --build "$build" --target add_bench ctl_bench directory_bench find_bench start_bench

# measure TITLE COMMAND...
code=0
measure() {
  local outcome=0
  printf '\n%s\n' "$1"
  shift
  "$@" || outcome=$?
  [ "$outcome" -le 1 ] || outcome=2
  [ "$outcome" -le "$code" ] || code="$outcome"
}
beside_a_domain=(env PELORA_LAB_BENCH=1 "$root/tests/lab/run_in_lab.sh")
large=100000
has_large_domain() { compgen -G "${PELORA_LAB_FOLDER:-$root/build/lab}/bench-$large-*.tar" >/dev/null; }
run() {
  uname -sr
  printf '%s processors, load %s\n' "$(nproc)" "$(cut -d' ' -f1-3 /proc/loadavg)"
  measure "The command line" "${beside_a_domain[@]}" "$bench/ctl_bench" "$build/hosts/ctl/peloractl" \
    "OU=Hundreds,DC=pelora,DC=test" "OU=Thousands,DC=pelora,DC=test" "$folder"
  measure "Tabs and the console's list, on a domain" "${beside_a_domain[@]}" "$bench/directory_bench" \
    "OU=Hundreds,DC=pelora,DC=test" "OU=Thousands,DC=pelora,DC=test"
  measure "Users added to a directory file" "$bench/add_bench" "$folder" "${long[@]}"
  measure "The console's list, of a directory file with 100,000 users" "$bench/find_bench" "$folder"
  local listed="The console's list, of a domain with 100,000 users"
  if [ ${#long[@]} -gt 0 ] || has_large_domain; then
    measure "$listed" env PELORA_LAB_BENCH="$large" "$root/tests/lab/run_in_lab.sh" "$bench/find_bench" --domain
  else
    printf '\n%s\n    not measured: there is none (--long makes it)\n' "$listed"
  fi
  measure "The console" "$bench/start_bench" "$build/hosts/console/pelora-console" "$folder"
  printf '\n%s limits are kept, %s are not; load %s\n' "$(grep -c ' good$' "$table")" \
    "$(grep -c ' TOO MUCH$' "$table")" "$(cut -d' ' -f1-3 /proc/loadavg)"
  exit "$code"
}
: >"$table"
run | tee "$table"
exit "${PIPESTATUS[0]}"
