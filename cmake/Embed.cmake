# SPDX-License-Identifier: MIT
# Writes SOURCE, a C++ file in which FUNCTION of HEADER, in NAMESPACE, returns each of FILES as bytes
# under its name of NAMES. The header has the type EmbeddedFile for one.

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

file(WRITE ${SOURCE} "// Generated from files of the project.
#include \"${HEADER}\"

namespace ${NAMESPACE} {

namespace {

${arrays}constexpr EmbeddedFile files[] = {
${rows}};

} // namespace

std::span<const EmbeddedFile> ${FUNCTION}() noexcept {
    return files;
}

} // namespace ${NAMESPACE}
")
