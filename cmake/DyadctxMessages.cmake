# SPDX-License-Identifier: MIT
# Message catalogs: gettext PO files, compiled to MO and embedded in the library.

find_program(DYADCTX_MSGFMT msgfmt)
find_program(DYADCTX_MSGEN msgen)
find_program(DYADCTX_MSGCMP msgcmp)
foreach(gettext_tool IN ITEMS DYADCTX_MSGFMT DYADCTX_MSGEN DYADCTX_MSGCMP)
  if(NOT ${gettext_tool})
    message(FATAL_ERROR
      "The gettext tools msgfmt, msgen and msgcmp are needed to build the message catalogs. "
      "Install them (Debian: package gettext) or set ${gettext_tool} to the program.")
  endif()
endforeach()

# dyadctx_compile_catalog(CATALOG LANGUAGE OUT_MO)
#   Compiles messages/CATALOG.LANGUAGE.po. The English file has its texts in msgid only; the others
#   must translate exactly its entries, or the build stops.
function(dyadctx_compile_catalog catalog language out_mo)
  set(po ${CMAKE_CURRENT_SOURCE_DIR}/messages/${catalog}.${language}.po)
  set(english_po ${CMAKE_CURRENT_SOURCE_DIR}/messages/${catalog}.en.po)
  set(full_english_po ${CMAKE_CURRENT_BINARY_DIR}/${catalog}.${language}.reference.po)
  set(mo ${CMAKE_CURRENT_BINARY_DIR}/${catalog}.${language}.mo)
  set(compare ${DYADCTX_MSGCMP} ${po} ${full_english_po})
  if(language STREQUAL "en")
    set(po ${full_english_po})
    set(compare ${CMAKE_COMMAND} -E true)
  endif()
  add_custom_command(
    OUTPUT ${mo}
    BYPRODUCTS ${full_english_po}
    COMMAND ${DYADCTX_MSGEN} --output-file=${full_english_po} ${english_po}
    COMMAND ${compare}
    COMMAND ${DYADCTX_MSGFMT} --check --output-file=${mo} ${po}
    DEPENDS ${english_po} ${CMAKE_CURRENT_SOURCE_DIR}/messages/${catalog}.${language}.po
    COMMENT "Compiling message catalog ${catalog}.${language}"
    VERBATIM)
  set(${out_mo} ${mo} PARENT_SCOPE)
endfunction()

# dyadctx_embed_catalogs(CATALOGS... LANGUAGES...)
#   Compiles each catalog in each language and adds all of them to the library as bytes.
function(dyadctx_embed_catalogs)
  cmake_parse_arguments(ARG "" "" "CATALOGS;LANGUAGES" ${ARGN})
  set(names)
  set(mo_files)
  foreach(catalog IN LISTS ARG_CATALOGS)
    foreach(language IN LISTS ARG_LANGUAGES)
      dyadctx_compile_catalog(${catalog} ${language} mo)
      list(APPEND names ${catalog}.${language})
      list(APPEND mo_files ${mo})
    endforeach()
  endforeach()
  set(script ${PROJECT_SOURCE_DIR}/cmake/Embed.cmake)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/EmbeddedCatalogs.cpp)
  add_custom_command(
    OUTPUT ${source}
    COMMAND ${CMAKE_COMMAND}
      -D "FILES=${mo_files}" -D "NAMES=${names}" -D SOURCE=${source}
      -D FUNCTION=EmbeddedCatalogs -D NAMESPACE=dyadctx -D HEADER=platform/detail/MessageTexts.h
      -P ${script}
    DEPENDS ${mo_files} ${script}
    COMMENT "Embedding the message catalogs"
    VERBATIM)
  # The library is a target of another folder, so it needs a target of this one to wait for.
  add_custom_target(dyadctx_messages DEPENDS ${source})
  add_dependencies(dyadctx_objects dyadctx_messages)
  target_sources(dyadctx_objects PRIVATE ${source})
endfunction()
