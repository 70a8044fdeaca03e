// SPDX-License-Identifier: MIT
#include "platform/detail/TraceOutput.h"

#include "platform/detail/NativePath.h"

#include <cerrno>
#include <exception>
#include <fcntl.h>
#include <unistd.h>

namespace dyadctx {

TraceHandle StandardErrorHandle() noexcept {
    return STDERR_FILENO;
}

TraceHandle OpenTraceFile(const VELUnicodeString& path) noexcept {
    try {
        const auto native = NativePath(path.AsView());
        if (!native)
            return NoTraceHandle;
        constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
        const int file = open(native->c_str(), flags, 0666);
        // Only opening must not wait: a pipe with a slow reader must not lose lines.
        if (file >= 0)
            fcntl(file, F_SETFL, O_APPEND);
        return file;
    } catch (const std::exception&) {
        return NoTraceHandle;
    }
}

void WriteTrace(TraceHandle handle, std::string_view bytes) noexcept {
    while (handle != NoTraceHandle && !bytes.empty()) {
        const ssize_t written = write(static_cast<int>(handle), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace dyadctx
