// SPDX-License-Identifier: MIT
// The platform trace: one line per step of the library, for finding faults.
//
// It is active while DyadContextTrace.activity points at a number other than 0; the library checks
// this before each line. It is off at load unless the environment variable VELDyadContextTrace
// turns it on: "1" writes to standard error, any other value except "" and "0" names a file to
// append to. There, control characters, line separators and marks of direction in a text are
// written out (\n, \x1b, \u2028), so that it stays one line; a host's sink receives it as it is.
#pragma once

#include "platform/VELExport.h"

struct VELDYADCTX_EXPORT VELTraceObject {
    int* activity;
};
extern VELDYADCTX_EXPORT VELTraceObject DyadContextTrace;

inline bool VELIsTraceActive() noexcept {
    return DyadContextTrace.activity != nullptr && *DyadContextTrace.activity != 0;
}

// Each writes one line, formatted as by printf and never cut, without checking the activity.
VELDYADCTX_EXPORT void _CDCDyadTraceEnter(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceLeave(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceLog(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceWarning(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceError(const char* format, ...) VELDYADCTX_PRINTF(1, 2);

enum class VELDyadTraceKind { Enter, Leave, Log, Warning, Error };

// Implemented by a host to receive the lines.
class VELDYADCTX_EXPORT VELDyadTraceSink {
public:
    virtual ~VELDyadTraceSink();
    // `text` is valid during the call only. Exceptions are ignored.
    virtual void Write(VELDyadTraceKind kind, const char* text) = 0;
};

// Replaces the built-in writer with a host's sink and returns the previous one (null for the
// built-in one). Null restores it. The host keeps ownership; setting a sink does not turn the trace
// on.
VELDYADCTX_EXPORT VELDyadTraceSink* SetDyadTraceSink(VELDyadTraceSink* sink) noexcept;

// Records in the active platform trace that a creation runs under the console tracer.
VELDYADCTX_EXPORT void BatchStack();
