# SPDX-License-Identifier: Apache-2.0

# pelora_harden(OPTIONS)
#
# Gives whoever links the interface library OPTIONS what makes a fault of memory hard to use, on Linux. What
# comes of it is read from the built files by a test. Test code stays as it is compiled everywhere.
function(pelora_harden options)
  set(product "$<NOT:$<BOOL:$<TARGET_PROPERTY:PELORA_IS_TEST>>>,$<COMPILE_LANGUAGE:CXX>")
  # The checked functions need an optimizer; sanitizers check more.
  set(optimized "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
  target_compile_options(${options} INTERFACE "$<$<AND:${product}>:-fstack-protector-strong>")
  if(NOT PELORA_SANITIZE)
    target_compile_options(${options} INTERFACE
      "$<$<AND:${product},${optimized}>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  endif()
  # Position-independent whatever the compiler is set to; nothing is resolved later, and what is resolved
  # cannot be written to any more.
  target_compile_options(${options} INTERFACE
    "$<$<AND:${product}>:-fPIC;-fstack-clash-protection>")
  target_link_options(${options} INTERFACE
    "$<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>"
    -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endfunction()
