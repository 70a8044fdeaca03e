#include "tools/dyadctx/SystemServices.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace dyadctx::tool {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void ThrowSystemError() {
    throw std::system_error(errno, std::generic_category());
}

// A file beside its target that goes again unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& target)
        : path_((target.parent_path() / ".dyadctx-XXXXXX").string()) {
        descriptor_ = mkstemp(path_.data());
        if (descriptor_ < 0)
            ThrowSystemError();
    }
    ~TemporaryFile() {
        Close();
        if (!path_.empty())
            unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void SetMode(mode_t mode) {
        if (fchmod(descriptor_, mode) != 0)
            ThrowSystemError();
    }

    void Write(const std::string& content) {
        std::size_t done = 0;
        while (done < content.size()) {
            const ssize_t written =
                write(descriptor_, content.data() + done, content.size() - done);
            if (written < 0 && errno != EINTR)
                ThrowSystemError();
            if (written > 0)
                done += static_cast<std::size_t>(written);
        }
        if (fsync(descriptor_) != 0)
            ThrowSystemError();
    }

    void MoveTo(const fs::path& target) {
        if (Close() != 0 || rename(path_.c_str(), target.c_str()) != 0)
            ThrowSystemError();
        path_.clear();
    }

private:
    int Close() {
        const int result = descriptor_ >= 0 ? close(descriptor_) : 0;
        descriptor_ = -1;
        return result;
    }

    std::string path_;
    int descriptor_ = -1;
};

mode_t ModeOfNewFile() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// The mode of the file at `target`, or that of a new file.
mode_t ModeFor(const fs::path& target) {
    struct stat info {};
    if (stat(target.c_str(), &info) != 0) {
        if (errno != ENOENT)
            ThrowSystemError();
        return ModeOfNewFile();
    }
    if (!S_ISREG(info.st_mode))
        throw std::runtime_error("it is not a regular file");
    return info.st_mode & 07777;
}

// A power cut may otherwise undo the renaming. The file itself is whole either way.
void FlushFolder(const fs::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

void SetEnvironment(const std::string& name, const std::string& value) {
    if (setenv(name.c_str(), value.c_str(), 1) != 0)
        ThrowSystemError();
}

std::vector<std::string> EnvironmentNames() {
    std::vector<std::string> names;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        names.emplace_back(text.substr(0, text.find('=')));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::FILE* TakeStandardOutput() {
    const int answer = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (answer < 0)
        return stdout;
    std::FILE* stream = fdopen(answer, "w");
    if (stream == nullptr) {
        close(answer);
        return stdout;
    }
    dup2(STDERR_FILENO, STDOUT_FILENO);
    return stream;
}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

void ReplaceFile(const std::string& path, const std::string& content) {
    const fs::path target = fs::weakly_canonical(fs::absolute(path));
    fs::create_directories(target.parent_path());
    const mode_t mode = ModeFor(target);
    TemporaryFile file(target);
    file.SetMode(mode);
    file.Write(content);
    file.MoveTo(target);
    FlushFolder(target.parent_path());
}

} // namespace dyadctx::tool
