// SPDX-License-Identifier: MIT
// A folder of a test's own that goes with the test.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace dyadctx::test {

inline const std::string Separator(1,
                                   static_cast<char>(std::filesystem::path::preferred_separator));

inline std::filesystem::path FromUtf8(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

inline std::string Utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    // Names and paths are UTF-8 on every system, paths with its separators.
    std::string PathOf(const std::string& name) const {
        return Utf8((path_ / FromUtf8(name)).make_preferred());
    }
    // Writes a file (and the folders it lies in) and returns its path.
    std::string Write(const std::string& name, std::string_view content) const;
    std::string Read(const std::string& name) const;

private:
    std::filesystem::path path_;
};

} // namespace dyadctx::test
