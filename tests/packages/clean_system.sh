#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the Debian packages of a finished build in a system that has nothing else, runs them there and removes
# them without a trace. Needs root, and a mirror of Debian: the one that apt uses on this machine.
#
#   tests/packages/clean_system.sh [BUILD-FOLDER]
#
# The bare system is kept in build/clean-system.tar, so that only the first run fetches it; what the packages
# depend on is kept beside it.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
build="${1:-$root/build/native}"
base="$root/build/clean-system.tar"
archives="$root/build/clean-system-archives"
# shellcheck source=/dev/null
suite="$(. /etc/os-release && echo "$VERSION_CODENAME")"

work="$(mktemp -d)"
system="$work/system"
leave() {
  mountpoint -q "$system/proc" && umount "$system/proc"
  rm -rf --one-file-system "$work"
}
trap leave EXIT

# shellcheck disable=SC2016
# The archive that apt takes the suite from here, without what it is signed by and for.
mirror="$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' "Created-By: Packages" |
  awk -v suite="$suite" '$2 == suite { print $1; exit }')"
[ -n "$mirror" ] || { echo "apt knows no mirror of $suite" >&2; exit 1; }

if [ ! -e "$base" ]; then
  mkdir "$system"
  debootstrap --variant=minbase "$suite" "$system" "$mirror" >"$work/log" ||
    { tail -n 20 "$work/log" >&2; exit 1; }
  tar -C "$system" -cf "$base.new" .
  mv "$base.new" "$base"
else
  mkdir "$system"
  tar -C "$system" -xf "$base"
fi
cp /etc/resolv.conf "$system/etc/resolv.conf"
# Whatever leads apt to its mirror here leads it there.
cp -r /etc/apt/apt.conf.d/. "$system/etc/apt/apt.conf.d/"
mount -t proc proc "$system/proc"
mkdir -p "$archives" "$system/var/cache/apt/archives"
cp "$archives"/*.deb "$system/var/cache/apt/archives/" 2>/dev/null || true

"$root/tools/make_deb.sh" "$build" "$system/packages"
inside() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive HOME=/root \
  XDG_RUNTIME_DIR=/root/runtime "$@"; }
inside apt-get -q update >"$work/log" || { tail -n 20 "$work/log" >&2; exit 1; }

# Everything there is, but what belongs to the package manager itself.
files_of_the_system() {
  (cd "$system" && find . -xdev \( -path ./proc -o -path ./packages -o -path ./var/lib/apt -o -path ./var/cache \
    -o -path ./var/log -o -path ./var/lib/dpkg \) -prune -o -print | sort)
}
# shellcheck disable=SC2016
# What they need first, so that what they bring themselves can be told from it.
needed="$(inside sh -c 'for package in /packages/*.deb; do dpkg-deb --field "$package" Depends; done' |
  tr ',' '\n' | sed 's/(.*)//; s/|.*//; s/ //g' | sort -u)"
# shellcheck disable=SC2086
inside apt-get -q install -y --no-install-recommends $needed >"$work/log" 2>&1 ||
  { tail -n 20 "$work/log" >&2; exit 1; }
cp "$system"/var/cache/apt/archives/*.deb "$archives/" 2>/dev/null || true
files_of_the_system >"$work/before"

inside sh -c 'apt-get -q install -y --no-install-recommends /packages/*.deb' >"$work/log" 2>&1 ||
  { tail -n 20 "$work/log" >&2; exit 1; }
inside peloractl --sample list user | grep -q 'Helga' || { echo "peloractl lists nothing" >&2; exit 1; }
mkdir -m 700 "$system/root/runtime"
inside pelora-console --screenshot /root/window.png
[ "$(stat -c %s "$system/root/window.png")" -gt 10000 ] || { echo "the picture is empty" >&2; exit 1; }
cp "$system/root/window.png" "$root/build/clean-system.png"
inside pelora-deploy --help | grep -q unregister || { echo "pelora-deploy does not start" >&2; exit 1; }
# What the user has made with them is no part of them.
rm -rf "$system/root/window.png" "$system/root/.local" "$system/root/.config" "$system/root/.cache" "$system/root/runtime"

inside apt-get -q purge -y pelora-console peloractl pelora-deploy >"$work/log" 2>&1 ||
  { tail -n 20 "$work/log" >&2; exit 1; }
files_of_the_system >"$work/after"
diff "$work/before" "$work/after" || { echo "something was left behind" >&2; exit 1; }
echo "installed, run and removed without a trace in a clean $suite"
