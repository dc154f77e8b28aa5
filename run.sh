#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds the console and opens it on the sample company's directory.
# peloractl is built beside it; one line from the shell lists the sample company's users:
#   build/native/hosts/ctl/peloractl --sample list user
# What is given on the command line is handed to the console.
set -euo pipefail
cd "$(dirname "$0")"

./install.sh run
cmake --preset native -DBUILD_TESTING=OFF
cmake --build --preset native --target pelora-console peloractl

console=build/native/hosts/console/pelora-console
if [ $# -gt 0 ] || [ -n "${DISPLAY:-}" ]; then
  exec "$console" "$@"
fi

# No display: show what the console would have shown.
mkdir -p build/screenshots
"$console" --screenshot build/screenshots/main-window.png
"$console" --open "CN=Helga Önder,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example" \
  --screenshot build/screenshots/user-tab.png
cat <<MESSAGE

There is no display here, so the console has drawn itself into files:
  $PWD/build/screenshots/main-window.png
  $PWD/build/screenshots/user-tab.png
The same settings from the shell:
  build/native/hosts/ctl/peloractl --sample list user
To use the console, run ./run.sh in a desktop session, or over "ssh -X", or on a virtual display:
  xvfb-run -a ./run.sh
MESSAGE
