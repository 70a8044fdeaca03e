// SPDX-License-Identifier: MIT
#include "support/SystemCalls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <map>
#include <stdexcept>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace dyadctx::test {

namespace {

#if defined(SYS_rename)
constexpr long RenameCall = SYS_rename;
#else
constexpr long RenameCall = SYS_renameat;
#endif

constexpr int StartOfCounting = SIGUSR1;
constexpr int SystemCallStop = SIGTRAP | 0x80;

long NumberOf(const std::string& name) {
    static const std::map<std::string, long> numbers{{"write", SYS_write},   {"fsync", SYS_fsync},
                                                     {"fchmod", SYS_fchmod}, {"fchown", SYS_fchown},
                                                     {"rename", RenameCall}, {"openat", SYS_openat},
                                                     {"read", SYS_read}};
    return numbers.at(name);
}

[[noreturn]] void BecomeTraced(const std::string& program,
                               const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    // The leak check of an instrumented program does not work while it is traced.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
        execv(program.c_str(), pointers.data());
    _exit(CannotTrace);
}

// Lets the child run on with `request` until it stops; the signal it stopped with, or 0 when it
// ended with `status`.
int RunOn(pid_t child, decltype(PTRACE_CONT) request, int& status) {
    ptrace(request, child, nullptr, nullptr);
    if (waitpid(child, &status, 0) != child)
        throw std::runtime_error("the traced program is lost");
    return WIFSTOPPED(status) ? WSTOPSIG(status) : 0;
}

int ExitStatus(int status) {
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

bool RefuseSystemCall(const std::string& name) {
    std::array<sock_filter, 4> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned int>(NumberOf(name)), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EIO),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

void LimitFileSize(unsigned long bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        throw std::runtime_error("the size of files cannot be limited");
}

void CountSystemCallsFromHere() {
    std::raise(StartOfCounting);
}

std::optional<int> KillAtSystemCall(const std::string& program,
                                    const std::vector<std::string>& arguments, int number) {
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no child process");
    if (child == 0)
        BecomeTraced(program, arguments);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        return ExitStatus(status);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    for (int stop = -1; stop != StartOfCounting;) {
        stop = RunOn(child, PTRACE_CONT, status);
        if (stop == 0)
            return ExitStatus(status);
    }
    // The child is inside the call that raised the signal: its end comes first.
    for (int stops = 0; stops < 2 * number;) {
        const int stop = RunOn(child, PTRACE_SYSCALL, status);
        if (stop == 0)
            return ExitStatus(status);
        stops += stop == SystemCallStop ? 1 : 0;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return std::nullopt;
}

} // namespace dyadctx::test
