#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a command on ports of this machine that nobody else uses (loopback_network.cpp): for where
# namespaces cannot be made, as in a container, in a chroot, or for users without rights.
#
#   loopback_network.sh COMMAND [ARGUMENT...]
#
# The command finds an empty lab_home (lab_settings.sh) and the domain's names. When it ends, the server
# that it started ends too, and its files are gone.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
folder="${PELORA_LAB_FOLDER:-$here/../../build/lab}"
source="$here/loopback_network.cpp"
[ -z "${PELORA_LAB_KIND:-}" ] || {
  echo "lab: several controllers need several addresses, and so namespaces" >&2
  exit 1
}

mkdir -p "$folder"
library="$(realpath "$folder")/loopback_network-$(sha256sum <"$source" | cut -c1-16).so"
if [ ! -e "$library" ]; then
  g++ -std=c++20 -Wall -Wextra -Wconversion -Wshadow -Werror -O1 -fPIC -shared -o "$library.$$" "$source"
  mv "$library.$$" "$library"
fi

# The names of sockets have to be short.
PELORA_LAB_HOME="$(mktemp -d /tmp/lab.XXXXXX)"
export PELORA_LAB_HOME
source "$here/lab_settings.sh"
leave() {
  [ ! -e "$lab_home/$host.pid" ] || kill -KILL "$(cat "$lab_home/$host.pid")" 2>/dev/null || true
  rm -rf "$lab_home"
}
trap leave EXIT
trap 'exit 130' INT TERM
write_hosts "$lab_home/hosts"
# The server ends when nobody holds this open any more, however that came about.
mkfifo "$lab_home/alive"
exec {alive}<>"$lab_home/alive"

# A process's number is nobody else's.
export PELORA_LAB_ADDRESS="127.$((64 + $$ / 65536 % 64)).$(($$ / 256 % 256)).$(($$ % 256))"
export PELORA_LAB_HOSTS="$lab_home/hosts"
# The sanitizers' library wants to be the first one; the functions that this one stands before are
# watched all the same.
export ASAN_OPTIONS="verify_asan_link_order=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
export LD_PRELOAD="$library${LD_PRELOAD:+:$LD_PRELOAD}"
code=0
"$@" {alive}>&- || code=$?
exit "$code"
