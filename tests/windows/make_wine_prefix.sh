#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the Wine prefix that the Windows tests run in, unless there is one. WINEPREFIX names it; a screen
# has to be there.
set -euo pipefail

done_mark="$WINEPREFIX/.made-for-pelora-1"
[ -e "$done_mark" ] && exit 0

rm -rf "$WINEPREFIX"
mkdir -p "$WINEPREFIX"
wine wineboot -i >/dev/null 2>&1
# With the fonts of Windows' own proportions a dialog unit is as large as there.
cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
# There is no window manager on the tests' screen: waiting for its answers would take seconds a window.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
wineserver -k
wineserver -w
touch "$done_mark"
