# Writes SOURCE, a C++ file that holds FOLDER/CATALOG.LANGUAGE.mo for each of LANGUAGES.

set(arrays "")
set(rows "")
foreach(language IN LISTS LANGUAGES)
  file(READ ${FOLDER}/${CATALOG}.${language}.mo bytes HEX)
  string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  string(APPEND arrays "constexpr unsigned char ${language}[] = {\n${bytes}};\n\n")
  string(APPEND rows "    {\"${language}\", ${language}},\n")
endforeach()

file(WRITE ${SOURCE} "// Generated from the message catalogs.
#include \"platform/detail/EmbeddedCatalogs.h\"

namespace dyadctx {

namespace {

${arrays}constexpr EmbeddedCatalog catalogs[] = {
${rows}};

} // namespace

std::string_view EmbeddedCatalogName() noexcept {
    return \"${CATALOG}\";
}

std::span<const EmbeddedCatalog> EmbeddedCatalogs() noexcept {
    return catalogs;
}

} // namespace dyadctx
")
