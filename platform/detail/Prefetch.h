// SPDX-License-Identifier: MIT
// Prefetches memory, so that waiting for it overlaps with other work.
#pragma once

namespace dyadctx {

// `address` need not be valid. Does nothing without compiler support.
inline void Prefetch(const void* address) noexcept {
#ifdef __GNUC__
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

} // namespace dyadctx
