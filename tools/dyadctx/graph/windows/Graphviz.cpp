#include "tools/dyadctx/graph/Graphviz.h"
#include "tools/dyadctx/Words.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <windows.h>

namespace dyadctx::tool {

namespace {

namespace fs = std::filesystem;

// A file of its own that goes at the end of the scope.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& content) {
        std::array<wchar_t, MAX_PATH> name{};
        const fs::path folder = fs::temp_directory_path();
        if (GetTempFileNameW(folder.c_str(), L"dya", 0, name.data()) == 0)
            return;
        path_ = name.data();
        std::ofstream file(path_, std::ios::binary | std::ios::trunc);
        file << content;
        file.close();
        isWritten_ = static_cast<bool>(file);
    }
    ~TemporaryFile() {
        std::error_code ignored;
        if (!path_.empty())
            fs::remove(path_, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const fs::path& Path() const { return path_; }
    bool IsWritten() const { return isWritten_; }

private:
    fs::path path_;
    bool isWritten_ = false;
};

} // namespace

GraphvizAnswer DrawWithGraphviz(const std::string& dot) {
    const TemporaryFile input(dot);
    if (!input.IsWritten())
        return {"", Words("graphviz.not-written")};
    std::FILE* pipe = _wpopen((L"dot -Tsvg \"" + input.Path().wstring() + L"\"").c_str(), L"rb");
    if (pipe == nullptr)
        return {"", Words("graphviz.not-started")};
    std::string svg;
    std::array<char, 16384> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe))
        svg.append(buffer.data(), size);
    if (_pclose(pipe) != 0 || svg.empty())
        return {"", Words("graphviz.missing-or-failed")};
    return {svg, ""};
}

} // namespace dyadctx::tool
