#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds everything, runs every test and prints the totals.
set -uo pipefail
cd "$(dirname "$0")"

./install.sh test || exit 1

failed=0
suite_lists=()

for preset in native asan; do
  rm -rf "build/$preset/results" "build/$preset/suites.txt"
  cmake --preset "$preset" -DBUILD_TESTING=ON || exit 1
  cmake --build --preset "$preset" || exit 1
  suite_lists+=("build/$preset/suites.txt")
  ctest --preset "$preset" -j "$(nproc)" || failed=1
done

# The extension itself, inside a property sheet of the system it is written for.
rm -rf build/windows/results build/windows/suites.txt
cmake --preset windows || exit 1
cmake --build --preset windows || exit 1
suite_lists+=(build/windows/suites.txt)
tests/windows/run_wine_suites.sh || failed=1

python3 tests/totals.py "${suite_lists[@]}" || failed=1
exit "$failed"
