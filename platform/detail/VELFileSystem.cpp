// SPDX-License-Identifier: MIT
#include "platform/VELFileSystem.h"
#include "platform/detail/NativePath.h"

#include <exception>
#include <string_view>
#include <utility>

namespace {

// The length in bytes of the root at the start of the path: "/", or "C:\".
std::size_t RootLength(std::string_view path) {
    const bool hasDrive = path.size() > 2 && path[1] == ':';
    const std::size_t separator = hasDrive ? 2 : 0;
    return dyadctx::IsSeparator(path[separator]) ? separator + 1 : 0;
}

std::string_view FolderPart(std::string_view path, std::size_t lastSeparator) {
    std::size_t length = lastSeparator + 1;
    const std::size_t root = RootLength(path);
    while (length > root && dyadctx::IsSeparator(path[length - 1]))
        --length;
    return path.substr(0, length);
}

} // namespace

void VELSplitPath(const VELUnicodeString& path, VELUnicodeString& folder, VELUnicodeString& name) {
    try {
        const std::string_view whole = path.AsView();
        const std::size_t separator = whole.find_last_of("/\\");
        const bool hasFolder = separator != std::string_view::npos;
        // Built before either is assigned: both may be the path itself.
        VELUnicodeString newFolder(hasFolder ? FolderPart(whole, separator) : std::string_view());
        VELUnicodeString newName(hasFolder ? whole.substr(separator + 1) : whole);
        folder = std::move(newFolder);
        name = std::move(newName);
    } catch (const std::exception&) {
        // Without memory both are empty; callers refuse an empty name.
        folder = VELUnicodeString();
        name = VELUnicodeString();
    }
}
