# SPDX-License-Identifier: Apache-2.0
# What the console does around the fields of a tab.
pelora_test_suite(ui_fields QT
  SOURCES dark_theme.h faults_of_sight.cpp faults_of_sight.h selected_values_test.cpp shown_rows_test.cpp typed_fields_test.cpp user_tab.cpp user_tab.h "${qt_main}"
  LIBRARIES pelora_ui_test_support)
target_compile_definitions(ui_fields PRIVATE
  "PELORA_SCREENSHOT_FOLDER=\"${PROJECT_BINARY_DIR}/screenshots\"")
# What holds for every window.
pelora_test_suite(ui_every_window QT
  SOURCES every_window_test.cpp every_window.cpp every_window.h open_wizard.cpp open_wizard.h
    dark_theme.h faults_of_use.cpp faults_of_use.h scripted_store.h small_screen_main.cpp
  LIBRARIES pelora_ui_test_support)
target_compile_definitions(ui_every_window PRIVATE
  "PELORA_SCREENSHOT_FOLDER=\"${PROJECT_BINARY_DIR}/screenshots\"")
