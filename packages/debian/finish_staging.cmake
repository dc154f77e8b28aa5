# SPDX-License-Identifier: Apache-2.0
# Run by cpack when what is to be packed lies in its folders: adds what Debian wants of every package, and
# packs its pages. The packages are of the time that SOURCE_DATE_EPOCH says.

function(pelora_pack file)
  # Without name and time: the same page gives the same bytes.
  execute_process(COMMAND gzip -9n "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  message(FATAL_ERROR "SOURCE_DATE_EPOCH is not set: use tools/make_deb.sh")
endif()
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" upper)
  set(package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  set(root "${CPACK_TEMPORARY_DIRECTORY}/${component}")
  set(folder "${root}/usr/share/doc/${package}")
  file(WRITE "${folder}/changelog"
"${package} (${CPACK_PACKAGE_VERSION}) stable; urgency=medium

  * Release ${CPACK_PACKAGE_VERSION}. What is new is said in NEWS.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
  configure_file("${CPACK_PELORA_SOURCE_DIR}/CHANGELOG.md" "${folder}/NEWS" COPYONLY)
  configure_file("${CPACK_PELORA_SOURCE_DIR}/packages/debian/copyright" "${folder}/copyright" COPYONLY)
  file(GLOB pages "${root}/usr/share/man/man*/*")
  foreach(page IN LISTS pages ITEMS "${folder}/changelog" "${folder}/NEWS")
    pelora_pack("${page}")
  endforeach()
  file(CHMOD_RECURSE "${folder}" FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
    DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endforeach()
