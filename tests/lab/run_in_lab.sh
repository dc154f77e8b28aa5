#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a command beside a Samba AD domain of its own.
#
#   tests/lab/run_in_lab.sh COMMAND [ARGUMENT...]
#
# The domain lives in namespaces of its own: it needs no port of the machine, changes no file of it, and
# several runs do not meet. When the command ends, however it ends, everything is gone. The command finds
# the domain by the environment that inside_lab.sh sets; its exit code is the script's.
#
# A domain is provisioned once and kept in PELORA_LAB_FOLDER (build/lab unless given); each run works on a
# copy. It is made anew when what it is made from has changed.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
root="$(cd "$here/../.." && pwd)"
source "$here/lab_settings.sh"

[ $# -gt 0 ] || fail "no command given"
for tool in samba samba-tool ldbadd ldbmodify ldapsearch kinit unshare ip flock tar; do
  PATH="$PATH:/usr/sbin:/sbin" command -v "$tool" >/dev/null || fail "'$tool' is missing: run ./install.sh test"
done
export PATH="$PATH:/usr/sbin:/sbin"

# One process namespace for all: with its first process the rest ends too.
namespaces=(unshare --net --mount --pid --fork --mount-proc --kill-child=SIGKILL)
if [ "$(id -u)" -ne 0 ]; then
  namespaces=(unshare --map-root-user "${namespaces[@]:1}")
  "${namespaces[@]}" true 2>/dev/null ||
    fail "a network of its own needs root, or user namespaces, which are switched off here"
fi

folder="${PELORA_LAB_FOLDER:-$root/build/lab}"
mkdir -p "$folder"
deploy="$root/deploy"
made_of=("$here/make_domain.sh" "$here/lab_settings.sh" "$here/lab_objects.ldif"
  "$deploy/pelora-deploy" "$deploy/schema.ldif")
state="$(cat "${made_of[@]}" | sha256sum | cut -c1-16)"
# One with many more users, for measuring.
kind="${PELORA_LAB_BENCH:+bench}"
kind="${kind:-domain}"
archive="$folder/$kind-$state.tar"

exec {lock}>"$folder/lock"
flock "$lock"
if [ ! -s "$archive" ]; then
  # Running it takes no more than the namespaces; making it changes users and groups.
  [ "$(id -u)" -eq 0 ] || fail "the domain has to be made once, as root: sudo $0 true"
  rm -f "$folder/$kind"-*.tar*
  "${namespaces[@]}" "$here/make_domain.sh" "$deploy" "$archive.new" >"$folder/make_domain.log" 2>&1 ||
    { tail -n 20 "$folder/make_domain.log" >&2; fail "the domain cannot be made; see $folder/make_domain.log"; }
  mv "$archive.new" "$archive"
fi
exec {lock}>&-

exec "${namespaces[@]}" "$here/inside_lab.sh" "$archive" "$@"
