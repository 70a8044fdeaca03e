// Where the built-in writer of the platform trace puts its lines.
#pragma once

#include "platform/VELUnicodeString.h"

#include <cstdint>
#include <string_view>

namespace dyadctx {

// What the system calls the open stream.
using TraceHandle = std::intptr_t;
inline constexpr TraceHandle NoTraceHandle = -1;

TraceHandle StandardErrorHandle() noexcept;

// Opens the file for adding at its end and makes it when there is none. No handle when that cannot
// be done, as for a FIFO nobody reads; never waits. The file stays open until the process ends.
TraceHandle OpenTraceFile(const VELUnicodeString& path) noexcept;

// Hands the bytes to the system in one call, so that lines of several processes do not mix. What
// cannot be written is lost.
void WriteTrace(TraceHandle handle, std::string_view bytes) noexcept;

} // namespace dyadctx
