// SPDX-License-Identifier: MIT
#include "support/ChildProcess.h"

#include "support/ChildEnvironment.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace dyadctx::test {

namespace {

constexpr uid_t OrdinaryUser = 65534;
constexpr int CannotStart = 126;

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
    Pipe() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        readEnd = ends[0];
        writeEnd = ends[1];
    }
    ~Pipe() {
        CloseRead();
        CloseWrite();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseRead() { Close(readEnd); }
    void CloseWrite() { Close(writeEnd); }

private:
    static void Close(int& end) {
        if (end >= 0)
            close(end);
        end = -1;
    }
};

std::vector<std::string> OwnEnvironment() {
    std::vector<std::string> entries;
    for (char** entry = environ; *entry != nullptr; ++entry)
        entries.emplace_back(*entry);
    return entries;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

[[noreturn]] void BecomeProgram(const ChildRun& run, char* const* arguments,
                                char* const* environment, const std::array<Pipe, 3>& pipes) {
    dup2(pipes[0].readEnd, 0);
    dup2(pipes[1].writeEnd, 1);
    dup2(pipes[2].writeEnd, 2);
    if (!run.workingFolder.empty() && chdir(run.workingFolder.c_str()) != 0)
        _exit(CannotStart);
    if (run.stackKilobytes > 0) {
        const rlim_t bytes = static_cast<rlim_t>(run.stackKilobytes) * 1024;
        const rlimit limit{bytes, bytes};
        if (setrlimit(RLIMIT_STACK, &limit) != 0)
            _exit(CannotStart);
    }
    if (run.asOrdinaryUser && geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(OrdinaryUser) != 0 || setuid(OrdinaryUser) != 0))
        _exit(CannotStart);
    execve(run.program.c_str(), arguments, environment);
    _exit(CannotStart);
}

// Reads what is there; false at the end of the stream.
bool ReadSome(int descriptor, std::string& text) {
    std::array<char, 65536> buffer;
    const ssize_t got = read(descriptor, buffer.data(), buffer.size());
    if (got > 0)
        text.append(buffer.data(), static_cast<std::size_t>(got));
    return got > 0 || (got < 0 && errno == EINTR);
}

// Reads both streams to their end; false when the time runs out first.
bool ReadStreams(int out, int err, int seconds, ChildResult& result) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    std::array<pollfd, 2> streams{{{out, POLLIN, 0}, {err, POLLIN, 0}}};
    std::array<std::string*, 2> texts{&result.standardOutput, &result.standardError};
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        poll(streams.data(), streams.size(), 200);
        for (std::size_t i = 0; i < streams.size(); ++i) {
            if (streams[i].fd >= 0 && streams[i].revents != 0 &&
                !ReadSome(streams[i].fd, *texts[i]))
                streams[i].fd = -1;
        }
    }
    return true;
}

} // namespace

ChildResult RunChild(const ChildRun& run) {
    std::vector<std::string> arguments{run.program};
    arguments.insert(arguments.end(), run.arguments.begin(), run.arguments.end());
    std::vector<std::string> environment = ChildEnvironment(run, OwnEnvironment());
    const std::vector<char*> argumentPointers = Pointers(arguments);
    const std::vector<char*> environmentPointers = Pointers(environment);
    std::array<Pipe, 3> pipes;
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no child process");
    if (child == 0)
        BecomeProgram(run, argumentPointers.data(), environmentPointers.data(), pipes);
    pipes[0].CloseRead();
    pipes[1].CloseWrite();
    pipes[2].CloseWrite();
    if (!run.standardInput.empty() &&
        write(pipes[0].writeEnd, run.standardInput.data(), run.standardInput.size()) < 0)
        throw std::runtime_error("the child does not read");
    pipes[0].CloseWrite();

    ChildResult result;
    result.timedOut = !ReadStreams(pipes[1].readEnd, pipes[2].readEnd, run.timeoutSeconds, result);
    if (result.timedOut)
        kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    result.status = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    return result;
}

} // namespace dyadctx::test
