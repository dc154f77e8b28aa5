# SPDX-License-Identifier: Apache-2.0
# The user tab on the screen, field by field.
pelora_test_suite(ui_user_tab QT
  SOURCES typed_fields_test.cpp user_tab_lists_test.cpp user_tab_values_test.cpp user_tab.cpp user_tab.h "${qt_main}"
  LIBRARIES pelora_ui_test_support)
