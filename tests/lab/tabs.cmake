# SPDX-License-Identifier: Apache-2.0
# Every property tab and wizard page on a copy of the sample company in a domain.
pelora_test_suite(lab_tabs_test
  SOURCES
    domain_bench.h
    domain_company.cpp domain_company.h
    lab_page.h
    lab_test.h
    new_object_contract_samba.cpp
    tab_contract_samba.cpp
    "${PROJECT_SOURCE_DIR}/tests/contract/headless_tab_console.h"
  LIBRARIES pelora_tab_contract pelora_new_object_contract pelora_network_directory pelora_lab pelora_headless pelora_test_support
  LAUNCHER ${PELORA_LAB_LAUNCHER})

# Two administrators' sheets on the same objects of a domain.
pelora_test_suite(lab_guarded_sheet_test
  SOURCES guarded_sheet_contract_samba.cpp lab_test.h
  LIBRARIES pelora_guarded_sheet_contract pelora_network_directory pelora_lab
  LAUNCHER ${PELORA_LAB_LAUNCHER})
