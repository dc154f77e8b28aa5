# SPDX-License-Identifier: Apache-2.0

# pelora_windows_suite(NAME SOURCES source... LIBRARIES library... [RESOURCES file...])
#
# Builds one GoogleTest program for Windows and enters it into windows_suites.txt of the build folder,
# which tests/windows/run_wine_suites.sh runs: one line per run, with the program and its result file.
#
# Test programs are linked by lld: the system's own linker takes up to a minute for one of them, as its time
# grows with the square of the sections in a source group. What is shipped is linked by the system's own; the
# driver of this compiler knows no other name for a linker than the path it was built with, hence the specs.
function(pelora_windows_suite name)
  cmake_parse_arguments(suite "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${suite_SOURCES})
  target_link_libraries(${name} PRIVATE pelora_options ${suite_LIBRARIES})
  pelora_test_code(${name})
  pelora_use_test_headers(${name})
  target_link_options(${name} PRIVATE -static
    "-specs=${PROJECT_SOURCE_DIR}/cmake/lld.specs" -fno-use-linker-plugin)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  set(results "${PROJECT_BINARY_DIR}/results/${name}.xml")
  set_property(GLOBAL APPEND PROPERTY PELORA_SUITES "${results}")
  set_property(GLOBAL APPEND PROPERTY PELORA_WINDOWS_PROGRAMS
    "${PROJECT_BINARY_DIR}/bin/${name}.exe\t${results}")
endfunction()

# pelora_windows_suite_at(NAME DPI FILTER)
#
# Runs those tests of a program that FILTER names once more, on a screen with DPI dots per inch (96 is
# usual): two further columns of its line.
function(pelora_windows_suite_at name dpi filter)
  set(results "${PROJECT_BINARY_DIR}/results/${name}_${dpi}dpi.xml")
  set_property(GLOBAL APPEND PROPERTY PELORA_SUITES "${results}")
  set_property(GLOBAL APPEND PROPERTY PELORA_WINDOWS_PROGRAMS
    "${PROJECT_BINARY_DIR}/bin/${name}.exe\t${results}\t${dpi}\t${filter}")
endfunction()

# pelora_windows_suite_in(NAME LANGUAGE FILTER)
#
# Runs those tests of a program that FILTER names once more, on a system in another language: the name of a
# locale of this system, or one that there is not. A third further column of its line.
function(pelora_windows_suite_in name language filter)
  set(results "${PROJECT_BINARY_DIR}/results/${name}_${language}.xml")
  set_property(GLOBAL APPEND PROPERTY PELORA_SUITES "${results}")
  set_property(GLOBAL APPEND PROPERTY PELORA_WINDOWS_PROGRAMS
    "${PROJECT_BINARY_DIR}/bin/${name}.exe\t${results}\t96\t${filter}\t${language}")
endfunction()

function(pelora_write_windows_suite_list)
  get_property(programs GLOBAL PROPERTY PELORA_WINDOWS_PROGRAMS)
  list(JOIN programs "\n" lines)
  file(WRITE "${PROJECT_BINARY_DIR}/windows_suites.txt" "${lines}\n")
endfunction()
