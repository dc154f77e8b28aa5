# SPDX-License-Identifier: Apache-2.0
# What the console does around the fields of a tab.
pelora_test_suite(ui_fields QT
  SOURCES
    dark_theme.h
    faults_of_sight.cpp faults_of_sight.h
    faults_of_use.cpp faults_of_use.h
    handbook_pictures_test.cpp
    rights_store.h
    selected_values_test.cpp
    sheet_looks_test.cpp
    shown_rows_test.cpp
    typed_fields_test.cpp
    user_tab.cpp user_tab.h
    writing_sheet.h
    "${qt_main}"
  LIBRARIES pelora_ui_test_support)
# What holds for every window.
pelora_test_suite(ui_every_window QT
  SOURCES every_window_test.cpp every_window.cpp every_window.h long_names.h open_wizard.cpp open_wizard.h
    dark_theme.h faults_of_use.cpp faults_of_use.h scripted_store.h small_screen_main.cpp
  LIBRARIES pelora_ui_test_support)
