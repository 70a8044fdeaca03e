// The platform trace: one line per step of the library, for those who look for a fault.
//
// It is active while DyadContextTrace.activity points at a number other than 0. The library tests
// that before each line. At load it is off; the environment variable VELDyadContextTrace turns it
// on: "1" writes to standard error, any other value except "" and "0" names a file to append to.
#pragma once

#include "platform/VELExport.h"

struct VELDYADCTX_EXPORT VELTraceObject {
    int* activity;
};
extern VELDYADCTX_EXPORT VELTraceObject DyadContextTrace;

inline bool VELIsTraceActive() noexcept {
    return DyadContextTrace.activity != nullptr && *DyadContextTrace.activity != 0;
}

// One line each, as printf; no line is cut. They do not test the activity themselves.
VELDYADCTX_EXPORT void _CDCDyadTraceEnter(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceLeave(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceLog(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceWarning(const char* format, ...) VELDYADCTX_PRINTF(1, 2);
VELDYADCTX_EXPORT void _CDCDyadTraceError(const char* format, ...) VELDYADCTX_PRINTF(1, 2);

enum class VELDyadTraceKind { Enter, Leave, Log, Warning, Error };

// What a host implements to receive the lines.
class VELDYADCTX_EXPORT VELDyadTraceSink {
public:
    virtual ~VELDyadTraceSink();
    // `text` is valid during the call only. Exceptions it lets out are swallowed.
    virtual void Write(VELDyadTraceKind kind, const char* text) = 0;
};

// Puts a host's sink in place of the built-in writer and gives the one it replaces (null for the
// built-in one). Null puts the built-in one back. The sink stays the host's; setting one does not
// turn the trace on.
VELDYADCTX_EXPORT VELDyadTraceSink* SetDyadTraceSink(VELDyadTraceSink* sink) noexcept;

// Marks in the platform trace, while it is active, that a creation runs under the console tracer.
VELDYADCTX_EXPORT void BatchStack();
