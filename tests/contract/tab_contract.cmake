# SPDX-License-Identifier: Apache-2.0
# What every tab, and every page of the wizards, does on every console, for the suite of each console: tests,
# scripts, and the sample company in memory.
set(contract "${PROJECT_SOURCE_DIR}/tests/contract")
add_library(pelora_sample_console STATIC
  "${contract}/same_edits.cpp" "${contract}/same_edits.h"
  "${contract}/tab_company.cpp" "${contract}/tab_company.h"
  "${contract}/tab_console.cpp" "${contract}/tab_console.h"
  "${contract}/tab_scripts.cpp" "${contract}/tab_scripts.h")
target_link_libraries(pelora_sample_console PUBLIC pelora_test_support GTest::gmock)
if(NOT WIN32)
  target_link_libraries(pelora_sample_console PUBLIC pelora_directory)
else()
  # Compiled as the programs are that use it.
  target_link_libraries(pelora_sample_console PUBLIC pelora_windows)
  # Two parts of the directory host that need no directory.
  set(deploy "${PROJECT_SOURCE_DIR}/deploy")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    "${deploy}/sample-schema.ldif" "${deploy}/sample-company.ldif")
  file(READ "${deploy}/sample-schema.ldif" SAMPLE_SCHEMA)
  file(READ "${deploy}/sample-company.ldif" SAMPLE_COMPANY)
  configure_file("${PROJECT_SOURCE_DIR}/hosts/ldap/sample_company.cpp.in"
    "${CMAKE_CURRENT_BINARY_DIR}/sample_company.cpp" @ONLY)
  target_sources(pelora_sample_console PRIVATE
    "${PROJECT_SOURCE_DIR}/hosts/ldap/ldif_lines.cpp"
    "${CMAKE_CURRENT_BINARY_DIR}/sample_company.cpp")
endif()

add_library(pelora_tab_contract OBJECT
  "${contract}/features_tab_contract.cpp" "${contract}/features_tab_contract.h"
  "${contract}/tab_contract.cpp" "${contract}/tab_contract.h"
  "${contract}/tab_rules.cpp" "${contract}/tab_rules.h"
  "${contract}/user_tab_contract.h"
  "${contract}/user_tab_lists_contract.cpp"
  "${contract}/user_tab_values_contract.cpp")
target_link_libraries(pelora_tab_contract PUBLIC pelora_sample_console)

add_library(pelora_new_object_contract OBJECT
  "${contract}/new_object_contract.cpp" "${contract}/new_object_contract.h")
target_link_libraries(pelora_new_object_contract PUBLIC pelora_sample_console)
