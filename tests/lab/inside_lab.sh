#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Unpacks a domain, starts it, and runs a command beside it.
#
#   inside_lab.sh ARCHIVE COMMAND [ARGUMENT...]
#
# Runs on a network of its own (run_in_lab.sh). The command's environment:
#
#   PELORA_LAB_HOME     a folder of the domain's, gone with it
#   PELORA_LAB_SERVER   the domain controller's name
#   PELORA_LAB_BASE     the domain's distinguished name
#   PELORA_LAB_TICKETS  folder of ticket caches, one per user: administrator, helper (who may read only)
#   PELORA_LAB_CONTROL  script that kills, pauses and starts servers (control_server.sh)
#   PELORA_LAB_NAMES    script that runs a command with names of a file's: FILE COMMAND [ARGUMENT...]
#   KRB5CCNAME          the administrator's tickets; KRB5_CONFIG, KRB5_KTNAME besides
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"
archive="$1"
shift

mkdir "$lab_home/tickets"
tar --no-same-owner -xf "$archive" -C "$lab_home"
for controller in "${controllers[@]}"; do
  sed -i "s#$lab_made_home/#$lab_home/#g" "$(folder_of "$controller")/etc/smb.conf"
done
write_krb5_conf >"$lab_home/krb5.conf"

export PELORA_LAB_HOME="$lab_home" PELORA_LAB_TICKETS="$lab_home/tickets"
export PELORA_LAB_SERVER="$server" PELORA_LAB_BASE="$base"
export PELORA_LAB_CONTROL="$here/control_server.sh" PELORA_LAB_NAMES="$here/with_names.sh"
export KRB5_CONFIG="$lab_home/krb5.conf" KRB5_KTNAME="FILE:$lab_home/ldap.keytab"

"$PELORA_LAB_CONTROL" start "${controllers[@]}"
[ "${PELORA_LAB_KIND:-}" != trusted ] || "$here/start_partner.sh"
for user in administrator helper; do
  kinit -c "FILE:$PELORA_LAB_TICKETS/$user" "$user" <<<"$password" >/dev/null ||
    fail "no ticket for $user"
done
export KRB5CCNAME="FILE:$PELORA_LAB_TICKETS/administrator"
code=0
"$@" || code=$?
exit "$code"
