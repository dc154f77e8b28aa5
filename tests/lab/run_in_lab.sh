#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a command beside a Samba AD domain of its own.
#
#   tests/lab/run_in_lab.sh COMMAND [ARGUMENT...]
#
# The domain lives in namespaces of its own, or on ports that nobody else uses (choose_network.sh): it
# takes no port of a service's, changes no file of the machine, and several runs do not meet. When the
# command ends, however it ends, everything is gone. The command finds the domain by the environment that
# inside_lab.sh sets; its exit code is the script's.
#
# A domain is provisioned once and kept in PELORA_LAB_FOLDER (build/lab unless given); each run works on a
# copy. It is made anew when what it is made from has changed. With PELORA_LAB_KIND=controllers it is one of
# three controllers and two sites (make_controllers.sh).
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
root="$(cd "$here/../.." && pwd)"
source "$here/lab_settings.sh"

[ $# -gt 0 ] || fail "no command given"
export PATH="$PATH:/usr/sbin:/sbin"
for tool in samba samba-tool ldbadd ldbmodify ldapsearch kinit flock tar; do
  command -v "$tool" >/dev/null || fail "'$tool' is missing: run ./install.sh test"
done
network="$("$here/choose_network.sh")" || exit 1
launcher="$here/${network}_network.sh"

folder="${PELORA_LAB_FOLDER:-$root/build/lab}"
mkdir -p "$folder"
deploy="$root/deploy"
made_of=("$here/make_domain.sh" "$here/provision_domain.py" "$here/lab_settings.sh" "$here/lab_objects.ldif"
  "$here/copy_users.py" "$deploy/pelora-deploy" "$deploy/schema.ldif")
# One with many more users, for measuring: see make_domain.sh.
domain_kind="${PELORA_LAB_BENCH:+bench-$PELORA_LAB_BENCH}"
domain_kind="${domain_kind:-domain}"

# make KIND SCRIPT ARGUMENT...: has a script make an archive, its last argument, unless it is there. Its name, which
# says what it is made from, is in `archive` then.
make() {
  archive="$folder/$1-$(cat "${made_of[@]}" | sha256sum | cut -c1-16).tar"
  [ ! -s "$archive" ] || return 0
  rm -f "$folder/$1"-*.tar*
  "$launcher" "${@:2}" "$archive.new" >"$folder/$1.log" 2>&1 ||
    { tail -n 20 "$folder/$1.log" >&2; fail "the domain cannot be made; see $folder/$1.log"; }
  mv "$archive.new" "$archive"
}

exec {lock}>"$folder/lock"
flock "$lock"
PELORA_LAB_KIND='' make "$domain_kind" "$here/make_domain.sh" "$deploy"
if [ "${PELORA_LAB_KIND:-}" = controllers ]; then
  made_of+=("$here/make_controllers.sh" "$here/prepare_sites.py" "$here/link_controllers.py"
    "$here/control_server.sh")
  make controllers "$here/make_controllers.sh" "$archive"
fi
exec {lock}>&-

exec "$launcher" "$here/inside_lab.sh" "$archive" "$@"
