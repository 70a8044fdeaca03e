// The console trace: lines on the process's standard output while VELDyadCtxTracer held a number
// other than 0 when the library was loaded.
//
// Lines begin with "DYADCTX : " or "DYADCTX ERROR : " and, with a result, end in " OK" or, when it
// is negative, " KO". A text is cut after 9999 bytes. Without a format nothing is written. Each
// function has one buffer for the whole process: use them from one thread at a time.
#pragma once

#include "platform/VELExport.h"

#include <cstdarg>

VELDYADCTX_EXPORT void DYADCTXOUT(long result, const char* format, ...) VELDYADCTX_PRINTF(2, 3);
VELDYADCTX_EXPORT void DYADCTXOUT(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void DYADCTXERR(long result, const char* format, ...) VELDYADCTX_PRINTF(2, 3);
VELDYADCTX_EXPORT void DYADCTXERR(const char* format, ...) VELDYADCTX_PRINTF(1, 2);

// Formats at most `size` bytes into `buffer`, whether or not the console trace is on. Gives their
// number, with a zero byte behind them when it fits; exactly `size` bytes come without one. -1 when
// the text is longer (the buffer then holds its first `size` bytes without zero byte) or cannot be
// formatted, when `format` is null, or when `buffer` is null and `size` is not 0.
VELDYADCTX_EXPORT int DYADCTXVsnprintf(char* buffer, unsigned int size, const char* format,
                                       va_list args) VELDYADCTX_PRINTF(3, 0);
