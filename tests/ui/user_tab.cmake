# SPDX-License-Identifier: Apache-2.0
# What the console does around the fields of a tab.
pelora_test_suite(ui_fields QT
  SOURCES faults_of_sight.cpp faults_of_sight.h selected_values_test.cpp typed_fields_test.cpp user_tab.cpp user_tab.h "${qt_main}"
  LIBRARIES pelora_ui_test_support)
target_compile_definitions(ui_fields PRIVATE
  "PELORA_SCREENSHOT_FOLDER=\"${PROJECT_BINARY_DIR}/screenshots\"")
