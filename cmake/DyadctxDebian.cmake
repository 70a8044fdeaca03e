# SPDX-License-Identifier: MIT
# What `cpack -G DEB` in the build folder makes: a package each of the shared library, of what clients
# are compiled with, and of the tool. scripts/package builds for it.

set(same_version "(= ${PROJECT_VERSION})")
set(runtime_package libdyadctx${DYADCTX_ABI})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "shared library for contexts of a data exchange
 Reads, checks, links, serves and writes back the contexts and exchange
 scenarios that are declared in a context file.")
# The loader's cache is brought up to date when the library comes or goes; programs linked with it
# depend on its package.
set(control_folder ${PROJECT_BINARY_DIR}/package-control)
file(WRITE ${control_folder}/triggers "activate-noawait ldconfig\n")
file(WRITE ${control_folder}/shlibs
  "libdyadctx ${DYADCTX_ABI} ${runtime_package} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${control_folder}/triggers ${control_folder}/shlibs)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libdyadctx-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} ${same_version}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "shared library for contexts of a data exchange - headers
 The headers, the CMake package and the pkg-config file that a program is
 built with.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME dyadctx)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${runtime_package} ${same_version}")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "command-line tool for contexts of a data exchange
 Says what is wrong with a context file and where, which file is in use and
 why, and lists, draws, compares and rewrites its contexts.")

# Every package has the licence and, as their own packages state them, those of the header-only
# libraries that are compiled in.
set(copyright ${PROJECT_BINARY_DIR}/copyright)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
file(WRITE ${copyright} "${licence}")
foreach(library IN ITEMS libcli11-dev libtomlplusplus-dev nlohmann-json3-dev)
  foreach(prefix IN LISTS CMAKE_SYSTEM_PREFIX_PATH)
    if(EXISTS ${prefix}/share/doc/${library}/copyright)
      file(READ ${prefix}/share/doc/${library}/copyright licence)
      file(APPEND ${copyright} "\n---- Compiled in: ${library} ----\n\n${licence}")
      break()
    endif()
  endforeach()
endforeach()
set(DYADCTX_PACKAGE_CONTACT "the dyadctx authors <dyadctx@users.noreply.invalid>" CACHE STRING
  "Whom the packages name as their maintainer")
configure_file(cmake/changelog.in ${PROJECT_BINARY_DIR}/changelog @ONLY)
foreach(component IN ITEMS RUNTIME DEVELOPMENT TOOL)
  string(TOLOWER ${component} installed)
  dyadctx_install_files(${installed}
    ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}
    ${copyright} ${PROJECT_BINARY_DIR}/changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
endforeach()

set(CPACK_PACKAGE_CONTACT "${DYADCTX_PACKAGE_CONTACT}")
set(CPACK_COMPONENTS_ALL runtime development tool)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/CompressDocuments.cmake)
include(CPack)
