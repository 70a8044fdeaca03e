// Puts a whole new content into the place of a file.
#pragma once

#include "platform/VELResult.h"
#include "platform/VELUnicodeString.h"

#include <string_view>

namespace dyadctx {

// Makes `content` the whole content of the file, which may be new. At every moment, also when the
// process or the machine dies, the file holds either what it held before or all of `content`.
//
// An existing file keeps its mode and owner. Behind a symbolic link the file it leads to is
// replaced, and the link stays. E_FAIL, with the former file untouched and nothing left over, when
// something other than a regular file stands there, when the file is write-protected or its owner
// cannot be kept, and when any step of the writing fails. Folders are not created.
VELResult ReplaceFile(const VELUnicodeString& path, std::string_view content) noexcept;

} // namespace dyadctx
