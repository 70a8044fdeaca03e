# SPDX-License-Identifier: MIT
# The ZIP package for Windows (`cpack`): what is installed, and what a folder of its own needs beside it.

install(FILES ${dyadctx_runtime_libraries} DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples DESTINATION .
  PATTERN CMakeLists.txt EXCLUDE)
# Texts to begin other languages with, for VELMessageCatalogPath.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/messages
  DESTINATION ${CMAKE_INSTALL_DATADIR}/dyadctx)
# What is linked into the DLL and the tool, or lies beside them.
if(DYADCTX_LICENCES)
  install(DIRECTORY ${DYADCTX_LICENCES}/ DESTINATION licences)
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME dyadctx-${PROJECT_VERSION}-windows-x64)
set(CPACK_STRIP_FILES ON)
include(CPack)
