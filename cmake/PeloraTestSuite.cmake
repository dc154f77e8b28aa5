# SPDX-License-Identifier: Apache-2.0

# What tests are compiled with: they are compiled far more often than run, so quickly rather than for
# speed. Position-independent everywhere, or one precompiled header could not serve programs, libraries
# and users of Qt.
set(PELORA_TEST_OPTIONS -O0 -g1 -fPIC)
if(WIN32)
  set(PELORA_TEST_OPTIONS -O0 -g0)
endif()

# pelora_test_code(NAME...)
#
# Test code that is no suite of its own.
function(pelora_test_code)
  foreach(name IN LISTS ARGN)
    set_target_properties(${name} PROPERTIES PELORA_IS_TEST ON)
    foreach(option IN LISTS PELORA_TEST_OPTIONS)
      target_compile_options(${name} PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:${option}>")
    endforeach()
  endforeach()
endfunction()

# pelora_use_test_headers(NAME...)
#
# Puts one precompiled header before every source of the targets, which link GoogleMock.
function(pelora_use_test_headers)
  if(NOT TARGET pelora_test_headers)
    add_library(pelora_test_headers OBJECT "${PROJECT_SOURCE_DIR}/tests/support/test_headers.cpp")
    target_link_libraries(pelora_test_headers PRIVATE pelora_options GTest::gmock)
    if(WIN32)
      # As the adapters are compiled: a precompiled header serves nobody who defines more.
      target_compile_definitions(pelora_test_headers PRIVATE UNICODE _UNICODE)
      # Reading the system's headers takes longer still.
      target_precompile_headers(pelora_test_headers PRIVATE <hosts/windows/system_headers.h>)
    endif()
    pelora_test_code(pelora_test_headers)
    # Built for those who use it.
    set_target_properties(pelora_test_headers PROPERTIES EXCLUDE_FROM_ALL ON)
    # In angle brackets it is found by the include path: clones at different places share it.
    target_precompile_headers(pelora_test_headers PRIVATE <tests/support/test_headers.h>)
  endif()
  foreach(name IN LISTS ARGN)
    target_precompile_headers(${name} REUSE_FROM pelora_test_headers)
  endforeach()
endfunction()

# pelora_use_qt_test_headers(NAME...)
#
# The same for targets that link the console's widgets besides.
function(pelora_use_qt_test_headers)
  if(NOT TARGET pelora_qt_test_headers)
    add_library(pelora_qt_test_headers OBJECT "${PROJECT_SOURCE_DIR}/tests/support/test_headers.cpp")
    target_link_libraries(pelora_qt_test_headers PRIVATE pelora_qt_dialogs GTest::gmock)
    pelora_test_code(pelora_qt_test_headers)
    set_target_properties(pelora_qt_test_headers PROPERTIES EXCLUDE_FROM_ALL ON)
    target_precompile_headers(pelora_qt_test_headers PRIVATE
      <hosts/console/qt_headers.h> <tests/support/test_headers.h>)
  endif()
  foreach(name IN LISTS ARGN)
    target_precompile_headers(${name} REUSE_FROM pelora_qt_test_headers)
  endforeach()
endfunction()

# A list of suites, as a build writes it: what stands there is tried by that build, and is built here only
# when somebody asks for it by name.
set(PELORA_SUITES_ELSEWHERE "" CACHE FILEPATH "The suites.txt of a build that runs suites in place of this one")

# Registers a test as a suite whose results a whole run counts. Sets RESULT to whether this build runs it.
function(pelora_count_suite name file result)
  set(lines "")
  if(PELORA_SUITES_ELSEWHERE)
    file(STRINGS "${PELORA_SUITES_ELSEWHERE}" lines REGEX "/${name}\\.xml$")
  endif()
  if(lines)
    set(${result} FALSE PARENT_SCOPE)
    return()
  endif()
  set_property(GLOBAL APPEND PROPERTY PELORA_SUITES "${file}")
  set(${result} TRUE PARENT_SCOPE)
endfunction()

# pelora_test_suite(NAME [QT] [LONG] SOURCES source... LIBRARIES library... [ENVIRONMENT NAME=VALUE...]
#                   [LAUNCHER command...])
#
# Builds one GoogleTest program and registers it as one suite. QT says that it tests widgets, LONG that it
# runs for more than half a minute: such suites begin first, or the last of them runs alone. A launcher is
# a command that runs it, with the program's own command line behind its own. The program leaves its
# results in results/NAME.xml below the build folder, where test.sh counts them; a suite whose file is
# missing did not run, and that is an error.
function(pelora_test_suite name)
  cmake_parse_arguments(suite "QT;LONG" "" "SOURCES;LIBRARIES;ENVIRONMENT;LAUNCHER" ${ARGN})
  add_executable(${name} ${suite_SOURCES})
  target_link_libraries(${name} PRIVATE pelora_options GTest::gmock_main ${suite_LIBRARIES})
  pelora_test_code(${name})
  if(suite_QT)
    pelora_use_qt_test_headers(${name})
  else()
    pelora_use_test_headers(${name})
  endif()
  set(results "${PROJECT_BINARY_DIR}/results/${name}.xml")
  pelora_count_suite(${name} "${results}" is_here)
  if(NOT is_here)
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()
  add_test(NAME ${name}
    COMMAND ${suite_LAUNCHER} "$<TARGET_FILE:${name}>" "--gtest_output=xml:${results}")
  if(PELORA_SANITIZE)
    # Sanitizers do not get along with the way in which libldb binds its modules' symbols.
    list(APPEND suite_ENVIRONMENT LDB_MODULES_DISABLE_DEEPBIND=1
      "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp")
  endif()
  if(suite_LONG)
    set_tests_properties(${name} PROPERTIES COST 1000)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT 600
    ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp;${suite_ENVIRONMENT}")
endfunction()

# Writes the list of result files that a whole run leaves behind.
function(pelora_write_suite_list)
  get_property(suites GLOBAL PROPERTY PELORA_SUITES)
  list(JOIN suites "\n" lines)
  file(WRITE "${PROJECT_BINARY_DIR}/suites.txt" "${lines}\n")
endfunction()
