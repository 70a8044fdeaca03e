// The Windows headers, without what they do to others, and text on its way to and from them.
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

// UTF-8 to UTF-16. Nothing when the text is not well-formed: two such texts must not become one.
std::optional<std::wstring> WideText(std::string_view text);
// UTF-16 to UTF-8; what is not well-formed becomes the replacement character.
std::string Utf8Text(std::wstring_view text);

// The path as the file calls take it; nothing when no file call can name it.
std::optional<std::wstring> WidePath(std::string_view path);

// Closes a handle when it goes out of scope.
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
