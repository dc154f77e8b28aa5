# SPDX-License-Identifier: Apache-2.0
# What the console does around the fields of a tab.
pelora_test_suite(ui_fields QT
  SOURCES selected_values_test.cpp typed_fields_test.cpp user_tab.cpp user_tab.h "${qt_main}"
  LIBRARIES pelora_ui_test_support)
