#include "platform/detail/MemoryAdvice.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace dyadctx {

void PrepareForWriting([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
    static const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    // The pages at the ends may belong to neighbours.
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(block) + size) / page * page;
    const int errorBefore = errno;
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
    errno = errorBefore;
#endif
}

} // namespace dyadctx
