# SPDX-License-Identifier: MIT
# What only a build for Windows has.

enable_language(RC)

# dyadctx_version_resource(TARGET FILE TYPE DESCRIPTION [MANIFEST])
#   What Windows shows of the file, and the manifest that says how it runs.
function(dyadctx_version_resource target resource_file resource_type resource_description)
  set(resource_manifest "")
  if(ARGC GREATER 4)
    set(manifest ${CMAKE_CURRENT_BINARY_DIR}/${resource_file}.manifest)
    configure_file(${ARGV4} ${manifest} @ONLY)
    set(resource_manifest "1 24 \"${manifest}\"")
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${resource_file}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()

# The shared libraries of the compiler's runtime, which lie beside the DLL: an exception that a program
# catches, and memory that it frees, belong to one runtime.
set(dyadctx_runtime_libraries)
if(MINGW)
  foreach(name IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
      OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE)
    list(APPEND dyadctx_runtime_libraries ${library})
  endforeach()
  file(COPY ${dyadctx_runtime_libraries} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
endif()
