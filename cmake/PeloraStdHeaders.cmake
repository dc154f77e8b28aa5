# SPDX-License-Identifier: Apache-2.0

# pelora_use_std_headers(NAME...)
#
# Puts one precompiled header of the standard library before every source of the libraries. On Windows the
# extension has one of its own, of the system's headers.
function(pelora_use_std_headers)
  if(WIN32)
    return()
  endif()
  if(NOT TARGET pelora_std_headers)
    add_library(pelora_std_headers OBJECT "${PROJECT_SOURCE_DIR}/cmake/std_headers.cpp")
    target_link_libraries(pelora_std_headers PRIVATE pelora_options)
    # In angle brackets it is found by the include path: clones at different places share it.
    target_precompile_headers(pelora_std_headers PRIVATE <cmake/std_headers.h>)
  endif()
  foreach(name IN LISTS ARGN)
    target_precompile_headers(${name} REUSE_FROM pelora_std_headers)
  endforeach()
endfunction()
