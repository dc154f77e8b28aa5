#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Draws docs/images/tabs.png anew: every tab on an object of the sample company, in a property sheet of
# Windows (under Wine) and in pelora-console, side by side. Needs the packages of ./install.sh test.
#
#   docs/draw_tabs.sh
set -euo pipefail
cd "$(dirname "$0")/.."

# The tests that look for controls that are cut off keep a picture of each tab, as do those of grey texts.
export GTEST_FILTER='*TabLooks.NothingIsCutOffAndNothingOverlaps*:*.AnOpenStatusIsDrawnGreyUntilItIsChosen'
GTEST_FILTER+=':*.InALightThemeAnOpenStatusIsLightGrey'

cmake --preset asan -DBUILD_TESTING=ON
cmake --build --preset asan --target ui_tabs ui_console_features pelora_tab_sheet
LDB_MODULES_DISABLE_DEEPBIND=1 build/asan/tests/ui/ui_tabs
LDB_MODULES_DISABLE_DEEPBIND=1 build/asan/tests/ui/ui_console_features

cmake --preset windows
cmake --build --preset windows --target windows_extension_test
mkdir -p build/tabs
grep windows_extension_test build/windows/windows_suites.txt >build/tabs/windows_suites.txt
tests/windows/run_wine_suites.sh "$PWD/build/tabs"

build/asan/tests/ui/pelora_tab_sheet build/windows/screenshots build/asan/screenshots \
  docs/images/tabs.png
