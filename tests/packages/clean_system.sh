#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs Debian packages (without a folder: of the finished native build) in a system that has nothing else, runs them there and removes
# them without a trace. Needs root, and the first time a mirror of Debian: the one that apt uses on this machine.
#
#   tests/packages/clean_system.sh [PACKAGES-FOLDER]
#
# The bare system, with what the packages depend on, is made once and kept in the user's cache folder. It is made
# anew when they depend on something else, or when it is a month old.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
kept="${XDG_CACHE_HOME:-$HOME/.cache}/pelora-tests"
# shellcheck source=/dev/null
suite="$(. /etc/os-release && echo "$VERSION_CODENAME")"

work="$(mktemp -d)"
system="$work/system"
leave() {
  mountpoint -q "$system/proc" && umount "$system/proc"
  rm -rf --one-file-system "$work"
}
trap leave EXIT

# Runs a command whose words are shown only when it fails.
quietly() {
  "$@" >"$work/log" 2>&1 || { tail -n 20 "$work/log" >&2; exit 1; }
}
inside() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive HOME=/root \
  XDG_RUNTIME_DIR=/root/runtime "$@"; }

mkdir "$work/packages"
if [ $# -gt 0 ]; then
  cp "$1"/*.deb "$work/packages"
else
  "$root/tools/make_deb.sh" "$root/build/native" "$work/packages"
fi
# What they need first, so that what they bring themselves can be told from it.
needed="$(for package in "$work"/packages/*.deb; do dpkg-deb --field "$package" Depends; done |
  tr ',' '\n' | sed 's/(.*)//; s/|.*//; s/ //g' | sort -u)"
base="$kept/clean-system-$suite-$(echo "$needed" | sha256sum | cut -c1-16).tar"

# Makes the bare system and fills $base with it.
make_base() {
  # shellcheck disable=SC2016
  # The archive that apt takes the suite from here, without what it is signed by and for.
  mirror="$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' "Created-By: Packages" |
    awk -v suite="$suite" '$2 == suite { print $1; exit }')"
  [ -n "$mirror" ] || { echo "apt knows no mirror of $suite" >&2; exit 1; }
  quietly debootstrap --variant=minbase "$suite" "$system" "$mirror"
  cp /etc/resolv.conf "$system/etc/resolv.conf"
  # Whatever leads apt to its mirror here leads it there.
  cp -r /etc/apt/apt.conf.d/. "$system/etc/apt/apt.conf.d/"
  mount -t proc proc "$system/proc"
  quietly inside apt-get -q update
  # shellcheck disable=SC2086
  quietly inside apt-get -q install -y --no-install-recommends $needed
  quietly inside apt-get -q clean
  umount "$system/proc"
  mkdir -p "$kept"
  tar -C "$system" -cf "$base.$$" .
  rm -f "$kept"/clean-system-*.tar
  mv "$base.$$" "$base"
}

mkdir "$system"
if [ -n "$(find "$base" -mtime -30 2>/dev/null)" ]; then
  tar -C "$system" -xf "$base"
else
  make_base
fi
mv "$work/packages" "$system/packages"
mount -t proc proc "$system/proc"

# Everything there is, but what belongs to the package manager itself.
files_of_the_system() {
  (cd "$system" && find . -xdev \( -path ./proc -o -path ./packages -o -path ./var/lib/apt -o -path ./var/cache \
    -o -path ./var/log -o -path ./var/lib/dpkg \) -prune -o -print | sort)
}
files_of_the_system >"$work/before"

quietly inside sh -c 'apt-get -q install -y --no-install-recommends /packages/*.deb'
inside peloractl --sample list user | grep -q 'Helga' || { echo "peloractl lists nothing" >&2; exit 1; }
mkdir -m 700 "$system/root/runtime"
inside pelora-console --screenshot /root/window.png
[ "$(stat -c %s "$system/root/window.png")" -gt 10000 ] || { echo "the picture is empty" >&2; exit 1; }
cp "$system/root/window.png" "$root/build/clean-system.png"
inside pelora-deploy --help | grep -q unregister || { echo "pelora-deploy does not start" >&2; exit 1; }
# What the user has made with them is no part of them.
rm -rf "$system/root/window.png" "$system/root/.local" "$system/root/.config" "$system/root/.cache" "$system/root/runtime"

quietly inside apt-get -q purge -y pelora-console peloractl pelora-deploy
files_of_the_system >"$work/after"
diff "$work/before" "$work/after" || { echo "something was left behind" >&2; exit 1; }
echo "installed, run and removed without a trace in a clean $suite"
