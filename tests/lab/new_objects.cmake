# SPDX-License-Identifier: Apache-2.0
# Objects made in a domain by the console's wizards.
pelora_test_suite(lab_new_object_test QT
  SOURCES
    new_object_test.cpp
    "${PROJECT_SOURCE_DIR}/tests/ui/open_wizard.cpp"
    "${PROJECT_SOURCE_DIR}/tests/contract/dialog_contract_qt_main.cpp"
  LIBRARIES pelora_ui_test_support pelora_network_directory pelora_lab
  LAUNCHER ${PELORA_LAB_LAUNCHER})
