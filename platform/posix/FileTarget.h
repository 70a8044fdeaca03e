// Where the path of a file to write leads.
#pragma once

#include "platform/detail/FileRefusal.h"

#include <optional>
#include <string>
#include <sys/stat.h>

namespace dyadctx {

struct FileTarget {
    // The file behind the links; it need not exist.
    std::string path;
    bool exists = false;
    // Of the existing file.
    struct stat status {};
    // The path means this open descriptor of the process, and no file.
    std::optional<int> descriptor;
};

// With the separator at its end; empty for a name without folder.
std::string FolderOf(const std::string& path);

bool IsSameFile(const struct stat& one, const struct stat& other) noexcept;

// Follows the path's links. Nothing when someone else changed what is there meanwhile: look again.
std::optional<Refusal> LookAt(const std::string& path, FileTarget& target);

} // namespace dyadctx
