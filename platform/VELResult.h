// SPDX-License-Identifier: MIT
// The result code of operations that can fail: 32 bits, signed, negative means failure.
#pragma once

#include <cstdint>

using VELResult = std::int32_t;

// The Windows headers define these three as macros, which are used if they came first.
#if !defined(S_OK)
inline constexpr VELResult S_OK = 0;
#endif
#if !defined(S_FALSE)
inline constexpr VELResult S_FALSE = 1;
#endif
#if !defined(E_FAIL)
inline constexpr VELResult E_FAIL = static_cast<VELResult>(0x80004005U);
#endif
