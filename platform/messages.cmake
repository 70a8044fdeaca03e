# SPDX-License-Identifier: MIT
# Messages and the platform trace.

target_sources(dyadctx_objects PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/detail/MessageLanguage.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/detail/MessagePlaceholders.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/detail/MessageTexts.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/detail/MoCatalog.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/detail/VELDyadTrace.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/detail/VELMsgCatalog.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/${system}/TraceOutput.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/${system}/UserDisplayLanguage.cpp)

# The printf family of the C standard instead of the one of the old Windows runtime.
if(MINGW)
  target_compile_definitions(dyadctx_objects PRIVATE __USE_MINGW_ANSI_STDIO=1)
endif()
