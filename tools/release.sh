#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes a release of the last commit: sources, Debian packages, the Windows module with its symbols apart and its
# installer, what is put into directories, the list of changes, a bill of materials (SPDX) and checksums.
#
#   tools/release.sh [OUTPUT-FOLDER [WORK-FOLDER]]
#
# OUTPUT-FOLDER (build/release) must not be there or be empty. Everything is built anew in WORK-FOLDER (a temporary
# one), from the committed sources alone. The same commit gives the same bytes, wherever and whenever it is built
# with the same tools. PELORA_SIGN, the command that signs a file, is run for the module and the installer.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
output="${1:-$root/build/release}"
mkdir -p "$output"
output="$(cd "$output" && pwd)"
if [ -n "$(ls -A "$output")" ]; then
  echo "$output is not empty" >&2
  exit 1
fi
if [ $# -ge 2 ]; then
  mkdir -p "$2"
  work="$(cd "$2" && pwd)"
else
  work="$(mktemp -d)"
  trap 'rm -rf "$work"' EXIT
fi

SOURCE_DATE_EPOCH="$("$root/tools/source_date.sh")"
# The compiler of type libraries enters the time, too.
export SOURCE_DATE_EPOCH WIDL_TIME_OVERRIDE="$SOURCE_DATE_EPOCH" LC_ALL=C.UTF-8 TZ=UTC
umask 022
version="$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")"
name="pelora-administration-$version"

git -C "$root" archive --format=tar --prefix="$name/" HEAD | xz -9 -T1 >"$output/$name.tar.xz"
tar -C "$work" -xf "$output/$name.tar.xz"
source="$work/$name"

# No path of this machine in what is built.
flags="-ffile-prefix-map=$source=/pelora"
cd "$source"
cmake --preset native -DBUILD_TESTING=OFF "-DCMAKE_CXX_FLAGS=$flags"
cmake --build --preset native
cmake --preset windows -DBUILD_TESTING=OFF -DPELORA_KEEP_SYMBOLS=ON "-DCMAKE_CXX_FLAGS=$flags -g1"
cmake --build --preset windows --target PeloraADS
tools/collect_release.sh build/native build/windows/PeloraADS.DLL "$output"
