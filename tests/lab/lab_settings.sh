# SPDX-License-Identifier: Apache-2.0
# What the scripts of the lab have in common. Everything of a running domain lies below lab_home, which
# is a file system in memory that only the lab's own processes see.
realm=PELORA.TEST
domain=pelora.test
base=DC=pelora,DC=test
host=dc1
server=$host.$domain
password=Lab-Passw0rd
lab_home=/mnt/lab
smb_conf=$lab_home/domain/etc/smb.conf

fail() {
  echo "lab: $*" >&2
  exit 1
}
