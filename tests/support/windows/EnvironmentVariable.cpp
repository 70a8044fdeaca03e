// SPDX-License-Identifier: MIT
#include "support/EnvironmentVariable.h"

#include "support/windows/WideText.h"

namespace dyadctx::test {

namespace {

void Put(const std::string& name, const std::optional<std::string>& value) {
    SetEnvironmentVariableW(Wide(name).c_str(), value ? Wide(*value).c_str() : nullptr);
}

std::optional<std::string> ValueOf(const std::wstring& name) {
    std::wstring value(32767, L'\0');
    SetLastError(ERROR_SUCCESS);
    const DWORD length =
        GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() != ERROR_SUCCESS)
        return std::nullopt;
    return Narrow(std::wstring_view(value).substr(0, length));
}

} // namespace

EnvironmentVariable::EnvironmentVariable(const std::string& name,
                                         const std::optional<std::string>& value)
    : name_(name), former_(ValueOf(Wide(name))) {
    Put(name_, value);
}

EnvironmentVariable::~EnvironmentVariable() {
    Put(name_, former_);
}

} // namespace dyadctx::test
