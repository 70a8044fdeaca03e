// SPDX-License-Identifier: MIT
#include "tools/dyadctx/SystemServices.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace dyadctx::tool {

namespace {

[[noreturn]] void ThrowSystemError() {
    throw std::system_error(errno, std::generic_category());
}

} // namespace

std::vector<std::string> ArgumentsOf(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

// The shell has done it.
std::vector<std::string> FilesNamed(const std::string& word) {
    return {word};
}

Console::Console() noexcept = default;

Console::~Console() = default;

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

std::string ReadStandardInput() {
    std::string text;
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t got = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (got < 0 && errno != EINTR)
            ThrowSystemError();
        if (got == 0)
            return text;
        if (got > 0)
            text.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

} // namespace dyadctx::tool
