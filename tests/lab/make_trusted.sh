#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Provisions a second domain, of a forest of its own, beside the lab's; has the two trust each other, and packs both.
#
#   make_trusted.sh DEPLOY-FOLDER DOMAIN-ARCHIVE ARCHIVE
#
# The lab's administrator may do everything in the second one. Runs on a network of its own (run_in_lab.sh).
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"
source "$here/trusted_settings.sh"
deploy="$1"
domain_archive="$2"
archive="$3"
# It is packed in the end; until then nobody waits for the disk.
export TDB_NO_FSYNC=1
secret=Trusted-Passw0rd

tar --no-same-owner -xf "$domain_archive" -C "$lab_home"
# As the first one is, but for its address.
sed "s/127\.0\.0\.1/$partner_address/g" "$here/provision_domain.py" >"$lab_home/provision_partner.py"
chmod +x "$lab_home/provision_partner.py"
"$lab_home/provision_partner.py" "$partner_folder" "$partner_realm" "$partner_host" "$password"
partner_conf=$partner_folder/etc/smb.conf
sed -i '/^\[sysvol\]/,$d; /^\[netlogon\]/,$d; /dns forwarder/d' "$partner_conf"
cat >>"$partner_conf" <<SETTINGS

[global]
	interfaces = $partner_address/32
	bind interfaces only = yes
	server services = ldap kdc cldap dns
	pid directory = $partner_folder/run
	ncalrpc dir = $partner_folder/run/ncalrpc
	log file = $partner_folder/log.%m
	tls enabled = no
	dsdb:schema update allowed = yes
SETTINGS
mkdir -p "$partner_folder/run"
# What the first one's name server does not know it asks the other's.
printf '\tdns forwarder = %s\n' "$partner_address" >>"$smb_conf"

sam=$lab_home/domain/private/sam.ldb
partner_sam=$partner_folder/private/sam.ldb
"$deploy/pelora-deploy" --database "$partner_sam" --schema-file "$deploy/schema.ldif" schema

# identifier_of DATABASE BASE
identifier_of() { ldbsearch -H "$1" -b "$2" -s base objectSid | sed -n 's/^objectSid: //p'; }
own_identifier="$(identifier_of "$sam" "$base")"
partner_identifier="$(identifier_of "$partner_sam" "$partner_base")"
"$here/trust_domain.py" "$smb_conf" "$partner_domain" "${partner_realm%%.*}" "$partner_identifier" "$secret"
"$here/trust_domain.py" "$partner_conf" "$domain" "${realm%%.*}" "$own_identifier" "$secret"

ldbadd -H "$partner_sam" <<OBJECTS
dn: OU=Partners,$partner_base
objectClass: organizationalUnit

dn: CN=Petra Partner,OU=Partners,$partner_base
objectClass: user
sAMAccountName: petra
mail: petra@$partner_domain
peloraAccount: 1
OBJECTS
ldbmodify -H "$partner_sam" <<CHANGES
dn: CN=${partner_host^^},OU=Domain Controllers,$partner_base
changetype: modify
add: servicePrincipalName
servicePrincipalName: ldap/$partner_server
servicePrincipalName: ldap/${partner_host^^}

dn: CN=Administrators,CN=Builtin,$partner_base
changetype: modify
add: member
member: <SID=$own_identifier-500>
CHANGES
tar -cf "$archive" -C "$lab_home" domain partner run ldap.keytab impostor.keytab
