// SPDX-License-Identifier: MIT
#include "support/TemporaryFolder.h"

#include <atomic>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace dyadctx::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        path_ = fs::temp_directory_path() / ("dyadctx-test-" + std::to_string(random()));
        if (fs::create_directory(path_))
            return;
    }
    throw std::runtime_error("no temporary folder could be made");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::Write(const std::string& name, std::string_view content) const {
    const fs::path file = (path_ / FromUtf8(name)).make_preferred();
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + Utf8(file));
    return Utf8(file);
}

std::string TemporaryFolder::Read(const std::string& name) const {
    std::ifstream in(path_ / FromUtf8(name), std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + PathOf(name));
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

} // namespace dyadctx::test
