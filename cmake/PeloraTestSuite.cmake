# SPDX-License-Identifier: Apache-2.0

# pelora_test_code(NAME...)
#
# Tests are compiled far more often than run: quickly rather than for speed.
function(pelora_test_code)
  foreach(name IN LISTS ARGN)
    set_target_properties(${name} PROPERTIES PELORA_IS_TEST ON)
    target_compile_options(${name} PRIVATE -O0 -g1)
  endforeach()
endfunction()

# pelora_test_suite(NAME SOURCES source... LIBRARIES library... [ENVIRONMENT NAME=VALUE...])
#
# Builds one GoogleTest program and registers it as one suite. The program leaves its results in
# results/NAME.xml below the build folder, where test.sh counts them; a suite whose file is missing
# did not run, and that is an error.
function(pelora_test_suite name)
  cmake_parse_arguments(suite "" "" "SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${suite_SOURCES})
  target_link_libraries(${name} PRIVATE pelora_options GTest::gmock_main ${suite_LIBRARIES})
  pelora_test_code(${name})
  set(results "${PROJECT_BINARY_DIR}/results/${name}.xml")
  add_test(NAME ${name} COMMAND ${name} "--gtest_output=xml:${results}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 300
    ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp;${suite_ENVIRONMENT}")
  set_property(GLOBAL APPEND PROPERTY PELORA_SUITES "${results}")
endfunction()

# Writes the list of result files that a whole run leaves behind.
function(pelora_write_suite_list)
  get_property(suites GLOBAL PROPERTY PELORA_SUITES)
  list(JOIN suites "\n" lines)
  file(WRITE "${PROJECT_BINARY_DIR}/suites.txt" "${lines}\n")
endfunction()
