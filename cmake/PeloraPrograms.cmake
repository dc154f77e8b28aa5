# SPDX-License-Identifier: Apache-2.0

# pelora_programs_below(RESULT FOLDER)
#
# Every program that is built in a folder of the project and below it.
function(pelora_programs_below result folder)
  set(programs)
  get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
      list(APPEND programs ${target})
    endif()
  endforeach()
  get_property(folders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
  foreach(below IN LISTS folders)
    pelora_programs_below(more "${below}")
    list(APPEND programs ${more})
  endforeach()
  set(${result} "${programs}" PARENT_SCOPE)
endfunction()
