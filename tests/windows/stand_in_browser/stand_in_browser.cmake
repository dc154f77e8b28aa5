# SPDX-License-Identifier: Apache-2.0
# In the place of the system's directory user-interface library, in four builds: with the container
# browser under its name, under its number, under both, and without it. Programs that use them depend on
# stand_in_browsers.
add_custom_target(stand_in_browsers)
foreach(exports by_name by_number by_both without)
  add_library(stand_in_browser_${exports} SHARED
    stand_in_browser/browser.cpp stand_in_browser/${exports}.def)
  target_link_libraries(stand_in_browser_${exports} PRIVATE pelora_options)
  target_compile_definitions(stand_in_browser_${exports} PRIVATE UNICODE _UNICODE)
  target_link_options(stand_in_browser_${exports} PRIVATE -static)
  set_target_properties(stand_in_browser_${exports} PROPERTIES
    PREFIX "" RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  pelora_test_code(stand_in_browser_${exports})
  add_dependencies(stand_in_browsers stand_in_browser_${exports})
endforeach()
