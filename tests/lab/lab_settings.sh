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

fail() {
  echo "lab: $*" >&2
  exit 1
}

# The names that are known beside a domain. The machine's own name is looked up too when one signs in. The
# tools that tests use look the server's name up forwards and backwards, as Kerberos does unless it is told
# otherwise.
write_hosts() {
  printf '127.0.0.1 %s %s localhost %s\n127.0.0.2 impostor.%s\n' \
    "$server" "$host" "$(uname -n)" "$domain" >"$1"
}
