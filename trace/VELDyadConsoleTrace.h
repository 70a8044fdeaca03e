// SPDX-License-Identifier: MIT
// The console trace: lines on standard output, if VELDyadCtxTracer was a number other than 0 at
// load.
//
// Lines begin with "DYADCTX : " or "DYADCTX ERROR : " and, with a result, end in " OK" or, if it is
// negative, " KO". A text is cut after 9999 bytes. A null format writes nothing. Each function has
// one buffer for the whole process: use them from one thread at a time.
#pragma once

#include "platform/VELExport.h"

#include <cstdarg>

VELDYADCTX_EXPORT void DYADCTXOUT(long result, const char* format, ...) VELDYADCTX_PRINTF(2, 3);
VELDYADCTX_EXPORT void DYADCTXOUT(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void DYADCTXERR(long result, const char* format, ...) VELDYADCTX_PRINTF(2, 3);
VELDYADCTX_EXPORT void DYADCTXERR(const char* format, ...) VELDYADCTX_PRINTF(1, 2);

// Formats at most `size` bytes into `buffer`, whether or not the console trace is on. Returns their
// number; a terminating zero follows if it fits, so not after exactly `size` bytes. Returns -1 if
// the text is longer (the buffer then holds its first `size` bytes without zero), if it cannot be
// formatted, if `format` is null, or if `buffer` is null and `size` is not 0.
VELDYADCTX_EXPORT int DYADCTXVsnprintf(char* buffer, unsigned int size, const char* format,
                                       va_list args) VELDYADCTX_PRINTF(3, 0);
