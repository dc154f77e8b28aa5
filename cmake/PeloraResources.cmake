# SPDX-License-Identifier: Apache-2.0
include_guard(GLOBAL)

# For programs of this system: those of Windows name their scripts among their sources.
find_program(PELORA_WINDRES x86_64-w64-mingw32-windres REQUIRED)
# Holds winnt.rh, winuser.rh and commctrl.rh: the constants that templates are written with.
find_path(PELORA_RESOURCE_HEADERS winuser.rh PATHS /usr/share/mingw-w64/include
  NO_DEFAULT_PATH REQUIRED)

# Compiles a resource script with UTF-8 texts to a resource file. The build's own C++ compiler
# preprocesses the script, so that no cross compiler is needed; files that the script includes are
# dependencies.
function(pelora_compile_resource_script script output)
  get_filename_component(script_folder "${script}" DIRECTORY)
  # The preprocessor does not see what the compiler itself reads.
  file(GLOB images CONFIGURE_DEPENDS "${script_folder}/*.ico")
  add_custom_command(
    OUTPUT "${output}"
    COMMAND "${PELORA_WINDRES}" -c 65001 -O res
            "--preprocessor=${CMAKE_CXX_COMPILER}"
            --preprocessor-arg=-E --preprocessor-arg=-xc --preprocessor-arg=-DRC_INVOKED
            --preprocessor-arg=-MD "--preprocessor-arg=-MF${output}.d"
            --preprocessor-arg=-MT "--preprocessor-arg=${output}"
            -I "${script_folder}" -I "${PROJECT_SOURCE_DIR}" -I "${PELORA_RESOURCE_HEADERS}"
            "${script}" "${output}"
    COMMAND "${CMAKE_COMMAND}" "-DFILE=${output}" -DNAME=PELORA_EMBEDDED_CHECKSUM
            "-DOUTPUT=${output}.h" -P "${PROJECT_SOURCE_DIR}/cmake/write_checksum.cmake"
    BYPRODUCTS "${output}.h"
    DEPENDS "${script}" ${images} "${PROJECT_SOURCE_DIR}/cmake/write_checksum.cmake"
    DEPFILE "${output}.d"
    COMMENT "Compiling resources ${script}"
    VERBATIM)
endfunction()

# pelora_embed_resources(TARGET SCRIPT HEADER header FUNCTION qualified::Name)
#
# Compiles SCRIPT to a resource file and embeds it into TARGET. HEADER declares FUNCTION, which takes
# nothing and gives the file's bytes as std::span<const std::byte>; its definition is generated.
function(pelora_embed_resources target script)
  cmake_parse_arguments(embed "" "HEADER;FUNCTION" "" ${ARGN})
  get_filename_component(script "${script}" ABSOLUTE)
  get_filename_component(name "${script}" NAME_WE)
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${name}.res")
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}_res.cpp")
  set(symbol "pelora_${name}_res")
  pelora_compile_resource_script("${script}" "${resources}")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/embedded_resources.cpp.in" "${source}" @ONLY)
  set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${resources}")
  target_sources(${target} PRIVATE "${source}")
endfunction()
