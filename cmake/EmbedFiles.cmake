# Writes SOURCE, a C++ file that holds each of FILES as bytes under its NAME of NAMES.

set(arrays "")
set(rows "")
set(number 0)
foreach(file name IN ZIP_LISTS FILES NAMES)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char file${number}[] = {\n${bytes}};\n\n")
  string(APPEND rows "    {\"${name}\", {file${number}, sizeof file${number}}},\n")
  math(EXPR number "${number} + 1")
endforeach()

file(WRITE ${SOURCE} "// Generated from the JSON schemas.
#include \"tools/dyadctx/JsonSchemas.h\"

namespace dyadctx::tool {

namespace {

${arrays}constexpr JsonSchema schemas[] = {
${rows}};

} // namespace

std::span<const JsonSchema> JsonSchemas() noexcept {
    return schemas;
}

} // namespace dyadctx::tool
")
