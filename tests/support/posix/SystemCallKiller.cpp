// SPDX-License-Identifier: MIT
#include "support/SystemCallKiller.h"

#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace dyadctx::test {

namespace {

constexpr int CannotTrace = 125;
constexpr int CannotStart = 126;
// What a stop at a system call adds to the number of its signal.
constexpr int CallStop = SIGTRAP | 0x80;

[[noreturn]] void BecomeTraced(const std::string& program, char* const* arguments) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(CannotTrace);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), 1);
    execv(program.c_str(), arguments);
    _exit(CannotStart);
}

// Goes on to the next stop of the program; `status` is then what happened.
bool RunToNextStop(pid_t child, int signal, int& status) {
    return ptrace(PTRACE_SYSCALL, child, nullptr, signal) == 0 &&
           waitpid(child, &status, 0) == child;
}

bool IsEntry(const __ptrace_syscall_info& info) {
    return info.op == PTRACE_SYSCALL_INFO_ENTRY;
}

bool IsWriteToOutput(const __ptrace_syscall_info& info) {
    return info.entry.nr == SYS_write && info.entry.args[0] == 1;
}

void Kill(pid_t child) {
    int status = 0;
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
}

KilledRun Outcome(int status) {
    if (!WIFEXITED(status))
        return KilledRun::Failed;
    switch (WEXITSTATUS(status)) {
    case 0:
        return KilledRun::Ended;
    case CannotTrace:
        return KilledRun::NotPossible;
    default:
        return KilledRun::Failed;
    }
}

KilledRun Follow(pid_t child, int fatalCall) {
    int call = 0;
    bool isCounting = false;
    int signal = 0;
    int status = 0;
    while (RunToNextStop(child, signal, status)) {
        signal = 0;
        if (!WIFSTOPPED(status))
            return Outcome(status);
        if (WSTOPSIG(status) != CallStop) {
            signal = WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
            continue;
        }
        __ptrace_syscall_info info{};
        if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) <= 0)
            break;
        if (!IsEntry(info))
            continue;
        if (isCounting && ++call == fatalCall) {
            Kill(child);
            return KilledRun::Killed;
        }
        isCounting = isCounting || IsWriteToOutput(info);
    }
    Kill(child);
    return KilledRun::NotPossible;
}

} // namespace

KilledRun RunAndKillAt(int call, const std::string& program,
                       const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no child process");
    if (child == 0)
        BecomeTraced(program, pointers.data());
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        return Outcome(status);
    if (ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) != 0) {
        Kill(child);
        return KilledRun::NotPossible;
    }
    return Follow(child, call);
}

} // namespace dyadctx::test
