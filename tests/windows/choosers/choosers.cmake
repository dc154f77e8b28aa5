# SPDX-License-Identifier: Apache-2.0
# The system's directory choosers behind their ports.

# In the place of the system's directory user-interface library, in three builds: with the container
# browser under its name, under its number alone, and without it.
foreach(exports by_name by_number without)
  add_library(stand_in_browser_${exports} SHARED
    choosers/stand_in/browser.cpp choosers/stand_in/${exports}.def)
  target_link_libraries(stand_in_browser_${exports} PRIVATE pelora_options)
  target_compile_definitions(stand_in_browser_${exports} PRIVATE UNICODE _UNICODE)
  target_link_options(stand_in_browser_${exports} PRIVATE -static)
  set_target_properties(stand_in_browser_${exports} PROPERTIES
    PREFIX "" RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  pelora_test_code(stand_in_browser_${exports})
endforeach()

file(GLOB chooser_tests CONFIGURE_DEPENDS "choosers/*.cpp" "choosers/*.h")
pelora_windows_suite(windows_choosers_test
  SOURCES ${chooser_tests}
  LIBRARIES pelora_windows_test_support)
add_dependencies(windows_choosers_test
  stand_in_browser_by_name stand_in_browser_by_number stand_in_browser_without)
