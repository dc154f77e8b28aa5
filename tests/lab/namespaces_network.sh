#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a command with a network, file systems and processes of its own. When it ends, all of them do.
#
#   namespaces_network.sh COMMAND [ARGUMENT...]
#
# The command finds an empty lab_home (lab_settings.sh) and the domain's names.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"

if [ "${1:-}" != --inside ]; then
  # One process namespace for all: with its first process the rest ends too.
  namespaces=(--net --mount --pid --fork --mount-proc --kill-child=SIGKILL)
  [ "$(id -u)" -eq 0 ] || namespaces=(--map-root-user "${namespaces[@]}")
  exec unshare "${namespaces[@]}" "$here/namespaces_network.sh" --inside "$@"
fi
shift

ip link set lo up
for controller in "${controllers[@]:1}"; do
  ip address add "${address_of[$controller]}/32" dev lo
done
mount -t tmpfs -o mode=0755 tmpfs "$(dirname "$lab_home")"
mkdir "$lab_home"
[ -d "$here" ] || fail "the sources lie below $(dirname "$lab_home"), where the lab has its files"
write_hosts "$lab_home/hosts"
if [ "${PELORA_LAB_KIND:-}" = trusted ]; then
  source "$here/trusted_settings.sh"
  ip address add "$partner_address/32" dev lo
  echo "$partner_address $partner_server $partner_host" >>"$lab_home/hosts"
fi
mount --bind "$lab_home/hosts" /etc/hosts
for controller in "${controllers[@]}"; do
  # A read-only one would ask the others.
  [ "$controller" = rodc ] || echo "nameserver ${address_of[$controller]}"
done >"$lab_home/resolv.conf"
mount --bind "$lab_home/resolv.conf" "$(realpath /etc/resolv.conf)"
exec "$@"
