// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/Graphviz.h"

#include "tools/dyadctx/Words.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace dyadctx::tool {

namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

std::string SystemFault(const char* key, int code) {
    return Words(key) + ": " + std::strerror(code);
}

// Starts `dot -Tsvg` with these descriptors as its standard input and output; 0 or an error number.
int Start(int input, int output, pid_t& child) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    std::string program = "dot";
    std::string option = "-Tsvg";
    const std::array<char*, 3> arguments{program.data(), option.data(), nullptr};
    const int code =
        posix_spawnp(&child, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return code;
}

bool EndsWell(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return false;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string ContentOf(std::FILE* file) {
    std::string content;
    std::array<char, 16384> buffer{};
    std::rewind(file);
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), file))
        content.append(buffer.data(), size);
    return content;
}

// Removed as soon as it is closed. Other programs do not get it by accident.
File MakeTemporaryFile() {
    File file(std::tmpfile());
    if (file != nullptr)
        fcntl(fileno(file.get()), F_SETFD, FD_CLOEXEC);
    return file;
}

} // namespace

// Files instead of pipes: neither side ever waits for the other.
GraphvizAnswer DrawWithGraphviz(const std::string& dot) {
    const File input = MakeTemporaryFile();
    const File output = MakeTemporaryFile();
    if (input == nullptr || output == nullptr)
        return {"", SystemFault("graphviz.no-room", errno)};
    if (std::fwrite(dot.data(), 1, dot.size(), input.get()) != dot.size() ||
        std::fflush(input.get()) != 0)
        return {"", SystemFault("graphviz.not-written", errno)};
    std::rewind(input.get());
    pid_t child = 0;
    const int code = Start(fileno(input.get()), fileno(output.get()), child);
    if (code == ENOENT)
        return {"", Words("graphviz.missing")};
    if (code != 0)
        return {"", SystemFault("graphviz.not-started", code)};
    if (!EndsWell(child))
        return {"", Words("graphviz.failed")};
    return {ContentOf(output.get()), ""};
}

} // namespace dyadctx::tool
