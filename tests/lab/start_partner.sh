#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Starts the controller of the lab's second domain, and returns when it answers. Its process's number is in
# pdc.pid then, as those of the others are.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"
source "$here/trusted_settings.sh"

cat >>"$lab_home/krb5.conf" <<SETTINGS
[realms]
  $partner_realm = {
    kdc = $partner_address
  }
SETTINGS
log=$lab_home/$partner_host.log
TDB_NO_FSYNC=1 setsid samba -s "$partner_folder/etc/smb.conf" -i -M single --debug-stdout </dev/null >>"$log" 2>&1 &
partner=$!
echo "$partner" >"$lab_home/$partner_host.pid"
deadline=$((SECONDS + 60))
until ldapsearch -x -LLL -o nettimeout=1 -l 1 -H "ldap://$partner_server" -s base -b '' dn >/dev/null 2>&1 &&
  (exec 3<>"/dev/tcp/$partner_address/88") 2>/dev/null; do
  kill -0 "$partner" 2>/dev/null || { tail -n 20 "$log" >&2; fail "the server $partner_host ended at once"; }
  [ "$SECONDS" -lt "$deadline" ] || fail "the server $partner_host does not answer"
  sleep 0.02
done
