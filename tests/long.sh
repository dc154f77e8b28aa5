#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The long forms of tests that ./test.sh runs in short, with a table of what was done.
#
#   tests/long.sh [FUZZ-SECONDS [KILLS]]
#
# FUZZ-SECONDS (600) for each fuzzer, KILLS (1000) of a program that writes to a directory file. Everything is
# built as by ./test.sh. The table stands in build/long.txt too.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
fuzz_seconds="${1:-600}"
kills="${2:-1000}"
failed=0
cmake --preset native >/dev/null || exit 1
cmake --build build/native --target ldb_directory_test \
  pelora-console peloractl pelora_deploy_folder pelora_manual_pages || exit 1
{
  echo "programs killed while they write"
  LDB_MODULES_DISABLE_DEEPBIND=1 PELORA_KILL_ROUNDS="$kills" \
    build/native/tests/unit/ldb_directory_test --gtest_filter='LdbKillTest.*' |
    grep -E '^[0-9]+ kills|FAILED|PASSED'
  [ "${PIPESTATUS[0]}" -eq 0 ] || failed=1
  echo
  tests/fuzz/run_fuzzers.sh "$fuzz_seconds" || failed=1
  echo
  echo "packages in a system that has nothing else"
  tests/packages/clean_system.sh || failed=1
  echo
  echo "a release, built twice"
  tests/packages/release_twice.sh || failed=1
  echo
  [ "$failed" -eq 0 ] && echo "all held" || echo "SOMETHING FAILED"
  exit "$failed"
} | tee build/long.txt
exit "${PIPESTATUS[0]}"
