# SPDX-License-Identifier: Apache-2.0

# GoogleTest for the target system, built from the sources that the distribution installs.
set(GOOGLETEST_SOURCE_DIR "/usr/src/googletest" CACHE PATH "Where GoogleTest's sources are")
if(NOT EXISTS "${GOOGLETEST_SOURCE_DIR}/googlemock/src/gmock-all.cc")
  message(FATAL_ERROR "GoogleTest's sources are missing (package googletest)")
endif()

add_library(pelora_gmock STATIC
  "${GOOGLETEST_SOURCE_DIR}/googletest/src/gtest-all.cc"
  "${GOOGLETEST_SOURCE_DIR}/googlemock/src/gmock-all.cc")
target_include_directories(pelora_gmock SYSTEM PUBLIC
  "${GOOGLETEST_SOURCE_DIR}/googletest/include" "${GOOGLETEST_SOURCE_DIR}/googlemock/include")
target_include_directories(pelora_gmock PRIVATE
  "${GOOGLETEST_SOURCE_DIR}/googletest" "${GOOGLETEST_SOURCE_DIR}/googlemock")
target_compile_options(pelora_gmock PRIVATE -O0 -g0)
# Under the name by which the portable test libraries ask for it.
add_library(GTest::gmock ALIAS pelora_gmock)
