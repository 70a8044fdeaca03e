// SPDX-License-Identifier: MIT
#include "platform/detail/SettingsLock.h"

#include "platform/windows/WindowsApi.h"

#include <array>
#include <cwchar>
#include <cwctype>

namespace dyadctx {

namespace {

constexpr DWORD LongestWait = 5000;

// One spelling for each folder; that of the caller where the system has none.
std::wstring FinalPathOf(const std::wstring& folder) {
    const Handle opened(CreateFileW(folder.c_str(), 0, ShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return opened.IsOpen() ? FinalPath(opened.Get()).value_or(folder) : folder;
}

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

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int MakeFolders(std::wstring path) {
    while (path.ends_with(L'\\'))
        path.pop_back();
    if (IsFolder(path) || CreateDirectoryW(path.c_str(), nullptr) != 0)
        return 0;
    const auto code = static_cast<int>(GetLastError());
    const std::size_t parent = path.find_last_of(L'\\');
    // Another process may have made it meanwhile.
    if (code == ERROR_ALREADY_EXISTS && IsFolder(path))
        return 0;
    if (code != ERROR_PATH_NOT_FOUND || parent == std::wstring::npos)
        return code;
    if (const int failed = MakeFolders(path.substr(0, parent)))
        return failed;
    return CreateDirectoryW(path.c_str(), nullptr) != 0 || IsFolder(path)
               ? 0
               : static_cast<int>(GetLastError());
}

} // namespace

SettingsLock::SettingsLock(const VELUnicodeString& folder) {
    const auto native = WidePath(folder.AsView());
    if (!native) {
        code_ = ERROR_INVALID_NAME;
        return;
    }
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, MutexNameOf(FinalPathOf(*native)).c_str());
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
    return native ? MakeFolders(*native) : ERROR_INVALID_NAME;
}

} // namespace dyadctx
