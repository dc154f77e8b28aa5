#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Draws the pictures of the handbook anew, from the console itself: the main window, every tab on objects of the
# sample company, the windows in which objects are chosen and made. docs/draw_tabs.sh draws the sheet on which the
# tabs of Windows stand beside them. Needs the packages of ./install.sh test.
#
#   docs/draw_pictures.sh [--copy-only]
#
# With --copy-only the tests are not run: the pictures that they kept last are taken.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=build/native
kept=$build/screenshots

# Picture of the handbook, and the picture that a test of the console's looks keeps.
pictures=(
  tab-user sample_CPropPageUser
  tab-user-three sample_CPropPageUser_three
  tab-features features-tab-light
  archive-servers archive-servers
  tab-contact sample_CPropPageContact
  tab-group sample_CPropPageDistlist
  tab-address-list-general sample_CPropPageAddresslistGeneral
  tab-address-list sample_CPropPageAddresslist
  tab-dynamic-list-general sample_CPropPageDynamicDistlistGeneral
  tab-dynamic-list sample_CPropPageDynamicDistlist
  tab-company sample_CPropPageCompany
  tab-company-quota sample_CPropPageCompanyQuota
  tab-company-rights sample_CPropPageCompanyRights
  tab-server sample_CPropPageServer
  choosing chooser_users_and_groups
  choosing-computer chooser_computer
  choosing-container chooser_container_tree
  address email_address
  typed fields
  reading errand-light
  review review-light
  conflicts conflicts-light
  results results-light
  history history-light
  commands commands
  new-user-name new-user-1
  new-user-password new-user-2
  new-user new-user-3
  new-contact new-contact-2
  new-group new-group-2
  new-company new-organizational-unit-2
  new-computer new-computer-2
  new-address-list peloraAddresslist-2
  new-dynamic-list peloraDynamicDistlist-2
)

if [ "${1:-}" != --copy-only ]; then
  cmake --preset native -DBUILD_TESTING=ON
  suites=(ui_tabs ui_console_features ui_choosers ui_new_object ui_writing ui_fields)
  cmake --build --preset native --target pelora-console "${suites[@]}"
  for suite in "${suites[@]}"; do ctest --preset native -R "^$suite\$"; done
  home="$(mktemp -d)"
  trap 'rm -rf "$home"' EXIT
  XDG_DATA_HOME="$home" XDG_CONFIG_HOME="$home" "$build/hosts/console/pelora-console" \
    --screenshot docs/images/main-window.png
fi
for ((at = 0; at < ${#pictures[@]}; at += 2)); do
  cp "$kept/${pictures[at + 1]}.png" "docs/images/${pictures[at]}.png"
done
