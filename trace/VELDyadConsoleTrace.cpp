// SPDX-License-Identifier: MIT
#include "trace/VELDyadConsoleTrace.h"

#include "platform/VELResult.h"
#include "trace/detail/ProcessSettings.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

// One per function for the whole process, without a lock, as the interface documents.
constexpr std::size_t BufferSize = 10000;
using LineBuffer = char[BufferSize];
constinit LineBuffer outWithResultBuffer{};
constinit LineBuffer outBuffer{};
constinit LineBuffer errWithResultBuffer{};
constinit LineBuffer errBuffer{};

constexpr const char* OutPrefix = "DYADCTX : ";
constexpr const char* ErrPrefix = "DYADCTX ERROR : ";

bool IsWanted(const char* format) {
    return format != nullptr && dyadctx::TracerLevel() != 0;
}

const char* SuffixOf(long result) {
    // With a 64-bit long, a failure code may arrive as a positive number.
    return static_cast<VELResult>(result) < 0 ? " KO" : " OK";
}

VELDYADCTX_PRINTF(4, 0)
void WriteConsoleLine(LineBuffer& buffer, const char* prefix, const char* suffix,
                      const char* format, va_list args) {
    // A longer text is cut; one that cannot be formatted is empty.
    if (std::vsnprintf(buffer, BufferSize, format, args) < 0)
        buffer[0] = '\0';
    std::fputs(prefix, stdout);
    std::fputs(buffer, stdout);
    std::fputs(suffix, stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// Fills the whole buffer, without a terminating zero, from a text at least as long.
VELDYADCTX_PRINTF(3, 0)
bool FillBuffer(char* buffer, std::size_t size, const char* format, va_list args) {
    const std::unique_ptr<char[]> text(new (std::nothrow) char[size + 1]);
    if (text == nullptr || std::vsnprintf(text.get(), size + 1, format, args) < 0)
        return false;
    std::memcpy(buffer, text.get(), size);
    return true;
}

} // namespace

void DYADCTXOUT(long result, const char* format, ...) {
    if (!IsWanted(format))
        return;
    va_list args;
    va_start(args, format);
    WriteConsoleLine(outWithResultBuffer, OutPrefix, SuffixOf(result), format, args);
    va_end(args);
}

void DYADCTXOUT(const char* format, ...) {
    if (!IsWanted(format))
        return;
    va_list args;
    va_start(args, format);
    WriteConsoleLine(outBuffer, OutPrefix, "", format, args);
    va_end(args);
}

void DYADCTXERR(long result, const char* format, ...) {
    if (!IsWanted(format))
        return;
    va_list args;
    va_start(args, format);
    WriteConsoleLine(errWithResultBuffer, ErrPrefix, SuffixOf(result), format, args);
    va_end(args);
}

void DYADCTXERR(const char* format, ...) {
    if (!IsWanted(format))
        return;
    va_list args;
    va_start(args, format);
    WriteConsoleLine(errBuffer, ErrPrefix, "", format, args);
    va_end(args);
}

int DYADCTXVsnprintf(char* buffer, unsigned int size, const char* format, va_list args) {
    if (format == nullptr || (buffer == nullptr && size > 0))
        return -1;
    va_list measured;
    va_copy(measured, args);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0)
        return -1;
    const auto needed = static_cast<std::size_t>(length);
    if (needed < size)
        return std::vsnprintf(buffer, size, format, args);
    if (size > 0 && !FillBuffer(buffer, size, format, args))
        return -1;
    return needed == size ? length : -1;
}
