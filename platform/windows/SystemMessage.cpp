// SPDX-License-Identifier: MIT
#include "platform/detail/SystemMessage.h"

#include "platform/windows/WindowsApi.h"

#include <array>
#include <string_view>

namespace dyadctx {

std::string SystemMessage(int code) {
    constexpr DWORD flags =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    std::array<wchar_t, 1024> buffer;
    const DWORD length = FormatMessageW(flags, nullptr, static_cast<DWORD>(code), 0, buffer.data(),
                                        static_cast<DWORD>(buffer.size()), nullptr);
    std::wstring_view text(buffer.data(), length);
    while (text.ends_with(L' ') || text.ends_with(L'.'))
        text.remove_suffix(1);
    return text.empty() ? "system error " + std::to_string(code) : Utf8Text(text);
}

} // namespace dyadctx
