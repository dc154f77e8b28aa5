# SPDX-License-Identifier: Apache-2.0

# pelora_unite_sources()
#
# Compiles the sources of every target in groups: reading the headers takes longer than compiling most
# sources, and here a group reads them once. Call it when all targets are defined.
#
# Two sources that name something of their own alike (kWidth, MakeHost) go into different groups, so nobody
# has to look for names that no other source has. A source stays alone when it has flags of its own, or when
# the source property PELORA_ALONE says so.
#
# CMake's own unity builds name sources by their whole path: clones at different places would share nothing
# of what was compiled before. Here they are found by the include path.
function(pelora_unite_sources)
  _pelora_unite_directory("${PROJECT_SOURCE_DIR}")
endfunction()

function(_pelora_unite_directory directory)
  get_property(targets DIRECTORY "${directory}" PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "^(STATIC_LIBRARY|SHARED_LIBRARY|MODULE_LIBRARY|OBJECT_LIBRARY|EXECUTABLE)$")
      _pelora_unite_target(${target})
    endif()
  endforeach()
  get_property(below DIRECTORY "${directory}" PROPERTY SUBDIRECTORIES)
  foreach(child IN LISTS below)
    _pelora_unite_directory("${child}")
  endforeach()
endfunction()

# Sets RESULT to what the first group of NAME finds in the matches of LINES, of which the text has any number.
function(_pelora_find_names text lines name result)
  set(names "")
  string(REGEX MATCHALL "${lines}" matches "${text}")
  foreach(match IN LISTS matches)
    if(match MATCHES "${name}")
      list(APPEND names "${CMAKE_MATCH_1}")
    endif()
  endforeach()
  set(${result} "${names}" PARENT_SCOPE)
endfunction()

# The names that a source defines for itself: constants, functions, types.
function(_pelora_own_names path result)
  file(READ "${path}" text)
  set(last_word "([A-Za-z_][A-Za-z0-9_]*) *$")
  _pelora_find_names("${text}" "\n(static |inline )?const[^\n=({;[]*" "${last_word}" constants)
  # Of those inside a function, too: they must not hide one at the margin.
  _pelora_find_names("${text}" "\n +(static )?constexpr [^\n=({;[]*" "${last_word}" local_constants)
  _pelora_find_names("${text}" "\n(\\[\\[[a-z]+\\]\\] )?[A-Za-z][^\n=({;[]*\\("
    "[ *&>]([A-Za-z_][A-Za-z0-9_]*)\\($" functions)
  _pelora_find_names("${text}" "\n(class|struct|enum class|enum|using) [A-Za-z0-9_]+ [^\n;]*[{=]"
    "[a-z] ([A-Z][A-Za-z0-9_]*) " types)
  set(names ${constants} ${local_constants} ${functions} ${types})
  list(REMOVE_DUPLICATES names)
  set(${result} "${names}" PARENT_SCOPE)
endfunction()

# pelora_united(RESULT FOLDER NAME source...)
#
# Sets RESULT to the files to be compiled in place of sources (whole paths): groups, written below FOLDER, and
# sources that stay alone.
function(pelora_united result folder name)
  set(most 12)
  set(groups 0)
  foreach(path IN LISTS ARGN)
    _pelora_own_names("${path}" names)
    set(group 1)
    while(group LESS_EQUAL groups)
      list(LENGTH members_${group} length)
      set(is_free TRUE)
      foreach(own IN LISTS names)
        if(own IN_LIST names_${group})
          set(is_free FALSE)
          break()
        endif()
      endforeach()
      if(is_free AND length LESS most)
        break()
      endif()
      math(EXPR group "${group} + 1")
    endwhile()
    if(group GREATER groups)
      set(groups ${group})
      set(members_${group} "")
      set(names_${group} "")
    endif()
    list(APPEND members_${group} "${path}")
    list(APPEND names_${group} ${names})
  endforeach()

  set(files "")
  set(group 1)
  while(group LESS_EQUAL groups)
    list(LENGTH members_${group} length)
    if(length EQUAL 1)
      list(APPEND files "${members_${group}}")
    else()
      set(text "")
      foreach(path IN LISTS members_${group})
        cmake_path(RELATIVE_PATH path BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
        string(APPEND text "#include \"${path}\"\n")
      endforeach()
      set(file "${folder}/united/${name}_${group}.cpp")
      file(CONFIGURE OUTPUT "${file}" CONTENT "${text}" @ONLY)
      list(APPEND files "${file}")
    endif()
    math(EXPR group "${group} + 1")
  endwhile()
  set(${result} "${files}" PARENT_SCOPE)
endfunction()

function(_pelora_unite_target target)
  get_target_property(folder ${target} SOURCE_DIR)
  get_target_property(binary_folder ${target} BINARY_DIR)
  get_target_property(sources ${target} SOURCES)

  set(others "")
  set(together "")
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${folder}" NORMALIZE OUTPUT_VARIABLE path)
    get_source_file_property(options "${path}" DIRECTORY "${folder}" COMPILE_OPTIONS)
    get_source_file_property(definitions "${path}" DIRECTORY "${folder}" COMPILE_DEFINITIONS)
    get_source_file_property(is_alone "${path}" DIRECTORY "${folder}" PELORA_ALONE)
    cmake_path(IS_PREFIX PROJECT_BINARY_DIR "${path}" NORMALIZE is_made)
    if(NOT source MATCHES "\\.cpp$" OR source MATCHES "\\$<" OR is_made OR options OR definitions OR is_alone)
      list(APPEND others "${source}")
      continue()
    endif()
    list(APPEND together "${path}")
    # What reads a class's declaration, such as Qt's compiler of signals, looks for it beside the sources.
    cmake_path(REPLACE_EXTENSION path LAST_ONLY h OUTPUT_VARIABLE header)
    if(EXISTS "${header}" AND NOT header IN_LIST sources)
      list(APPEND others "${header}")
    endif()
  endforeach()
  if(NOT together)
    return()
  endif()

  pelora_united(united "${binary_folder}" "${target}" ${together})
  foreach(file IN LISTS united)
    cmake_path(IS_PREFIX PROJECT_BINARY_DIR "${file}" NORMALIZE is_group)
    if(is_group)
      # It speaks of classes that a header would define differently for each of its readers; these sources
      # have one.
      set_source_files_properties("${file}" DIRECTORY "${folder}" PROPERTIES
        COMPILE_OPTIONS "$<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>")
    endif()
  endforeach()
  set_property(TARGET ${target} PROPERTY SOURCES ${united} ${others})
endfunction()
