# SPDX-License-Identifier: Apache-2.0
# The system's directory choosers behind their ports.
file(GLOB chooser_tests CONFIGURE_DEPENDS "choosers/*.cpp" "choosers/*.h")
pelora_windows_suite(windows_choosers_test
  SOURCES ${chooser_tests} "${PROJECT_SOURCE_DIR}/tests/contract/choosers_contract.cpp"
  LIBRARIES pelora_windows_test_support)
add_dependencies(windows_choosers_test stand_in_browsers)
