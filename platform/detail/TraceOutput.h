// SPDX-License-Identifier: MIT
// Where the built-in writer of the platform trace writes its lines.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstdint>
#include <string_view>

namespace dyadctx {

// The system's handle of the open stream.
using TraceHandle = std::intptr_t;
inline constexpr TraceHandle NoTraceHandle = -1;

TraceHandle StandardErrorHandle() noexcept;

// Opens the file for appending, creating it if needed. No handle if that fails, as for a FIFO
// without a reader; never waits. The file stays open until the process ends.
TraceHandle OpenTraceFile(const VELUnicodeString& path) noexcept;

// Writes the bytes in one system call, so that lines of several processes do not mix. What cannot
// be written is lost.
void WriteTrace(TraceHandle handle, std::string_view bytes) noexcept;

} // namespace dyadctx
