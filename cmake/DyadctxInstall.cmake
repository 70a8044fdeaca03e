# SPDX-License-Identifier: MIT
# What `cmake --install` lays down, in three components: runtime (the shared library), development
# (headers, CMake package, pkg-config file) and tool (the program, its pages, completions, schemas).
include(CMakePackageConfigHelpers)

# So that each file below names its component only once.
function(dyadctx_install_files component destination)
  install(FILES ${ARGN} DESTINATION ${destination} COMPONENT ${component})
endfunction()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/dyadctx)
install(TARGETS dyadctx EXPORT dyadctxTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(EXPORT dyadctxTargets NAMESPACE dyadctx::
  DESTINATION ${package_folder} COMPONENT development)

# Below 1.0 another minor version is another interface, later another major one.
set(compatibility SameMajorVersion)
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
endif()
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/dyadctxConfig.cmake.in ${PROJECT_BINARY_DIR}/dyadctxConfig.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/dyadctxConfigVersion.cmake
  COMPATIBILITY ${compatibility})
dyadctx_install_files(development ${package_folder}
  ${PROJECT_BINARY_DIR}/dyadctxConfig.cmake ${PROJECT_BINARY_DIR}/dyadctxConfigVersion.cmake)

# The file finds its prefix from its own place, as long as the folders of the prefix are relative.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH way_to_prefix /${pkgconfig_folder} /)
configure_file(cmake/dyadctx.pc.in ${PROJECT_BINARY_DIR}/dyadctx.pc @ONLY)
dyadctx_install_files(development ${pkgconfig_folder} ${PROJECT_BINARY_DIR}/dyadctx.pc)

# A header directly in a module folder is public; those below it are not.
foreach(module IN ITEMS platform trace context collector xml check)
  file(GLOB public_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${module}/*.h)
  dyadctx_install_files(development ${CMAKE_INSTALL_INCLUDEDIR}/dyadctx/${module} ${public_headers})
endforeach()

if(NOT TARGET dyadctx_tool)
  return()
endif()

install(TARGETS dyadctx_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)

# The schemas of the tool's JSON documents and of the context file.
file(GLOB schemas CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/resources/schema/*.schema.json
  ${PROJECT_SOURCE_DIR}/resources/schema/dyadctx-context.*
  ${PROJECT_SOURCE_DIR}/resources/schema/catalog.xml)
dyadctx_install_files(tool ${CMAKE_INSTALL_DATADIR}/dyadctx/schema ${schemas})

dyadctx_install_files(tool ${CMAKE_INSTALL_MANDIR}/man5
  ${PROJECT_SOURCE_DIR}/resources/man/dyadctx-context.5)
if(TARGET dyadctx_surface)
  dyadctx_install_files(tool ${CMAKE_INSTALL_MANDIR}/man1 ${PROJECT_BINARY_DIR}/man/dyadctx.1)
  dyadctx_install_files(tool ${CMAKE_INSTALL_MANDIR}/man7
    ${PROJECT_BINARY_DIR}/man/dyadctx-messages.7)
  set(completion ${PROJECT_BINARY_DIR}/completion)
  dyadctx_install_files(tool ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    ${completion}/dyadctx.bash RENAME dyadctx)
  dyadctx_install_files(tool ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
    ${completion}/dyadctx.zsh RENAME _dyadctx)
  dyadctx_install_files(tool ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    ${completion}/dyadctx.fish)
endif()
