#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a command beside the lab's domain that finds other names for machines, written like /etc/hosts.
#
#   with_names.sh FILE COMMAND [ARGUMENT...]
set -euo pipefail
if [ -n "${PELORA_LAB_HOSTS:-}" ]; then
  export PELORA_LAB_HOSTS="$1"
  shift
  exec "$@"
fi
# shellcheck disable=SC2016
# Words of the inner shell.
exec unshare --mount bash -c 'mount --bind "$0" /etc/hosts && exec "$@"' "$@"
