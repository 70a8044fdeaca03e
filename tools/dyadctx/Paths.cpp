// SPDX-License-Identifier: MIT
#include "tools/dyadctx/Paths.h"

#include <algorithm>

namespace dyadctx::tool {

std::filesystem::path NativePath(const std::string& path) {
    const std::string form = InSystemForm(path);
    // As UTF-8, whatever the text of a narrow string is on this system.
    return std::u8string(form.begin(), form.end());
}

std::string TextOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string InSystemForm(const std::string& path) {
    constexpr auto separator = static_cast<char>(std::filesystem::path::preferred_separator);
    std::string form = path;
    std::replace(form.begin(), form.end(), '\\', separator);
    std::replace(form.begin(), form.end(), '/', separator);
    return form;
}

} // namespace dyadctx::tool
