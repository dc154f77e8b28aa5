#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Puts together what tools/release.sh has built.
#
#   tools/collect_release.sh NATIVE-BUILD MODULE OUTPUT-FOLDER
#
# MODULE is PeloraADS.DLL with its symbols; they go into a file apart, which debuggers find by its name.
set -euo pipefail
[ $# -eq 3 ] || { sed -n '3,7s/^# \{0,1\}//p' "$0" >&2; exit 2; }
tools="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
root="$(dirname "$tools")"
native="$(cd "$1" && pwd)"
module="$(realpath "$2")"
mkdir -p "$3"
output="$(cd "$3" && pwd)"
SOURCE_DATE_EPOCH="$("$tools/source_date.sh")"
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
umask 022
version="$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")"

"$tools/make_deb.sh" "$native" "$output"

cd "$output"
x86_64-w64-mingw32-objcopy --only-keep-debug "$module" PeloraADS.DLL.debug
x86_64-w64-mingw32-objcopy --strip-all --add-gnu-debuglink=PeloraADS.DLL.debug "$module" PeloraADS.DLL
chmod 644 PeloraADS.DLL PeloraADS.DLL.debug
# Signed once, so that the module of the installer is the one that lies beside it.
if [ -n "${PELORA_SIGN:-}" ]; then
  sh -c "$PELORA_SIGN \"\$1\"" sign PeloraADS.DLL
fi
"$tools/make_msi.py" --signed-module "$native/packages/registration.wxi" PeloraADS.DLL "PeloraADS-$version.msi"

cp "$native"/deploy/{schema.ldif,display-specifiers.ldif,pelora-schema.ldf,Deploy-Pelora.ps1} .
# The changes of this version, or those that are not of any version yet.
awk -v version="$version" '
  /^## / { heading = substr($0, 4); sub(/ .*/, "", heading) }
  heading != "" { part[heading] = part[heading] $0 "\n" }
  END {
    chosen = version in part ? version : "Unreleased"
    if (!(chosen in part)) exit 1
    printf "%s", part[chosen]
  }' "$root/CHANGELOG.md" >CHANGES.md
"$tools/make_sbom.py" "$version" . >"pelora-administration-$version.spdx.json.new"
mv "pelora-administration-$version.spdx.json.new" "pelora-administration-$version.spdx.json"
sums="$(find . -maxdepth 1 -type f ! -name SHA256SUMS -printf '%P\n' | sort | xargs sha256sum)"
echo "$sums" >SHA256SUMS
