#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Says in a word which network the lab's domains run on here, or in a line why they cannot:
#
#   namespaces   one of their own (namespaces_network.sh)
#   loopback     ports of this machine (loopback_network.sh)
#
# The first that works is taken, or the one that PELORA_LAB_NETWORK names.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"

reasons=
for network in ${PELORA_LAB_NETWORK:-namespaces loopback}; do
  launcher="$here/${network}_network.sh"
  [ -e "$launcher" ] || fail "PELORA_LAB_NETWORK: there is no network '$network'"
  if why="$("$launcher" /usr/bin/python3 -c \
    'import socket; socket.create_server(("127.0.0.1", 389)).close()' 2>&1)"; then
    echo "$network"
    exit 0
  fi
  reasons+="; $network: ${why##*$'\n'}"
done
fail "no domain can run here${reasons}"
