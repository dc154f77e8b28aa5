#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes a release twice, in folders of different names and lengths, at different times, and compares every byte.
#
#   tests/packages/release_twice.sh
#
# Everything is compiled twice: no compiler cache, which would answer the second time with what it kept of the first.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
for name in one another-with-a-longer-name; do
  [ "$name" = one ] || sleep 61
  CCACHE_DISABLE=1 "$root/tools/release.sh" "$work/$name-release" "$work/$name" \
    >"$work/log" 2>&1 || { tail -n 30 "$work/log" >&2; exit 1; }
  rm -rf "${work:?}/$name"
done
diff -r "$work/one-release" "$work/another-with-a-longer-name-release"
(cd "$work/one-release" && sha256sum --check --quiet SHA256SUMS)
echo "a release, made twice, is the same $(find "$work/one-release" -type f | wc -l) files byte for byte"
