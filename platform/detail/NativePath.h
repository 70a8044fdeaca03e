// SPDX-License-Identifier: MIT
// Converts paths for the system's file calls.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dyadctx {

// Both `\` and `/` separate folders in paths given to the library.
inline bool IsSeparator(char character) noexcept {
    return character == '/' || character == '\\';
}

// The one that people of this system expect.
char SystemSeparator() noexcept;

// The path, still UTF-8, with this system's separators. Nothing if it holds a zero byte: cut there,
// it would name another file. Every path passes here on its way to a file call.
std::optional<std::string> NativePath(std::string_view path);

} // namespace dyadctx
