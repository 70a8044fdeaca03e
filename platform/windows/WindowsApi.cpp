#include "platform/windows/WindowsApi.h"

#include "platform/detail/NativePath.h"

#include <climits>

namespace dyadctx {

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

std::optional<std::wstring> WidePath(std::string_view path) {
    const auto native = NativePath(path);
    if (!native)
        return std::nullopt;
    return WideText(*native);
}

} // namespace dyadctx
