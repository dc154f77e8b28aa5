# SPDX-License-Identifier: Apache-2.0
# The console's choosers and the search behind them.
pelora_test_suite(ui_choosers QT
  SOURCES choosers_test.cpp choosers_test.h choosers_contract_qt.cpp chooser_looks_test.cpp
    chosen_objects_test.cpp
    chooser_user.cpp chooser_user.h faults_of_sight.cpp faults_of_sight.h
    open_wizard.cpp open_wizard.h scripted_store.h several_domains_test.cpp "${qt_main}"
  LIBRARIES pelora_choosers_contract pelora_ui_test_support)
pelora_test_suite(ui_object_search QT
  SOURCES object_search_test.cpp scripted_store.h "${qt_main}"
  LIBRARIES pelora_ui_test_support)
