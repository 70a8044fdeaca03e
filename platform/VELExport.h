// SPDX-License-Identifier: MIT
// Marks what the shared library exports.
#pragma once

#if defined(_WIN32)
#if defined(DYADCTX_BUILDING)
#define VELDYADCTX_EXPORT __declspec(dllexport)
#elif defined(DYADCTX_LINKED_STATICALLY)
#define VELDYADCTX_EXPORT
#else
#define VELDYADCTX_EXPORT __declspec(dllimport)
#endif
#else
#define VELDYADCTX_EXPORT __attribute__((visibility("default")))
#endif

// Marks private operations of an exported class, which only the library calls.
#if defined(_WIN32)
#define VELDYADCTX_LOCAL
#else
#define VELDYADCTX_LOCAL __attribute__((visibility("hidden")))
#endif

// Lets the compiler check printf-like arguments against their format.
#if defined(__MINGW32__) && !defined(__clang__)
#define VELDYADCTX_PRINTF(formatPos, firstArgPos)                                                  \
    __attribute__((format(gnu_printf, formatPos, firstArgPos)))
#elif defined(__GNUC__)
#define VELDYADCTX_PRINTF(formatPos, firstArgPos)                                                  \
    __attribute__((format(printf, formatPos, firstArgPos)))
#else
#define VELDYADCTX_PRINTF(formatPos, firstArgPos)
#endif
