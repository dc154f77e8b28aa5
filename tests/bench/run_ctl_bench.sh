#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures peloractl against ldapsearch, ldapmodify and ldbmodify, on a domain controller of the lab's with
# 1,000 and 10,000 users and on a directory file with 10,000, and prints a table of ratios and limits. The
# exit code is 1 when one exceeds its limit.
#
#   tests/bench/run_ctl_bench.sh [BUILD-FOLDER]
#
# Takes some minutes, and wants a machine that does nothing else. The first run makes the users.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
build="${1:-$root/build/native}"
cmake --build "$build" --target ctl_bench
export PELORA_LAB_BENCH=1
exec "$root/tests/lab/run_in_lab.sh" "$build/tests/bench/ctl_bench" "$build/hosts/ctl/peloractl" \
  "OU=Hundreds,DC=pelora,DC=test" "OU=Thousands,DC=pelora,DC=test" "$build/bench"
