#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Does something to servers of the lab, and returns when it is done.
#
#   control_server.sh start|kill|pause|resume [CONTROLLER...]
#
# Without a name it is the first one.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source "$here/lab_settings.sh"

pid_file() { echo "$lab_home/$1.pid"; }
log_of() { echo "$lab_home/$1.log"; }

is_alive() {
  local state
  state="$(cut -d' ' -f3 "/proc/$1/stat" 2>/dev/null)" && [ "$state" != Z ]
}

is_ready() {
  ldapsearch -x -LLL -o nettimeout=1 -l 1 -H "ldap://$1.$domain" -s base -b '' dn >/dev/null 2>&1 &&
    (exec 3<>"/dev/tcp/${address_of[$1]}/88") 2>/dev/null
}

start() {
  # A pipe whose end is the server's end too, where nothing else sees to that.
  local input=/dev/null
  [ ! -p "$lab_home/alive" ] || input="$lab_home/alive"
  # Nothing of it is to outlive the machine.
  TDB_NO_FSYNC=1 setsid samba -s "$(folder_of "$1")/etc/smb.conf" -i -M single --debug-stdout \
    <"$input" >>"$(log_of "$1")" 2>&1 &
  echo "$!" >"$(pid_file "$1")"
}

await() {
  local pid deadline=$((SECONDS + 60))
  pid="$(cat "$(pid_file "$1")")"
  until is_ready "$1"; do
    is_alive "$pid" || { tail -n 20 "$(log_of "$1")" >&2; fail "the server $1 ended at once"; }
    [ "$SECONDS" -lt "$deadline" ] || fail "the server $1 does not answer"
    sleep 0.02
  done
}

action="${1:-}"
[ $# -gt 1 ] || set -- "$action" "$host"
for controller in "${@:2}"; do
  [ -n "${address_of[$controller]:-}" ] || fail "there is no controller '$controller'"
  case "$action" in
    start) start "$controller" ;;
    kill)
      pid="$(cat "$(pid_file "$controller")")"
      kill -KILL "$pid"
      while is_alive "$pid"; do sleep 0.01; done
      ;;
    pause) kill -STOP "$(cat "$(pid_file "$controller")")" ;;
    resume) kill -CONT "$(cat "$(pid_file "$controller")")" ;;
    *) fail "usage: $0 start|kill|pause|resume [CONTROLLER...]" ;;
  esac
done
# All of them start beside each other.
[ "$action" != start ] || for controller in "${@:2}"; do await "$controller"; done
