// SPDX-License-Identifier: MIT
#include "platform/detail/TraceOutput.h"

#include "platform/windows/WindowsApi.h"

#include <exception>

namespace dyadctx {

namespace {

TraceHandle TraceHandleOf(HANDLE handle) noexcept {
    const bool isOpen = handle != nullptr && handle != INVALID_HANDLE_VALUE;
    return isOpen ? reinterpret_cast<TraceHandle>(handle) : NoTraceHandle;
}

} // namespace

TraceHandle StandardErrorHandle() noexcept {
    return TraceHandleOf(GetStdHandle(STD_ERROR_HANDLE));
}

TraceHandle OpenTraceFile(const VELUnicodeString& path) noexcept {
    try {
        const auto wide = WidePath(path.AsView());
        if (!wide)
            return NoTraceHandle;
        return TraceHandleOf(CreateFileW(wide->c_str(), FILE_APPEND_DATA, ShareAll, nullptr,
                                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    } catch (const std::exception&) {
        return NoTraceHandle;
    }
}

void WriteTrace(TraceHandle handle, std::string_view bytes) noexcept {
    while (handle != NoTraceHandle && !bytes.empty()) {
        constexpr std::size_t largest = std::size_t{1} << 30U;
        const auto size = static_cast<DWORD>(bytes.size() < largest ? bytes.size() : largest);
        DWORD written = 0;
        if (WriteFile(reinterpret_cast<HANDLE>(handle), bytes.data(), size, &written, nullptr) == 0)
            return;
        bytes.remove_prefix(written);
    }
}

} // namespace dyadctx
