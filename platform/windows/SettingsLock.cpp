#include "platform/detail/SettingsLock.h"

#include "platform/windows/WindowsApi.h"

#include <array>
#include <cwchar>
#include <cwctype>
#include <filesystem>
#include <system_error>

namespace dyadctx {

namespace {

constexpr DWORD LongestWait = 5000;

// One mutex per folder, ignoring case.
std::wstring MutexNameOf(const std::wstring& folder) {
    std::uint64_t hash = 14695981039346656037U;
    for (const wchar_t letter : folder)
        hash = (hash ^ static_cast<std::uint64_t>(std::towlower(letter))) * 1099511628211U;
    std::array<wchar_t, 60> name;
    std::swprintf(name.data(), name.size(), L"Global\\dyadctx-settings-%016llx",
                  static_cast<unsigned long long>(hash));
    return name.data();
}

} // namespace

SettingsLock::SettingsLock(const VELUnicodeString& folder) {
    const auto native = WidePath(folder.AsView());
    if (!native) {
        code_ = ERROR_INVALID_NAME;
        return;
    }
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, MutexNameOf(*native).c_str());
    if (mutex == nullptr) {
        code_ = static_cast<int>(GetLastError());
        return;
    }
    handle_ = reinterpret_cast<std::intptr_t>(mutex);
    const DWORD waited = WaitForSingleObject(mutex, LongestWait);
    // Abandoned: its holder ended without releasing it, so it is ours.
    isHeld_ = waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED;
    if (waited == WAIT_FAILED)
        code_ = static_cast<int>(GetLastError());
}

SettingsLock::~SettingsLock() {
    if (handle_ == NoHandle)
        return;
    const auto mutex = reinterpret_cast<HANDLE>(handle_);
    if (isHeld_)
        ReleaseMutex(mutex);
    CloseHandle(mutex);
}

int MakeSettingsFolder(const VELUnicodeString& folder) {
    const auto native = WidePath(folder.AsView());
    std::error_code error;
    if (native)
        std::filesystem::create_directories(std::filesystem::path(*native), error);
    return native ? error.value() : ERROR_INVALID_NAME;
}

} // namespace dyadctx
