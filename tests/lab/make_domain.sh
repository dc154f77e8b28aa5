#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Provisions the lab's domain, with our schema and a few objects, and packs it.
#
#   make_domain.sh DEPLOY-FOLDER ARCHIVE
#
# Runs on a network of its own (run_in_lab.sh), as whoever runs the tests.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"
deploy="$1"
archive="$2"
# It is packed in the end; until then nobody waits for the disk.
export TDB_NO_FSYNC=1

"$here/provision_domain.py" "$lab_home/domain" "$realm" "$host" "$password"

# The directory, the ticket server and the name server; no files, no other networks.
sed -i '/^\[sysvol\]/,$d; /^\[netlogon\]/,$d; /dns forwarder/d' "$smb_conf"
cat >>"$smb_conf" <<SETTINGS

[global]
	server services = ldap kdc cldap dns
	pid directory = $lab_home/run
	log file = $lab_home/log.%m
	tls enabled = no
	dsdb:schema update allowed = yes
SETTINGS
mkdir -p "$lab_home/run"

sam="$lab_home/domain/private/sam.ldb"
"$deploy/pelora-deploy" --database "$sam" --schema-file "$deploy/schema.ldif" schema

sed "s/DC=X/$base/" "$here/lab_objects.ldif" >"$lab_home/objects.ldif"
ldbadd -H "$sam" "$lab_home/objects.ldif"

# add_users CONTAINER COUNT
add_users() {
  {
    printf 'dn: OU=%s,%s\nobjectClass: organizationalUnit\n\n' "$1" "$base"
    for ((number = 0; number < $2; ++number)); do
      printf 'dn: CN=Person %d,OU=%s,%s\nobjectClass: user\nsAMAccountName: %.1s-%d\n' \
        "$number" "$1" "$base" "$1" "$number"
      printf 'mail: person%d@%s\ndescription: Number %d\npeloraAccount: 1\n' \
        "$number" "$domain" "$number"
      printf 'peloraUserServer: mail01\n\n'
    done
  } >"$lab_home/users.ldif"
  ldbadd -H "$sam" "$lab_home/users.ldif"
}
# More than servers give in one page, for what has to work with many.
add_users Many 1100

# add_many_users CONTAINER COUNT FIRST: the same, with relative identifiers from FIRST on, which Samba gives nobody.
add_many_users() {
  add_users "$1" 1
  "$here/copy_users.py" "$smb_conf" "$sam" "OU=$1,$base" "$2" "$3"
}
# What is measured is measured on as many as it asks for.
case "${PELORA_LAB_BENCH:-}" in
  "") ;;
  1)
    add_many_users Hundreds 1000 1000000
    add_many_users Thousands 10000 1100000
    ;;
  *) add_many_users Everybody "$PELORA_LAB_BENCH" 1000000 ;;
esac

# A running server adds these by and by; a ticket for the directory needs them at once.
ldbmodify -H "$sam" <<NAMES
dn: CN=$(echo "$host" | tr a-z A-Z),OU=Domain Controllers,$base
changetype: modify
add: servicePrincipalName
servicePrincipalName: ldap/$server
servicePrincipalName: ldap/$(echo "$host" | tr a-z A-Z)
NAMES
# The server's key, for servers of the tests' own that sit beside it under its name.
samba-tool domain exportkeytab "$lab_home/ldap.keytab" --principal="ldap/$server" \
  --configfile="$smb_conf"
# Another server of the domain: it holds a key of its own and would like to be taken for this one.
samba-tool user create impostor "$password" --configfile="$smb_conf"
samba-tool spn add "ldap/impostor.$domain" impostor --configfile="$smb_conf"
samba-tool domain exportkeytab "$lab_home/impostor.keytab" --principal="ldap/impostor.$domain" \
  --configfile="$smb_conf"
# Where it is unpacked to is told anew then.
sed -i "s#$lab_home/#$lab_made_home/#g" "$smb_conf"
tar -cf "$archive" -C "$lab_home" domain run ldap.keytab impostor.keytab
