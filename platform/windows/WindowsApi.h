// SPDX-License-Identifier: MIT
// The Windows headers without their macros, and conversions of text for them.
#pragma once

#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#endif
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace dyadctx {

// UTF-8 to UTF-16. Nothing if malformed: two such texts must not become the same.
std::optional<std::wstring> WideText(std::string_view text);
// UTF-16 to UTF-8; malformed parts become the replacement character.
std::string Utf8Text(std::wstring_view text);

// The path for file calls; nothing if they cannot name it, or if it is the name of a device of old:
// NUL, CON, or con.xml in any folder. A long one is made absolute and begins with "\\?\", as file
// calls do not take it otherwise.
std::optional<std::wstring> WidePath(std::string_view path);

// From the root of its drive, or of the current folder where it names none.
std::wstring FullPath(const std::wstring& path);

// The path of an open file or folder with links followed; nothing if the system does not tell.
std::optional<std::wstring> FinalPath(HANDLE file);

// Names such as "\\\\.\\pipe\\x": opening one can already wake another process.
bool IsDeviceName(const std::wstring& path);

// Opens a file or folder, following links. With `access` 0, only for its attributes.
HANDLE OpenExisting(const std::wstring& path, DWORD access);

// The mode of a file, as VELFileInfo has it. False, with the system's last error, if there is none.
bool FindMode(const std::wstring& path, unsigned int& mode);

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A handle, closed at the end of its scope.
class Handle {
public:
    explicit Handle(HANDLE value = INVALID_HANDLE_VALUE) noexcept : value_(value) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Close(); }

    bool IsOpen() const noexcept { return value_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const noexcept { return value_; }
    HANDLE Release() noexcept {
        HANDLE value = value_;
        value_ = INVALID_HANDLE_VALUE;
        return value;
    }
    void Reset(HANDLE value) noexcept {
        Close();
        value_ = value;
    }
    bool Close() noexcept { return !IsOpen() || CloseHandle(Release()) != 0; }

private:
    HANDLE value_;
};

} // namespace dyadctx
