# What `cmake --install` lays down: the library, its public headers and the tool.

install(TARGETS dyadctx EXPORT dyadctxTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT dyadctxTargets NAMESPACE dyadctx::
  FILE dyadctxConfig.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/dyadctx)

# A header directly in a module folder is public; those below it are not.
foreach(module IN ITEMS platform trace context collector xml check)
  file(GLOB public_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${module}/*.h)
  install(FILES ${public_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/dyadctx/${module})
endforeach()

# The schemas of the tool's JSON documents.
file(GLOB json_schemas CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/schema/*.schema.json)
install(FILES ${json_schemas} DESTINATION ${CMAKE_INSTALL_DATADIR}/dyadctx/schema)
set(schema_folder ${PROJECT_SOURCE_DIR}/resources/schema)
install(FILES
  ${schema_folder}/catalog.xml
  ${schema_folder}/dyadctx-context.rnc
  ${schema_folder}/dyadctx-context.rng
  ${schema_folder}/dyadctx-context.xsd
  DESTINATION ${CMAKE_INSTALL_DATADIR}/dyadctx/schema)

if(WIN32)
  include(DyadctxPackage)
endif()

if(TARGET dyadctx_tool)
  install(TARGETS dyadctx_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/resources/man/dyadctx-context.5
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)
  if(TARGET dyadctx_surface)
    install(FILES ${PROJECT_BINARY_DIR}/man/dyadctx.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    set(completion ${PROJECT_BINARY_DIR}/completion)
    install(FILES ${completion}/dyadctx.bash RENAME dyadctx
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${completion}/dyadctx.zsh RENAME _dyadctx
      DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES ${completion}/dyadctx.fish
      DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  endif()
endif()
