# SPDX-License-Identifier: Apache-2.0
# What every tab does on every console, for the suite of each console: tests, scripts, and the sample
# company in memory.
set(contract "${PROJECT_SOURCE_DIR}/tests/contract")
add_library(pelora_tab_contract OBJECT
  "${contract}/same_edits.cpp" "${contract}/same_edits.h"
  "${contract}/tab_company.cpp" "${contract}/tab_company.h"
  "${contract}/tab_contract.cpp" "${contract}/tab_contract.h"
  "${contract}/tab_scripts.cpp" "${contract}/tab_scripts.h")
target_link_libraries(pelora_tab_contract PUBLIC pelora_test_support GTest::gmock)
if(NOT WIN32)
  target_link_libraries(pelora_tab_contract PUBLIC pelora_directory)
else()
  # Compiled as the programs are that use it.
  target_link_libraries(pelora_tab_contract PUBLIC pelora_windows)
  # Two parts of the directory host that need no directory.
  set(deploy "${PROJECT_SOURCE_DIR}/deploy")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    "${deploy}/sample-schema.ldif" "${deploy}/sample-company.ldif")
  file(READ "${deploy}/sample-schema.ldif" SAMPLE_SCHEMA)
  file(READ "${deploy}/sample-company.ldif" SAMPLE_COMPANY)
  configure_file("${PROJECT_SOURCE_DIR}/hosts/ldap/sample_company.cpp.in"
    "${CMAKE_CURRENT_BINARY_DIR}/sample_company.cpp" @ONLY)
  target_sources(pelora_tab_contract PRIVATE
    "${PROJECT_SOURCE_DIR}/hosts/ldap/ldif_lines.cpp"
    "${CMAKE_CURRENT_BINARY_DIR}/sample_company.cpp")
endif()
