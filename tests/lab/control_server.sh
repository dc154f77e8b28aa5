#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Does something to the lab's server, and returns when it is done.
#
#   control_server.sh start|kill|pause|resume
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"
pid_file="$lab_home/server.pid"
log="$lab_home/server.log"

is_alive() {
  local state
  state="$(cut -d' ' -f3 "/proc/$1/stat" 2>/dev/null)" && [ "$state" != Z ]
}

is_ready() {
  ldapsearch -x -LLL -o nettimeout=1 -l 1 -H "ldap://$server" -s base -b '' dn >/dev/null 2>&1 &&
    (exec 3<>/dev/tcp/127.0.0.1/88) 2>/dev/null
}

start() {
  # A pipe whose end is the server's end too, where nothing else sees to that.
  local input=/dev/null
  [ ! -p "$lab_home/alive" ] || input="$lab_home/alive"
  # Nothing of it is to outlive the machine.
  TDB_NO_FSYNC=1 setsid samba -s "$smb_conf" -i -M single --debug-stdout <"$input" >>"$log" 2>&1 &
  local pid=$!
  echo "$pid" >"$pid_file"
  local deadline=$((SECONDS + 60))
  until is_ready; do
    is_alive "$pid" || { tail -n 20 "$log" >&2; fail "the server ended at once"; }
    [ "$SECONDS" -lt "$deadline" ] || fail "the server does not answer"
    sleep 0.02
  done
}

case "${1:-}" in
  start) start ;;
  kill)
    pid="$(cat "$pid_file")"
    kill -KILL "$pid"
    while is_alive "$pid"; do sleep 0.01; done
    ;;
  pause) kill -STOP "$(cat "$pid_file")" ;;
  resume) kill -CONT "$(cat "$pid_file")" ;;
  *) fail "usage: $0 start|kill|pause|resume" ;;
esac
