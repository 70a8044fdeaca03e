// SPDX-License-Identifier: MIT
// Where the path of a file to write leads.
#pragma once

#include "platform/detail/FileRefusal.h"

#include <optional>
#include <string>
#include <sys/stat.h>

namespace dyadctx {

struct FileTarget {
    // The path with links followed; its file need not exist.
    std::string path;
    bool exists = false;
    // The existing file's status.
    struct stat status {};
    // Set if the path means this open descriptor of the process instead of a file.
    std::optional<int> descriptor;
};

// With trailing separator; empty for a name without folder.
std::string FolderOf(const std::string& path);

bool IsSameFile(const struct stat& one, const struct stat& other) noexcept;

// Follows the path's links. Nothing if it was changed meanwhile: call again.
std::optional<Refusal> LookAt(const std::string& path, FileTarget& target);

} // namespace dyadctx
