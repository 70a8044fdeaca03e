# Writes SOURCE, a C++ file that holds FOLDER/CATALOG.LANGUAGE.mo for each of CATALOGS and LANGUAGES.

set(arrays "")
set(rows "")
foreach(catalog IN LISTS CATALOGS)
  foreach(language IN LISTS LANGUAGES)
    file(READ ${FOLDER}/${catalog}.${language}.mo bytes HEX)
    string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    set(array ${catalog}_${language})
    string(APPEND arrays "constexpr unsigned char ${array}[] = {\n${bytes}};\n\n")
    string(APPEND rows "    {\"${catalog}\", \"${language}\", ${array}},\n")
  endforeach()
endforeach()

file(WRITE ${SOURCE} "// Generated from the message catalogs.
#include \"platform/detail/EmbeddedCatalogs.h\"

namespace dyadctx {

namespace {

${arrays}constexpr EmbeddedCatalog catalogs[] = {
${rows}};

} // namespace

std::span<const EmbeddedCatalog> EmbeddedCatalogs() noexcept {
    return catalogs;
}

} // namespace dyadctx
")
