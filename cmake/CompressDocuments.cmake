# SPDX-License-Identifier: MIT
# Runs on the staged files of a Debian package: manual pages and the changelog are compressed there.

file(GLOB_RECURSE documents ${CPACK_TEMPORARY_DIRECTORY}/*.[1-9] ${CPACK_TEMPORARY_DIRECTORY}/changelog)
foreach(document IN LISTS documents)
  if(document MATCHES "/share/(man|doc)/" AND NOT IS_SYMLINK ${document})
    execute_process(COMMAND gzip -9n ${document} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
