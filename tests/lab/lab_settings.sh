# SPDX-License-Identifier: Apache-2.0
# What the scripts of the lab have in common. Everything of a running domain lies below lab_home, which
# only the lab's own processes know of.
realm=PELORA.TEST
domain=pelora.test
base=DC=pelora,DC=test
host=dc1
server=$host.$domain
password=Lab-Passw0rd
# Where a domain is made, and where it runs unless it has to run elsewhere.
lab_made_home=/mnt/lab
lab_home=${PELORA_LAB_HOME:-$lab_made_home}
smb_conf=$lab_home/domain/etc/smb.conf

# The domain's controllers and their addresses. Usually there is one; with PELORA_LAB_KIND=controllers there
# are three, of two sites, in the second of which everything of the lab's takes itself to be.
declare -A address_of=([$host]=127.0.0.1)
controllers=("$host")
branch=Branch
if [ "${PELORA_LAB_KIND:-}" = controllers ]; then
  address_of+=([dc2]=10.77.0.2 [rodc]=10.77.0.3)
  controllers+=(dc2 rodc)
fi

fail() {
  echo "lab: $*" >&2
  exit 1
}

# folder_of CONTROLLER: where it has its files.
folder_of() {
  if [ "$1" = "$host" ]; then echo "$lab_home/domain"; else echo "$lab_home/$1"; fi
}

# Settings of Kerberos for the domain; every writable controller gives tickets.
write_krb5_conf() {
  cat <<SETTINGS
[libdefaults]
  default_realm = $realm
  dns_lookup_kdc = false
  dns_lookup_realm = false
[realms]
  $realm = {
    kdc = 127.0.0.1
SETTINGS
  [ -z "${address_of[dc2]:-}" ] || echo "    kdc = ${address_of[dc2]}"
  echo '  }'
}

# The names that are known beside a domain. The machine's own name is looked up too when one signs in. The
# tools that tests use look the server's name up forwards and backwards, as Kerberos does unless it is told
# otherwise.
write_hosts() {
  printf '127.0.0.1 %s %s localhost %s\n127.0.0.2 impostor.%s\n' \
    "$server" "$host" "$(uname -n)" "$domain" >"$1"
  local name
  for name in "${controllers[@]:1}"; do
    echo "${address_of[$name]} $name.$domain $name" >>"$1"
  done
}
