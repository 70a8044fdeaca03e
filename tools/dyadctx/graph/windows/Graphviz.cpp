// SPDX-License-Identifier: MIT
#include "tools/dyadctx/graph/Graphviz.h"

#include "tools/dyadctx/Words.h"

#include <array>
#include <string>
#include <system_error>

#include <windows.h>

namespace dyadctx::tool {

namespace {

class Handle {
public:
    explicit Handle(HANDLE value) noexcept : value_(value) {}
    ~Handle() {
        if (IsOpen())
            CloseHandle(value_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool IsOpen() const noexcept { return value_ != nullptr && value_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const noexcept { return value_; }

private:
    HANDLE value_;
};

std::string SystemFault(const char* key) {
    return Words(key) + ": " + std::system_category().message(static_cast<int>(GetLastError()));
}

// For this process and those it starts; gone as soon as the last of them has closed it.
HANDLE MakeTemporaryFile() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    std::array<wchar_t, MAX_PATH + 1> name{};
    if (GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) == 0 ||
        GetTempFileNameW(folder.data(), L"dya", 0, name.data()) == 0)
        return INVALID_HANDLE_VALUE;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(name.data(), GENERIC_READ | GENERIC_WRITE | DELETE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                       CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE,
                       nullptr);
}

bool Rewind(const Handle& file) {
    return SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN) != 0;
}

bool Put(const Handle& file, const std::string& text) {
    DWORD written = 0;
    return WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
               0 &&
           written == text.size() && Rewind(file);
}

std::string ContentOf(const Handle& file) {
    std::string content;
    std::array<char, 16384> buffer{};
    DWORD got = 0;
    if (!Rewind(file))
        return content;
    while (ReadFile(file.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr) !=
               0 &&
           got > 0)
        content.append(buffer.data(), got);
    return content;
}

// The program where PATH has it: never that of the current folder. Empty when there is none.
std::wstring FindDot() {
    std::wstring folders(GetEnvironmentVariableW(L"PATH", nullptr, 0), L'\0');
    if (folders.empty())
        return {};
    folders.resize(
        GetEnvironmentVariableW(L"PATH", folders.data(), static_cast<DWORD>(folders.size())));
    std::wstring found(SearchPathW(folders.c_str(), L"dot", L".exe", 0, nullptr, nullptr), L'\0');
    const DWORD length = SearchPathW(folders.c_str(), L"dot", L".exe",
                                     static_cast<DWORD>(found.size()), found.data(), nullptr);
    found.resize(length < found.size() ? length : 0);
    return found;
}

// Starts `dot -Tsvg` with these files as its standard input and output; null when that fails.
HANDLE Start(const std::wstring& program, const Handle& input, const Handle& output) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.Get();
    start.hStdOutput = output.Get();
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    std::wstring line = L"dot -Tsvg";
    PROCESS_INFORMATION started{};
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                       &start, &started) == 0)
        return nullptr;
    CloseHandle(started.hThread);
    return started.hProcess;
}

bool EndsWell(const Handle& process) {
    DWORD status = 1;
    return WaitForSingleObject(process.Get(), INFINITE) == WAIT_OBJECT_0 &&
           GetExitCodeProcess(process.Get(), &status) != 0 && status == 0;
}

} // namespace

// Files instead of pipes: neither side ever waits for the other.
GraphvizAnswer DrawWithGraphviz(const std::string& dot) {
    const std::wstring program = FindDot();
    if (program.empty())
        return {"", Words("graphviz.missing")};
    const Handle input(MakeTemporaryFile());
    const Handle output(MakeTemporaryFile());
    if (!input.IsOpen() || !output.IsOpen())
        return {"", SystemFault("graphviz.no-room")};
    if (!Put(input, dot))
        return {"", SystemFault("graphviz.not-written")};
    const Handle process(Start(program, input, output));
    if (!process.IsOpen())
        return {"", SystemFault("graphviz.not-started")};
    if (!EndsWell(process))
        return {"", Words("graphviz.failed")};
    return {ContentOf(output), ""};
}

} // namespace dyadctx::tool
