# SPDX-License-Identifier: Apache-2.0

# What a build of the Windows module needs beside the compiler.
enable_language(RC)
find_program(WIDL_PROGRAM NAMES x86_64-w64-mingw32-widl widl REQUIRED)

# pelora_type_library(OUTPUT_VARIABLE SOURCE) compiles an interface definition into a type library in the
# current build folder.
function(pelora_type_library output_variable source)
  get_filename_component(name "${source}" NAME_WE)
  set(library "${CMAKE_CURRENT_BINARY_DIR}/${name}.tlb")
  add_custom_command(
    OUTPUT "${library}"
    COMMAND "${WIDL_PROGRAM}" -t -o "${library}" "${source}"
    DEPENDS "${source}"
    COMMENT "Building type library ${name}.tlb"
    VERBATIM)
  set(${output_variable} "${library}" PARENT_SCOPE)
endfunction()
