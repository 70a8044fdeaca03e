// SPDX-License-Identifier: MIT
#include "platform/windows/WindowsApi.h"

#include "platform/VELFileSystem.h"
#include "platform/detail/NativePath.h"

#include <algorithm>
#include <climits>

namespace dyadctx {

namespace {

// From this length on a folder cannot be made without the long form: it leaves room for a file in
// it.
constexpr std::size_t LongPath = 248;
constexpr std::wstring_view LongPrefix = L"\\\\?\\";
constexpr std::wstring_view LongServerPrefix = L"\\\\?\\UNC\\";
constexpr std::wstring_view ServerPrefix = L"\\\\";

// "\\?\" or "\\.\": the system takes the rest as it is.
bool HasPrefix(std::wstring_view path) {
    return path.starts_with(LongPrefix) || path.starts_with(L"\\\\.\\");
}

std::wstring LongForm(const std::wstring& full) {
    if (HasPrefix(full))
        return full;
    if (full.starts_with(ServerPrefix))
        return std::wstring(LongServerPrefix) + full.substr(ServerPrefix.size());
    return std::wstring(LongPrefix) + full;
}

bool IsOldDevice(std::wstring name) {
    for (wchar_t& letter : name)
        letter =
            letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - L'a' + L'A') : letter;
    for (const std::wstring_view device : {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$"}) {
        if (name == device)
            return true;
    }
    return name.size() == 4 && (name.starts_with(L"COM") || name.starts_with(L"LPT")) &&
           name[3] >= L'1' && name[3] <= L'9';
}

// Some versions of Windows open the device whatever the folder and the ending.
bool NamesOldDevice(std::wstring path) {
    path.erase(path.find_last_not_of(L':') + 1);
    std::wstring name = path.substr(path.find_last_of(L"\\:") + 1);
    name.resize(std::min(name.find_first_of(L".:"), name.size()));
    name.erase(name.find_last_not_of(L' ') + 1);
    return IsOldDevice(name);
}

} // namespace

std::optional<std::wstring> WideText(std::string_view text) {
    if (text.empty())
        return std::wstring();
    if (text.size() > INT_MAX)
        return std::nullopt;
    const int size = static_cast<int>(text.size());
    const int needed =
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
    if (needed <= 0)
        return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), needed);
    return wide;
}

std::string Utf8Text(std::wstring_view text) {
    if (text.empty() || text.size() > INT_MAX)
        return {};
    const int size = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    if (needed <= 0)
        return {};
    std::string narrow(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), needed, nullptr, nullptr);
    return narrow;
}

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size())
        return path;
    full.resize(length);
    return full;
}

std::optional<std::wstring> WidePath(std::string_view path) {
    const auto native = NativePath(path);
    auto wide = native ? WideText(*native) : std::nullopt;
    if (!wide || wide->empty() || HasPrefix(*wide))
        return wide;
    if (NamesOldDevice(*wide))
        return std::nullopt;
    const std::wstring full = FullPath(*wide);
    return full.size() < LongPath ? wide : LongForm(full);
}

bool IsDeviceName(const std::wstring& path) {
    return path.starts_with(L"\\\\.\\");
}

HANDLE OpenExisting(const std::wstring& path, DWORD access) {
    if (IsDeviceName(path)) {
        SetLastError(ERROR_INVALID_NAME);
        return INVALID_HANDLE_VALUE;
    }
    return CreateFileW(path.c_str(), access, ShareAll, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

bool FindMode(const std::wstring& path, unsigned int& mode) {
    const Handle file(OpenExisting(path, 0));
    BY_HANDLE_FILE_INFORMATION description{};
    if (!file.IsOpen() || GetFileInformationByHandle(file.Get(), &description) == 0)
        return false;
    const bool isFolder = (description.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    mode = isFolder ? VELFileInfo::Directory : VELFileInfo::RegularFile;
    if (GetFileType(file.Get()) != FILE_TYPE_DISK)
        mode = 0;
    return true;
}

std::optional<std::wstring> FinalPath(HANDLE file) {
    const DWORD needed = GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED);
    std::wstring found(needed, L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file, found.data(), needed, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= needed)
        return std::nullopt;
    found.resize(length);
    return found;
}

} // namespace dyadctx
