// SPDX-License-Identifier: MIT
// One line of the platform trace, evaluated and written only while it is active. Macros, so that
// the compiler checks the arguments against the format.
#pragma once

#include "platform/VELDyadTrace.h"

#define TRACE_LINE(write, ...)                                                                     \
    do {                                                                                           \
        if (VELIsTraceActive())                                                                    \
            write(__VA_ARGS__);                                                                    \
    } while (false)

#define TRACE_ENTER(...) TRACE_LINE(_CDCDyadTraceEnter, __VA_ARGS__)
#define TRACE_LEAVE(...) TRACE_LINE(_CDCDyadTraceLeave, __VA_ARGS__)
#define TRACE_LOG(...) TRACE_LINE(_CDCDyadTraceLog, __VA_ARGS__)
#define TRACE_WARNING(...) TRACE_LINE(_CDCDyadTraceWarning, __VA_ARGS__)
#define TRACE_ERROR(...) TRACE_LINE(_CDCDyadTraceError, __VA_ARGS__)
