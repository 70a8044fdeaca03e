// SPDX-License-Identifier: MIT
#include "platform/VELEnvironment.h"

#include "platform/windows/WindowsApi.h"

#include <array>
#include <exception>

namespace {

// The variable's value; nothing if unset. Asks the system, as the runtime's copy loses variables
// that are set and empty.
std::optional<std::wstring> ReadVariable(const std::wstring& name) {
    std::wstring value(256, L'\0');
    for (;;) {
        SetLastError(ERROR_SUCCESS);
        const DWORD room = static_cast<DWORD>(value.size());
        const DWORD length = GetEnvironmentVariableW(name.c_str(), value.data(), room);
        // 0 is also the length of an empty value; only the error distinguishes them.
        if (length == 0 && GetLastError() != ERROR_SUCCESS)
            return std::nullopt;
        if (length < room) {
            value.resize(length);
            return value;
        }
        value.resize(length);
    }
}

// Where the value is short, as most are: no memory is needed that might be lacking. Nothing else.
const char* ShortValue(const wchar_t* name, bool& isLong) noexcept {
    constexpr std::size_t longest = 2048;
    std::array<wchar_t, longest> value;
    thread_local std::array<char, 3 * longest> answer;
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableW(name, value.data(), longest);
    isLong = length >= longest;
    if (isLong || (length == 0 && GetLastError() != ERROR_SUCCESS))
        return nullptr;
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, value.data(), static_cast<int>(length), answer.data(),
                            static_cast<int>(answer.size()) - 1, nullptr, nullptr);
    answer[static_cast<std::size_t>(size)] = '\0';
    return answer.data();
}

} // namespace

const char* VELGetEnv(const char* name) {
    // Long enough for any name of the library's; longer ones are not set.
    std::array<wchar_t, 256> wideName;
    if (name == nullptr ||
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name, -1, wideName.data(),
                            static_cast<int>(wideName.size())) <= 1)
        return nullptr;
    bool isLong = false;
    const char* value = ShortValue(wideName.data(), isLong);
    if (!isLong)
        return value;
    try {
        thread_local std::string answer;
        const auto longValue = ReadVariable(wideName.data());
        answer = dyadctx::Utf8Text(longValue.value_or(std::wstring()));
        return longValue ? answer.c_str() : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}
