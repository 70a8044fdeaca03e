// Asks for memory ahead of its use, so that the wait for it overlaps with other work.
#pragma once

namespace dyadctx {

// `address` need not be valid. Without help from the compiler it does nothing.
inline void Prefetch(const void* address) noexcept {
#ifdef __GNUC__
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

} // namespace dyadctx
