# SPDX-License-Identifier: Apache-2.0
# The module's wizard pages in wizards of the system's.
file(GLOB wizard_tests CONFIGURE_DEPENDS "wizards/*.cpp" "wizards/*.h")
pelora_windows_suite(windows_wizards_test
  SOURCES ${wizard_tests}
  LIBRARIES pelora_windows_test_support pelora_new_object_contract)
add_dependencies(windows_wizards_test PeloraADS stand_in_browsers)
