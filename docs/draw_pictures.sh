#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Draws the pictures of the handbook anew, from the console itself: the main window, every tab on objects of the
# sample company, every state of a sheet, the windows in which objects are chosen and made. The tests of how the
# console looks keep them. docs/draw_tabs.sh draws the sheet on which the tabs of Windows stand beside them. Needs
# the packages of ./install.sh test.
#
#   docs/draw_pictures.sh [--copy-only]
#
# With --copy-only the tests are not run: the pictures that they kept last are taken.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# The build in which ./test.sh runs these suites.
build=build/asan
kept=$build/screenshots
suites=(ui_console_window ui_tabs ui_console_features ui_choosers ui_new_object ui_writing ui_fields)

# Picture of the handbook, and the picture that a test of the console's looks keeps.
pictures=(
  tab-user sheet-user-pelora
  tab-user-three sheet-users-pelora
  tab-features features-tab-light
  archive-servers archive-servers
  tab-contact sheet-contact-pelora
  tab-group sheet-group-pelora
  tab-address-list-general sheet-address-list-general
  tab-address-list sheet-address-list-pelora
  tab-dynamic-list-general sheet-dynamic-list-general
  tab-dynamic-list sheet-dynamic-list-pelora
  tab-company sheet-company-pelora
  tab-company-quota sheet-company-pelora-quota
  tab-company-rights sheet-company-pelora-rights
  tab-server sheet-server-pelora
  tab-general sheet-user-general
  tab-account sheet-user-account
  features-three features-of-three
  differs state-differs
  values state-values
  typed state-typed
  wrong state-wrong
  odd state-odd
  address-in-use state-address
  read-only state-read-only
  failure state-failure
  review state-review
  writing state-writing
  results state-results
  conflicts state-conflict
  history state-history
  dark state-dark
  right-to-left state-right-to-left
  commands commands
  finding finding-list
  finding-view finding-view
  columns columns
  rename rename-light
  move life-move
  delete life-delete
  delete-unit life-delete-unit
  members own-members
  member-of own-member-of
  reset-password reset-password
  attributes attributes
  attribute attribute
  patterns patterns
  new-like new-like
  choosing chooser_users_and_groups
  choosing-computer chooser_computer
  choosing-container chooser_container_tree
  address email_address
  new-user-name new-user-1
  new-user-password new-user-2
  new-user new-user-3
  new-contact new-contact-2
  new-group new-group-2
  new-company new-organizational-unit-2
  new-computer new-computer-2
  new-computer-typed new-computer-typed
  new-address-list peloraAddresslist-2
  new-dynamic-list peloraDynamicDistlist-2
)

if [ "${1:-}" != --copy-only ]; then
  cmake --preset asan -DBUILD_TESTING=ON
  cmake --build --preset asan --target pelora-console "${suites[@]}"
  for suite in "${suites[@]}"; do ctest --preset asan -R "^$suite\$"; done
  home="$(mktemp -d)"
  trap 'rm -rf "$home"' EXIT
  # The toolkit's libraries keep what they have until the end.
  ASAN_OPTIONS=detect_leaks=0 LDB_MODULES_DISABLE_DEEPBIND=1 XDG_DATA_HOME="$home" XDG_CONFIG_HOME="$home" \
    "$build/hosts/console/pelora-console" --screenshot docs/images/main-window.png
fi
for ((at = 0; at < ${#pictures[@]}; at += 2)); do
  cp "$kept/${pictures[at + 1]}.png" "docs/images/${pictures[at]}.png"
done
