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

namespace dyadctx::tool {

namespace {

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

} // namespace

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
    _dup2(2, 1);
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
    return _isatty(_fileno(stream)) != 0;
}

std::filesystem::path NativePath(const std::string& path) {
    return Wide(path);
}

} // namespace dyadctx::tool
