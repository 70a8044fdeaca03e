# SPDX-License-Identifier: MIT
# Expat: the installed one, or built from its source, where a system has none to link into a library.
#   DYADCTX_EXPAT_SOURCE   the folder with lib/expat.h

set(DYADCTX_EXPAT_SOURCE "" CACHE PATH "Source of Expat to build in; empty: the installed one")
if(TARGET EXPAT::EXPAT)
  return()
endif()
if(NOT DYADCTX_EXPAT_SOURCE)
  find_package(EXPAT REQUIRED)
  return()
endif()

enable_language(C)
file(WRITE ${PROJECT_BINARY_DIR}/expat/expat_config.h "#define BYTEORDER 1234
#define XML_CONTEXT_BYTES 1024
#define XML_DTD 1
#define XML_GE 1
#define XML_NS 1
")
add_library(dyadctx_expat STATIC
  ${DYADCTX_EXPAT_SOURCE}/lib/xmlparse.c
  ${DYADCTX_EXPAT_SOURCE}/lib/xmlrole.c
  ${DYADCTX_EXPAT_SOURCE}/lib/xmltok.c)
target_include_directories(dyadctx_expat PRIVATE ${PROJECT_BINARY_DIR}/expat)
target_include_directories(dyadctx_expat SYSTEM INTERFACE ${DYADCTX_EXPAT_SOURCE}/lib)
# Nothing of it is exported by the library it is linked into.
target_compile_definitions(dyadctx_expat PUBLIC XML_STATIC)
set_target_properties(dyadctx_expat PROPERTIES
  C_VISIBILITY_PRESET hidden
  POSITION_INDEPENDENT_CODE ON)
add_library(EXPAT::EXPAT ALIAS dyadctx_expat)
