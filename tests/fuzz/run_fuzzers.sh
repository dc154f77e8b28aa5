#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the fuzzers and runs each for so many seconds, on what the tree and earlier runs know of it.
#
#   tests/fuzz/run_fuzzers.sh SECONDS [FUZZER...]
#
# Prints a row for each: executions, edges covered, inputs kept. An
# input that breaks one is left in build/asan/tests/fuzz/found, to be put into tests/fuzz/corpus/FUZZER under the name of its defect.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit 1
[ $# -gt 0 ] || { echo "usage: $0 SECONDS [FUZZER...]" >&2; exit 2; }
seconds="$1"
shift
fuzzers=("$@")
if [ ${#fuzzers[@]} -eq 0 ]; then
  mapfile -t fuzzers < <(sed -n 's/^  \(fuzz_[a-z_]*\))\?$/\1/p' tests/fuzz/CMakeLists.txt)
  fuzzers+=(fuzz_sheets)
fi
folder=build/asan/tests/fuzz
mkdir -p "$folder"
{ cmake --preset asan && cmake --build build/asan --target "${fuzzers[@]}"; } >"$folder/build.log" 2>&1 ||
  { tail -n 20 "$folder/build.log" >&2; exit 1; }

failed=0
mkdir -p "$folder/found"
printf '%-28s %12s %8s %8s  %s\n' fuzzer executions edges inputs result
for fuzzer in "${fuzzers[@]}"; do
  grown="$folder/grown/$fuzzer"
  mkdir -p "$grown"
  seeds=("$grown")
  [ ! -d "tests/fuzz/corpus/$fuzzer" ] || seeds+=("tests/fuzz/corpus/$fuzzer")
  [ "$fuzzer" != fuzz_resource_file ] || seeds+=("$folder/corpus")
  leaks=1
  # The LDAP library itself loses what it cannot read.
  [ "$fuzzer" != fuzz_ldap_messages ] || leaks=0
  log="$folder/$fuzzer.log"
  result=passed
  ASAN_OPTIONS="detect_leaks=$leaks" "$folder/$fuzzer" -detect_leaks="$leaks" -max_total_time="$seconds" \
    -max_len=4096 -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
    -artifact_prefix="$folder/found/$fuzzer-" "${seeds[@]}" >"$log" 2>&1 || { result=FAILED; failed=1; }
  executions="$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")"
  edges="$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' "$log" | tail -n 1)"
  inputs="$(find "$grown" -type f | wc -l)"
  # One that never began has not passed.
  if [ -z "$executions" ] || [ "$executions" -eq 0 ]; then result=FAILED; failed=1; fi
  printf '%-28s %12s %8s %8s  %s\n' "$fuzzer" "${executions:-0}" "${edges:-0}" "$inputs" "$result"
done
exit "$failed"
