# SPDX-License-Identifier: Apache-2.0
# The fuzzer of sheets stands on nearly everything that is built here, so it is built as everything is, by
# the same compiler and with the build's own sanitizers. Of clang it needs libFuzzer alone.
execute_process(COMMAND "${PELORA_CLANG}" -print-file-name=libclang_rt.fuzzer-x86_64.a
  OUTPUT_VARIABLE libfuzzer OUTPUT_STRIP_TRAILING_WHITESPACE)

add_executable(fuzz_sheets covered_places.cpp fuzz_sheets.cpp)
target_link_libraries(fuzz_sheets PRIVATE pelora_options pelora_harness "${libfuzzer}")
target_link_options(fuzz_sheets PRIVATE -Wl,--wrap=__sanitizer_cov_trace_pc)
pelora_test_code(fuzz_sheets)
pelora_use_test_headers(fuzz_sheets)

pelora_fuzz_suite(fuzz_sheets_test 60 "$<TARGET_FILE:fuzz_sheets>")
add_dependencies(fuzz_sheets_test fuzz_sheets)
