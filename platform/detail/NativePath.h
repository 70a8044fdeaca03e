// Paths on their way to the system's file calls.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dyadctx {

// `\` and `/` both separate folders in the paths the library is given.
inline bool IsSeparator(char character) noexcept {
    return character == '/' || character == '\\';
}

// The path, still UTF-8, with the separators of this system. Nothing for a path that no file call
// can name because it holds a zero byte: cut there, it would name another file. Every path passes
// here, and only here, on its way to a file call.
std::optional<std::string> NativePath(std::string_view path);

} // namespace dyadctx
