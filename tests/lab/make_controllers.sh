#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Joins two controllers to the lab's domain, a writable one and a read-only one, both in a site of their own,
# and packs all three.
#
#   make_controllers.sh DOMAIN-ARCHIVE ARCHIVE
#
# Runs on a network of its own (run_in_lab.sh), as whoever runs the tests.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"
domain_archive="$1"
archive="$2"
# It is packed in the end; until then nobody waits for the disk.
export TDB_NO_FSYNC=1
export KRB5_CONFIG="$lab_home/krb5.conf" KRB5CCNAME="FILE:$lab_home/tickets"

# Settings with which a controller fetches changes when a test says so, and never by itself. (One that asks
# another one which has gone away does nothing else meanwhile.)
only_when_told() {
  local setting
  for setting in periodic_startup_interval periodic_interval notify_interval; do
    printf '\tdreplsrv:%s = 1000000\n' "$setting"
  done
}

tar --no-same-owner -xf "$domain_archive" -C "$lab_home"
write_krb5_conf >"$KRB5_CONFIG"
# Controllers talk to each other besides, each by pipes of its own.
sed -i 's/^\tserver services = .*/&, rpc, drepl/' "$smb_conf"
{
  printf '\tncalrpc dir = %s\n' "$lab_home/run/ncalrpc"
  only_when_told
} >>"$smb_conf"
"$here/prepare_sites.py" "$smb_conf" "$domain" "$branch" "127.0.0.0/8 10.77.0.0/24" dc2 rodc

"$here/control_server.sh" start "$host"
kinit administrator <<<"$password" >/dev/null

# join CONTROLLER ROLE SERVICES
join() {
  local folder="$lab_home/$1"
  # Nothing of the machine's own settings counts.
  : >"$lab_home/empty.conf"
  samba-tool domain join "$domain" "$2" --server="$server" --site="$branch" --targetdir="$folder" \
    --configfile="$lab_home/empty.conf" --use-kerberos=required --use-krb5-ccache="$KRB5CCNAME" \
    --option="netbios name = $1" --option="interfaces = ${address_of[$1]}/24" \
    --option='bind interfaces only = yes' --dns-backend=SAMBA_INTERNAL
  sed -i '/^\[sysvol\]/,$d; /^\[netlogon\]/,$d; /dns forwarder/d' "$folder/etc/smb.conf"
  cat >>"$folder/etc/smb.conf" <<SETTINGS

[global]
	interfaces = ${address_of[$1]}/24
	bind interfaces only = yes
	server services = $3
	pid directory = $folder/run
	ncalrpc dir = $folder/run/ncalrpc
	log file = $folder/log.%m
	tls enabled = no
	dsdb:schema update allowed = yes
$(only_when_told)
SETTINGS
  mkdir -p "$folder/run"
}
# The one that gives tickets comes last, so that it knows the other.
join rodc RODC 'ldap kdc cldap rpc drepl'
join dc2 DC 'ldap kdc cldap dns rpc drepl'
kill "$(cat "$lab_home/$host.pid")"
while [ -e "/proc/$(cat "$lab_home/$host.pid")" ]; do sleep 0.02; done

# A running server adds these by and by. Tickets are given by the writable ones.
for controller in dc2 rodc; do
  cat <<NAMES
dn: CN=${controller^^},OU=Domain Controllers,$base
changetype: modify
add: servicePrincipalName
servicePrincipalName: ldap/$controller.$domain
servicePrincipalName: ldap/${controller^^}

NAMES
done >"$lab_home/names.ldif"
for controller in "$host" dc2; do
  ldbmodify -H "$(folder_of "$controller")/private/sam.ldb" "$lab_home/names.ldif"
done
"$here/link_controllers.py" "$(folder_of dc2)/etc/smb.conf" "$host"
"$here/link_controllers.py" "$(folder_of rodc)/etc/smb.conf" "$host"
"$here/link_controllers.py" "$smb_conf" dc2
for controller in "${controllers[@]}"; do
  sed -i "s#$lab_home/#$lab_made_home/#g" "$(folder_of "$controller")/etc/smb.conf"
done
tar -cf "$archive" -C "$lab_home" domain dc2 rodc run ldap.keytab impostor.keytab
