// SPDX-License-Identifier: MIT
#include "platform/detail/NativePath.h"

#include <algorithm>
#include <filesystem>

namespace dyadctx {

char SystemSeparator() noexcept {
    return static_cast<char>(std::filesystem::path::preferred_separator);
}

std::optional<std::string> NativePath(std::string_view path) {
    if (path.find('\0') != std::string_view::npos)
        return std::nullopt;
    std::string native(path);
    std::replace_if(native.begin(), native.end(), IsSeparator, SystemSeparator());
    return native;
}

} // namespace dyadctx
