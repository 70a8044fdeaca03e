// A folder of a test's own that goes with the test.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace dyadctx::test {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string PathOf(const std::string& name) const { return (path_ / name).string(); }
    // Writes a file (and the folders it lies in) and returns its path.
    std::string Write(const std::string& name, std::string_view content) const;
    std::string Read(const std::string& name) const;

private:
    std::filesystem::path path_;
};

} // namespace dyadctx::test
