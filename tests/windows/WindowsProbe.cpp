// SPDX-License-Identifier: MIT
// A program for tests of programs.
//
//   console PROGRAM ARGUMENTS...   runs the program on a console of its own; the console's output
//   page
//                                  and modes before and after it, on standard output
//
// Without one of these it stands for `dot`: the arguments and what comes on standard input.
#include <cstdio>
#include <string>

#include <windows.h>

namespace {

void PrintConsole(const char* when) {
    DWORD mode = 0;
    const HANDLE output = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    GetConsoleMode(output, &mode);
    CloseHandle(output);
    std::printf("%s: page %u, mode %lu\n", when, GetConsoleOutputCP(), mode);
}

int RunOnConsole(std::wstring line) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    FreeConsole();
    if (AllocConsole() == 0)
        return 77;
    if (SetConsoleOutputCP(437) == 0)
        return 77;
    const HANDLE output = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE,
                                      &inherited, OPEN_EXISTING, 0, nullptr);
    PrintConsole("before");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output;
    start.hStdError = output;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                       &started) == 0)
        return 78;
    WaitForSingleObject(started.hProcess, INFINITE);
    PrintConsole("after");
    return 0;
}

int ActAsDot(int argc, char** argv) {
    std::printf("<svg>");
    for (int i = 1; i < argc; ++i)
        std::printf("%s ", argv[i]);
    for (int letter = std::getchar(); letter != EOF; letter = std::getchar())
        std::putchar(letter);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3 || std::string(argv[1]) != "console")
        return ActAsDot(argc, argv);
    std::wstring line = GetCommandLineW();
    return RunOnConsole(line.substr(line.find(L"console") + 9));
}
