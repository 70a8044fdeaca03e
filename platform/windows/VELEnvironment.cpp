#include "platform/VELEnvironment.h"

#include "platform/windows/WindowsApi.h"

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

} // namespace

const char* VELGetEnv(const char* name) {
    if (name == nullptr)
        return nullptr;
    try {
        const auto wideName = dyadctx::WideText(name);
        if (!wideName)
            return nullptr;
        const auto value = ReadVariable(*wideName);
        if (!value)
            return nullptr;
        thread_local std::string answer;
        answer = dyadctx::Utf8Text(*value);
        return answer.c_str();
    } catch (const std::exception&) {
        return nullptr;
    }
}
