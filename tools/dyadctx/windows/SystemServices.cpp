// SPDX-License-Identifier: MIT
#include "tools/dyadctx/SystemServices.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace dyadctx::tool {

namespace {

constexpr std::array<DWORD, 2> OutputStreams{STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};

std::wstring Wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string Narrow(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

[[noreturn]] void ThrowSystemError() {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
}

// Without this, each line end becomes two characters.
void MakeBinary(std::FILE* stream) {
    _setmode(_fileno(stream), _O_BINARY);
}

struct SearchCloser {
    void operator()(HANDLE search) const noexcept { FindClose(search); }
};

// No file has one of these in its name.
bool HasWildcard(const std::string& word) {
    return word.find_first_of("*?") != std::string::npos;
}

} // namespace

// Those of `main` are in the code page of the user, which cannot name every file.
std::vector<std::string> ArgumentsOf(int, char**) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    if (words == nullptr)
        ThrowSystemError();
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Narrow(words.get()[i]));
    return arguments;
}

std::vector<std::string> FilesNamed(const std::string& word) {
    if (!HasWildcard(word))
        return {word};
    const std::string folder = word.substr(0, word.find_last_of("/\\:") + 1);
    WIN32_FIND_DATAW entry;
    const HANDLE first = FindFirstFileW(Wide(word).c_str(), &entry);
    if (first == INVALID_HANDLE_VALUE)
        return {word};
    const std::unique_ptr<void, SearchCloser> search(first);
    std::vector<std::string> files;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            files.push_back(folder + Narrow(entry.cFileName));
    } while (FindNextFileW(search.get(), &entry) != 0);
    std::sort(files.begin(), files.end());
    return files.empty() ? std::vector{word} : files;
}

Console::Console() noexcept {
    MakeBinary(stdout);
    MakeBinary(stderr);
    former_.page = GetConsoleOutputCP();
    if (former_.page != 0)
        SetConsoleOutputCP(CP_UTF8);
    for (std::size_t i = 0; i < OutputStreams.size(); ++i) {
        const HANDLE stream = GetStdHandle(OutputStreams[i]);
        if (GetConsoleMode(stream, &former_.modes[i]) != 0)
            SetConsoleMode(stream, former_.modes[i] | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

Console::~Console() {
    for (std::size_t i = 0; i < OutputStreams.size(); ++i) {
        if (former_.modes[i] != 0)
            SetConsoleMode(GetStdHandle(OutputStreams[i]), former_.modes[i]);
    }
    if (former_.page != 0)
        SetConsoleOutputCP(former_.page);
}

void SetEnvironment(const std::string& name, const std::string& value) {
    if (SetEnvironmentVariableW(Wide(name).c_str(), Wide(value).c_str()) == 0)
        ThrowSystemError();
}

std::vector<std::string> EnvironmentNames() {
    const std::unique_ptr<wchar_t, decltype(&FreeEnvironmentStringsW)> block(
        GetEnvironmentStringsW(), FreeEnvironmentStringsW);
    std::vector<std::string> names;
    for (const wchar_t* entry = block.get(); entry != nullptr && *entry != L'\0';) {
        const std::wstring_view text = entry;
        // A name may begin with "=".
        names.push_back(Narrow(text.substr(0, text.find(L'=', 1))));
        entry += text.size() + 1;
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::FILE* TakeStandardOutput() {
    const int answer = _dup(1);
    std::FILE* stream = answer < 0 ? nullptr : _fdopen(answer, "wb");
    if (stream == nullptr)
        return stdout;
    MakeBinary(stream);
    _dup2(2, 1);
    MakeBinary(stdout);
    return stream;
}

std::string ReadStandardInput() {
    // Otherwise line ends are changed, and a control character ends the text.
    _setmode(0, _O_BINARY);
    std::string text;
    std::array<char, 65536> buffer;
    for (;;) {
        const int got = _read(0, buffer.data(), static_cast<unsigned int>(buffer.size()));
        if (got < 0)
            throw std::system_error(errno, std::generic_category());
        if (got == 0)
            return text;
        text.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

bool IsTerminal(std::FILE* stream) {
    DWORD mode = 0;
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    return GetConsoleMode(handle, &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

} // namespace dyadctx::tool
