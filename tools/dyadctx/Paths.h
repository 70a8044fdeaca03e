// SPDX-License-Identifier: MIT
// Paths: UTF-8 in the tool and the library, a type of their own for the standard library.
#pragma once

#include <filesystem>
#include <string>

namespace dyadctx::tool {

// A path as the library reads it, in which both separators separate. Every path passes here on its
// way to the standard library.
std::filesystem::path NativePath(const std::string& path);

// The way back.
std::string TextOf(const std::filesystem::path& path);

// With this system's separator, for other programs.
std::string InSystemForm(const std::string& path);

} // namespace dyadctx::tool
